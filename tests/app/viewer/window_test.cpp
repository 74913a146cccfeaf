// The viewer's window, used as a person uses it.

#include "app/picture.h"
#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/panes/map_pane.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window_fixture.h"
#include "host/elevation/elevation_file.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/slider.h>
#include <wx/textctrl.h>

#include <cmath>
#include <map>

namespace tessara::test {

namespace {

using testing::HasSubstr;

TEST_F(ViewerWindow, ShowsTheSampleAndRestsWhenNothingChanges)
{
    const WindowUser user;
    EXPECT_EQ(user.Window().GetTitle(), wxString::FromUTF8("Sample – Tessara"));
    user.Move(user.Window().Picture(), 0.4, 0.5);
    user.Move(user.Window().Picture(), 0.5, 0.5);
    user.Wait(300);
    for (const char* text : {" fps", " triangles", " E  ", " N", " m", "°"})
        EXPECT_THAT(user.Status(), HasSubstr(text));
    const auto look = user.Look(user.Window().Picture());
    EXPECT_GT(Difference(look, std::vector<int>(look.size(), look[0])), 1000);
    int frames = 0;
    user.Window().Picture().Bind(wxEVT_PAINT, [&](wxPaintEvent& event) {
        ++frames;
        event.Skip();
    });
    user.Wait(1000);
    EXPECT_EQ(frames, 0);
}

TEST_F(ViewerWindow, MovesTheCameraWithMouseAndKeys)
{
    const WindowUser user(Valley("valley.tif"));
    PicturePane& picture = user.Window().Picture();
    const double azimuth = user.Camera().Azimuth();
    const auto before = user.Look(picture);
    user.Drag(picture, {0.4, 0.6}, {0.6, 0.65});
    EXPECT_GT(std::fabs(user.Camera().Azimuth() - azimuth), 5.0);
    EXPECT_GT(Difference(before, user.Look(picture)), 300);

    const Vector3 turned = user.Camera().Position();
    user.Drag(picture, {0.5, 0.6}, {0.6, 0.6}, wxMOUSE_BTN_RIGHT);
    EXPECT_GT(Length(user.Camera().Position() - turned), 10.0);

    const double distance = Length(user.Camera().Focus() - user.Camera().Position());
    user.Wheel(0.5, 0.5, 4);
    EXPECT_LT(Length(user.Camera().Focus() - user.Camera().Position()), 0.8 * distance);

    user.Click(picture, 0.5, 0.5);
    user.Key('N');
    EXPECT_NEAR(user.Camera().Azimuth(), 0.0, 1e-9);
    user.Key('T');
    EXPECT_NEAR(user.Camera().Tilt(), 90.0, 1e-9);
    const Vector3 above = user.Camera().Position();
    user.Key(WXK_RIGHT);
    EXPECT_GT(user.Camera().Position().x, above.x);
    user.Key(WXK_PAGEUP);
    EXPECT_GT(user.Camera().Position().y, above.y);
    user.Key(WXK_HOME);
    EXPECT_NEAR(user.Camera().Azimuth(), azimuth, 1e-9);
}

/// How much neighbours in a row differ, in the middle of a picture.
double Sharpness(const std::vector<std::uint8_t>& pixels)
{
    double sum = 0.0;
    for (std::size_t i = pixels.size() / 4; i < pixels.size() * 3 / 4; ++i)
        sum += std::abs(pixels[i] - pixels[i - 3]);
    return sum;
}

TEST_F(ViewerWindow, MovesCoarselyWhereFramesTakeLongAndRestsSharply)
{
    const WindowUser user(Valley("valley.tif"));
    PicturePane& picture = user.Window().Picture();
    user.Click(picture, 0.02, 0.02);
    user.Key('2');  // edges are where it shows
    user.WaitForPicture();
    const auto resting = user.Pixels(picture);
    ASSERT_FALSE(picture.Graphics()->IsQuick()) << "this test is about graphics in software";
    const auto draw = [&] {
        picture.DrawNow();
        return user.Pixels(picture);
    };
    FrameGovernor& governor = picture.Graphics()->Governor();
    while (governor.Scale() < 1.0)
        governor.Saw(1e-4);
    picture.RequestDraw();
    const auto quick = draw();
    user.WaitForPicture();
    EXPECT_EQ(user.Pixels(picture), resting);
    for (int frame = 0; frame < 8; ++frame)
        governor.Saw(0.3 * governor.Scale() * governor.Scale());
    // What comes up again, or gets the outline of a brush, stays sharp.
    EXPECT_EQ(draw(), resting);
    picture.RequestBrush();
    EXPECT_EQ(draw(), resting);
    picture.RequestDraw();
    const auto moving = draw();
    EXPECT_LT(Sharpness(moving), 0.8 * Sharpness(quick));
    user.WaitForPicture();
    EXPECT_EQ(user.Pixels(picture), resting);
}

TEST_F(ViewerWindow, GoesWhereTheMapIsClicked)
{
    const WindowUser user(Valley("valley.tif"));
    user.Click(user.Window().Map(), 0.75, 0.5);
    const double east = user.Camera().Focus().x;
    user.Click(user.Window().Map(), 0.25, 0.5);
    const double west = user.Camera().Focus().x;
    EXPECT_GT(east - west, 0.3 * 89 * 30.0);
}

TEST_F(ViewerWindow, FliesUntilEscape)
{
    const WindowUser user(Valley("valley.tif"));
    PicturePane& picture = user.Window().Picture();
    user.Click(picture, 0.5, 0.5);
    user.Key('F');
    ASSERT_TRUE(picture.IsFlying());
    const Vector3 start = user.Camera().Position();
    const double azimuth = user.Camera().Azimuth();
    wxUIActionSimulator().KeyDown('W');
    user.Wait(400);
    wxUIActionSimulator().KeyUp('W');
    user.Wait(100);
    EXPECT_GT(Length(user.Camera().Position() - start), 20.0);
    user.Move(picture, 0.6, 0.5);
    EXPECT_NE(user.Camera().Azimuth(), azimuth);
    const Vector3 resting = user.Camera().Position();
    user.Wait(200);
    EXPECT_EQ(Length(user.Camera().Position() - resting), 0.0);
    user.Key(WXK_ESCAPE);
    EXPECT_FALSE(picture.IsFlying());
    user.Key('N');
    EXPECT_NEAR(user.Camera().Azimuth(), 0.0, 1e-9);
}

TEST_F(ViewerWindow, SettingsChangeThePictureAtOnceAndBack)
{
    const WindowUser user(Valley("valley.tif"));
    PicturePane& picture = user.Window().Picture();
    user.Click(picture, 0.02, 0.02);
    user.WaitForPicture();
    const auto first = user.Look(picture);
    struct Switch {
        int key;
        int back;
    };
    for (const Switch& each : {Switch{'2', '1'}, {'3', '1'}, {'C', 'C'}, {'L', 'L'}, {'B', 'B'}}) {
        user.Key(each.key);
        user.WaitForPicture();
        EXPECT_GT(Difference(first, user.Look(picture)), 60) << static_cast<char>(each.key);
        user.Key(each.back);
        user.WaitForPicture();
        EXPECT_LT(Difference(first, user.Look(picture)), 30) << static_cast<char>(each.key);
    }
    for (const char* name : {"Exaggeration", "Sun from", "Height of the sun", "Fog"}) {
        const auto* slider = wxWindow::FindWindowByName(name, &user.Window());
        ASSERT_NE(slider, nullptr) << name;
        const auto before = user.Look(picture);
        const_cast<wxWindow*>(slider)->SetFocus();
        user.Wait(50);
        for (int i = 0; i < 3; ++i)
            user.Key(WXK_PAGEUP);
        EXPECT_TRUE(user.WaitFor([&] { return !user.Viewer().IsLightBusy(); }));
        user.WaitForPicture();
        EXPECT_GT(Difference(before, user.Look(picture)), 20) << name;
    }
}

TEST(Commands, EachHasAKeyOfItsOwnAndAWayToBeRun)
{
    std::map<std::string, const char*> taken;
    for (const Command& command : AllCommands()) {
        const std::string key = command.key;
        EXPECT_TRUE(key.empty() || taken.emplace(key, command.label).second)
            << key << " of " << command.label << " and " << taken[key];
        EXPECT_TRUE(PlainKey(command) == 0 || CommandOfKey(PlainKey(command)) == &command) << command.label;
        EXPECT_TRUE(command.run || command.kind == Command::Kind::Submenu) << command.label;
        EXPECT_NE(std::string(command.help), "") << command.label;
    }
    EXPECT_GT(taken.size(), 25u);
}

/// The manual's table between its two marks, as the table of commands has it.
TEST(Commands, StandInTheManualAsTheyAre)
{
    std::string table = "<!-- commands -->\n| Menu | Command | Key | |\n|---|---|---|---|\n";
    for (const Command& command : AllCommands()) {
        std::string menu = command.menu;
        std::erase(menu, '&');
        table += "| " + menu + " | " + PlainLabel(command) + " | " + KeyText(command) + " | " + command.help + " |\n";
    }
    table += "<!-- end -->\n";
    EXPECT_NE(ReadBytes(TESSARA_SOURCE_DIR "/docs/viewer.md").find(table), std::string::npos)
        << "docs/viewer.md is to say:\n"
        << table;
}

TEST_F(ViewerWindow, FieldsTakeNumbersAndRefuseTheRestInPlace)
{
    const WindowUser user(Valley("valley.tif"));
    auto* const pages = dynamic_cast<wxNotebook*>(
        wxWindow::FindWindowByName("Error allowed", &user.Window())->GetParent()->GetParent());
    ASSERT_NE(pages, nullptr);
    pages->SetSelection(1);
    user.Wait(100);
    auto* const low = dynamic_cast<wxTextCtrl*>(wxWindow::FindWindowByName("From", &user.Window()));
    const wxWindow* const refusal = wxWindow::FindWindowByName("Refusal", &user.Window());
    ASSERT_TRUE(low && refusal && low->IsShownOnScreen());
    const auto type = [&](const char* text) {
        user.Click(*low, 0.5, 0.5);
        user.Key('A', wxMOD_CONTROL);
        wxUIActionSimulator().Text(text);
        user.Key(WXK_RETURN);
    };
    type("320");
    EXPECT_EQ(user.Viewer().Settings().fill, FillMode::Filled);
    EXPECT_NEAR(user.Viewer().Colors().low, 320.0, 1e-6);
    EXPECT_FALSE(refusal->IsShown());
    for (const auto& [text, reason] : {std::pair{"1000,5", "1000.5"}, {"99999", "below"}, {"abc", "abc"}}) {
        type(text);
        EXPECT_NEAR(user.Viewer().Colors().low, 320.0, 1e-6) << text;
        EXPECT_TRUE(refusal->IsShown()) << text;
        EXPECT_THAT(refusal->GetLabel().utf8_string(), HasSubstr(reason));
        EXPECT_EQ(low->GetValue(), text);
    }
    user.Key(WXK_ESCAPE);
    EXPECT_FALSE(refusal->IsShown());
    EXPECT_EQ(low->GetValue(), "320.0");
    EXPECT_NEAR(user.Viewer().Colors().low, 320.0, 1e-6);
}

TEST_F(ViewerWindow, SculptsUndoesAndSavesTheHeights)
{
    const WindowUser user(Valley("valley.tif"));
    PicturePane& picture = user.Window().Picture();
    const std::vector<float> untouched = user.Viewer().Document().Data().metres;
    user.Click(picture, 0.02, 0.02);
    user.Key('R');
    ASSERT_TRUE(picture.HasBrush());
    const auto before = user.Look(picture);
    user.Drag(picture, {0.5, 0.55}, {0.55, 0.55});
    const std::vector<float> raised = user.Viewer().Document().Data().metres;
    ASSERT_NE(raised, untouched);
    EXPECT_GT(Difference(before, user.Look(picture)), 20);
    EXPECT_EQ(user.Window().GetTitle(), wxString::FromUTF8("valley.tif* – Tessara"));
    user.Key('Z', wxMOD_CONTROL);
    EXPECT_EQ(user.Viewer().Document().Data().metres, untouched);
    user.Key('Y', wxMOD_CONTROL);
    EXPECT_EQ(user.Viewer().Document().Data().metres, raised);

    const std::string path = folders_.scratch / "raised.tif";
    Answers answers;
    answers.File(path);
    user.Key('H', wxMOD_CONTROL);
    EXPECT_TRUE(user.WaitFor([&] { return answers.AreAllGiven(); }));
    user.Wait(200);
    EXPECT_EQ(ReadElevationFile(path).metres, raised);
    user.Key(WXK_ESCAPE);
    EXPECT_FALSE(picture.HasBrush());
}

}  // namespace

}  // namespace tessara::test

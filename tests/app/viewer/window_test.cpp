// The viewer's window, used as a person uses it.

#include "app/picture.h"
#include "app/viewer/window/map_pane.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/window_commands.h"
#include "app/viewer/window_user.h"
#include "host/elevation/elevation_file.h"
#include "host/elevation/elevation_writer.h"
#include "host/host_classes.h"
#include "host/process_memory.h"
#include "host/test_elevation.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/slider.h>

#include <cmath>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ViewerWindow : public testing::Test {
protected:
    /// A valley in a file of its own.
    std::string Valley(const std::string& name, int columns = 90, double phase = 0.0) const
    {
        const std::string path = folders_.scratch / name;
        WriteElevationFile(MakeElevation(columns, 70, 30.0, 30.0,
                                         [=](int x, int y) {
                                             return 400.0 + 150.0 * std::sin(x * 0.11 + phase) +
                                                    90.0 * std::cos(y * 0.13);
                                         }),
                           path);
        return path;
    }

    const OwnFolders folders_;
    const HostClasses classes_ = RegisterHostClasses();
};

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

TEST_F(ViewerWindow, KeysThatAreTypedIntoAFieldDoNothingElse)
{
    const WindowUser user(Valley("valley.tif"));
    auto* const pages = dynamic_cast<wxNotebook*>(
        wxWindow::FindWindowByName("Error allowed", &user.Window())->GetParent()->GetParent());
    ASSERT_NE(pages, nullptr);
    pages->SetSelection(1);
    user.Wait(100);
    wxWindow* const low = wxWindow::FindWindowByName("From", &user.Window());
    ASSERT_TRUE(low && low->IsShownOnScreen());
    user.Click(*low, 0.5, 0.5);
    user.Key('A', wxMOD_CONTROL);
    wxUIActionSimulator().Text("320");
    user.Wait(100);
    EXPECT_EQ(user.Viewer().Settings().fill, FillMode::Filled);
    user.Key(WXK_RETURN);
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

TEST_F(ViewerWindow, SaysWhatIsWrongWithAFileAndKeepsTheOldTerrain)
{
    const WindowUser user(Valley("valley.tif"));
    const std::string bad = folders_.scratch.Write("bad.tif", "this is no picture of the ground");
    Answers answers;
    answers.Message(GTK_RESPONSE_OK);
    user.Window().Load(bad);
    EXPECT_TRUE(user.WaitFor([&] { return !answers.Messages().empty(); }));
    user.Wait(200);
    EXPECT_THAT(answers.Messages(), ElementsAre(HasSubstr("bad.tif")));
    EXPECT_EQ(user.Window().GetTitle(), wxString::FromUTF8("valley.tif – Tessara"));
    EXPECT_EQ(user.Viewer().Document().Data().width, 90);
}

TEST_F(ViewerWindow, SavesPicturesAndTrianglesOfTheView)
{
    const WindowUser user(Valley("valley.tif"));
    const std::string picture = folders_.scratch / "view.png";
    user.Viewer();
    user.Window().Picture().MakeCurrent();
    user.Viewer().SavePicture(picture, 400, 300);
    const Picture saved = ReadPicture(picture);
    EXPECT_EQ(saved.width, 400);
    EXPECT_EQ(saved.height, 300);
    EXPECT_GT(Difference(saved.At(200, 20), saved.At(200, 180)), 40);

    const std::string dump = folders_.scratch / "view.txt";
    Answers answers;
    answers.File(dump);
    user.Key('E', wxMOD_CONTROL);
    EXPECT_TRUE(user.WaitFor([&] { return answers.AreAllGiven(); }));
    user.Wait(200);
    const std::string text = ReadBytes(dump);
    const auto lines = std::count(text.begin(), text.end(), '\n');
    EXPECT_GT(lines, 100);
    EXPECT_EQ(lines % 3, 0);
}

TEST_F(ViewerWindow, AsksBeforeItThrowsUnsavedWorkAway)
{
    const WindowUser user(Valley("valley.tif"));
    const std::string project = folders_.scratch / "valley.tessara";
    Answers answers;
    answers.File(project);
    user.Key('S', wxMOD_CONTROL);
    ASSERT_TRUE(user.WaitFor([&] { return user.Viewer().ProjectPath() == project; }));
    user.Wait(200);
    EXPECT_EQ(user.Window().GetTitle(), wxString::FromUTF8("valley.tessara – Tessara"));

    user.Key('C');
    user.Key('R');
    user.Drag(user.Window().Picture(), {0.5, 0.55}, {0.55, 0.55});
    EXPECT_EQ(user.Window().GetTitle(), wxString::FromUTF8("valley.tessara* – Tessara"));
    answers.Message(GTK_RESPONSE_CANCEL);
    user.Key('Q', wxMOD_CONTROL);
    EXPECT_TRUE(user.WaitFor([&] { return answers.AreAllGiven(); }));
    user.Wait(200);
    ASSERT_TRUE(user.IsOpen());
    answers.Message(GTK_RESPONSE_YES);
    user.Key('Q', wxMOD_CONTROL);
    EXPECT_TRUE(user.WaitFor([&] { return !user.IsOpen(); }));

    const WindowUser again(project);
    EXPECT_NE(again.Viewer().Document().Data().metres, ReadElevationFile(folders_.scratch / "valley.tif").metres);
    EXPECT_FALSE(again.Viewer().Settings().vertexColors);
}

TEST_F(ViewerWindow, RemembersItsPlaceAndTheFiles)
{
    const std::string file = Valley("valley.tif");
    {
        const WindowUser user(file);
        user.Window().SetSize(810, 590);
        user.WaitForPicture();
        EXPECT_EQ(user.Window().Picture().PixelWidth(), user.Window().Picture().GetClientSize().x);
        user.Window().Close();
        EXPECT_TRUE(user.WaitFor([&] { return !user.IsOpen(); }));
    }
    const std::string kept = ReadBytes(folders_.scratch / "XDG_CONFIG_HOME/tessara/viewer.ini");
    EXPECT_THAT(kept, HasSubstr("Width=810"));
    EXPECT_THAT(kept, HasSubstr("File1=" + file));
}

TEST_F(ViewerWindow, OpensFiftyFilesWithoutGrowing)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer keeps memory that was freed";
#endif
    const WindowUser user({}, 560, 420);
    std::vector<std::string> files;
    for (int i = 0; i < 5; ++i)
        files.push_back(Valley("valley" + std::to_string(i) + ".tif", 200, i));
    std::size_t warm = 0;
    for (int i = 0; i < 50; ++i) {
        user.Window().Load(files[static_cast<std::size_t>(i) % files.size()]);
        ASSERT_TRUE(user.WaitFor([&] { return !user.Window().IsLoading() && !user.Viewer().WantsFrame(); }));
        if (i == 14)
            warm = ResidentBytes();
    }
    // What 35 terrains would take, each with a light map of 400 KB and a tree of more, is several times this.
    EXPECT_LT(ResidentBytes(), warm + (std::size_t{12} << 20));
}

}  // namespace

}  // namespace tessara::test

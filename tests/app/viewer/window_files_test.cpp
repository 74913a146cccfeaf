// Files that the viewer's window opens, saves and keeps.

#include "app/picture.h"
#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/files/settings_file.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window_fixture.h"
#include "app/viewer/work/work_keeper.h"
#include "host/elevation/elevation_file.h"
#include "host/process_memory.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <sys/wait.h>
#include <unistd.h>
#include <wx/dialog.h>
#include <wx/dnd.h>
#include <wx/menu.h>

#include <csignal>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(ViewerWindow, OpensWhatIsDroppedOnIt)
{
    const WindowUser user(Valley("valley.tif"));
    auto* target = dynamic_cast<wxFileDropTarget*>(user.Window().GetDropTarget());
    ASSERT_NE(target, nullptr);
    wxArrayString dropped;
    dropped.Add(Valley("other.tif", 60));
    EXPECT_TRUE(target->OnDropFiles(10, 10, dropped));
    EXPECT_TRUE(user.WaitFor([&] { return user.Viewer().Document().Data().width == 60; }));
}

TEST_F(ViewerWindow, GivesUpLoadingAtEscape)
{
    const WindowUser user(Valley("valley.tif"));
    user.Window().Load({});
    EXPECT_TRUE(user.Window().IsLoading());
    user.Key(WXK_ESCAPE);
    EXPECT_TRUE(user.WaitFor([&] { return !user.Window().IsLoading(); }));
    EXPECT_THAT(user.Status(), HasSubstr("Cancelled"));
    EXPECT_EQ(user.Viewer().Document().Data().width, 90);
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

TEST_F(ViewerWindow, ShowsTheSampleWhereTheFirstFileIsBad)
{
    const std::string bad = folders_.scratch.Write("bad.tif", "nor this");
    Answers answers;
    answers.Message(GTK_RESPONSE_OK);
    const WindowUser user(bad);
    EXPECT_THAT(answers.Messages(), ElementsAre(HasSubstr("bad.tif")));
    EXPECT_EQ(user.Viewer().Document().Path(), "");
}

TEST_F(ViewerWindow, SavesPicturesAndTrianglesOfTheView)
{
    const WindowUser user(Valley("valley.tif"));
    const std::string picture = folders_.scratch / "view.png";
    user.Viewer();
    user.Window().Picture().MakeCurrent();
    user.Viewer().Picture().Save(picture, 400, 300);
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
    ASSERT_TRUE(user.WaitFor([&] { return user.Viewer().Work().ProjectPath() == project; }));
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

TEST_F(ViewerWindow, KeepsWhatChangesAtOnceBesideWhatOthersKeep)
{
    const std::string file = Valley("valley.tif");
    const WindowUser user(file);
    user.Window().SetSize(810, 590);
    user.WaitForPicture();
    EXPECT_EQ(user.Window().Picture().PixelWidth(), user.Window().Picture().GetClientSize().x);
    user.Key('C');
    const auto kept = [] { return Store(LoadSettings()); };
    EXPECT_TRUE(user.WaitFor([&] { return kept()["View/VertexColors"] == "0"; }));
    EXPECT_EQ(kept()["Window/Width"], "810");
    EXPECT_EQ(kept()["Recent/File1"], file);

    // Another window.
    EXPECT_TRUE(ChangeSettings([](SettingsMap& stored) {
        stored["Light/Fog"] = "0.7500";
        stored["Recent/File2"] = stored["Recent/File1"];
        stored["Recent/File1"] = "/other.tif";
    }));
    user.Key('2');
    EXPECT_TRUE(user.WaitFor([&] { return kept()["View/Fill"] == "wireframe"; }));
    Answers answers;
    answers.Message(GTK_RESPONSE_NO);
    user.Window().Close();
    EXPECT_TRUE(user.WaitFor([&] { return !user.IsOpen(); }));
    EXPECT_EQ(kept()["Light/Fog"], "0.7500");
    EXPECT_EQ(kept()["Recent/File1"], "/other.tif");
    EXPECT_EQ(kept()["Recent/File2"], file);
}

TEST_F(ViewerWindow, PutsAPictureOnTheGround)
{
    const WindowUser user(Valley("valley.tif"));
    const std::string image = folders_.scratch / "image.png";
    user.Window().Picture().MakeCurrent();
    user.Viewer().Picture().Save(image, 64, 64);
    user.WaitForPicture();
    const auto before = user.Look(user.Window().Picture());
    const wxMenuBar& menus = *user.Window().GetMenuBar();
    EXPECT_FALSE(menus.IsEnabled(kSourceTexture));
    Answers answers;
    answers.File(image);
    user.Key('I', wxMOD_CONTROL);
    EXPECT_TRUE(user.WaitFor([&] { return answers.AreAllGiven(); }));
    user.WaitForPicture();
    EXPECT_TRUE(menus.IsChecked(kSourceTexture));
    EXPECT_GT(Difference(before, user.Look(user.Window().Picture())), 200);
    user.Window().Run(kSourceTexture);
    user.WaitForPicture();
    EXPECT_LT(Difference(before, user.Look(user.Window().Picture())), 60);
}

TEST_F(ViewerWindow, OffersTheWorkOfAProgramThatCrashed)
{
    std::vector<float> raised;
    {
        const WindowUser user(Valley("valley.tif"));
        user.Key('R');
        user.Drag(user.Window().Picture(), {0.5, 0.55}, {0.55, 0.55});
        raised = user.Viewer().Document().Data().metres;
        const pid_t crashing = fork();
        if (crashing == 0) {
            WorkKeeper keeper;
            keeper.Update(user.Viewer().Work());
            kill(getpid(), SIGKILL);
        }
        waitpid(crashing, nullptr, 0);
    }
    Answers answers;
    answers.Message(GTK_RESPONSE_YES);
    const WindowUser user;
    EXPECT_THAT(answers.Messages(), ElementsAre(HasSubstr("unsaved work")));
    const std::vector<float>& recovered = user.Viewer().Document().Data().metres;
    ASSERT_EQ(recovered.size(), raised.size());
    for (std::size_t i = 0; i < raised.size(); i += 97)
        EXPECT_NEAR(recovered[i], raised[i], 0.01f);
    EXPECT_TRUE(user.Viewer().HasUnsavedWork());
    EXPECT_TRUE(user.IsOpen());
}

TEST_F(ViewerWindow, OpensItsDialogsAndClosesThemAtEscape)
{
    const WindowUser user(Valley("valley.tif"));
    Answers answers;
    answers.Escape().Escape().Escape();
    user.Key(WXK_F1);
    user.Window().Run(kInformation);
    EXPECT_FALSE(user.Viewer().HasUnsavedWork());
    user.Key('D', wxMOD_CONTROL);
    EXPECT_TRUE(user.WaitFor([&] { return answers.AreAllGiven(); }));
    user.Wait(300);
    EXPECT_THAT(answers.Messages(), ElementsAre("Keys and Mouse", "Terrain Information", "Terrain Detail"));
    // The ground had no detail texture to go back to, so it keeps the one that the dialog came up with.
    EXPECT_TRUE(user.Viewer().HasUnsavedWork());
}

TEST_F(ViewerWindow, AFileThatIsReadWaitsForADialogOnTheTerrain)
{
    const WindowUser user(Valley("valley.tif"));
    int width = 0;
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
        width = user.Viewer().Document().Data().width;
        for (wxWindow* window : wxTopLevelWindows) {
            auto* const dialog = dynamic_cast<wxDialog*>(window);
            if (dialog && dialog->IsModal())
                dialog->EndModal(wxID_CANCEL);
        }
    });
    user.Window().Load({});  // is on its way when another one is wanted
    user.Window().Load(Valley("other.tif", 60));
    timer.StartOnce(1500);
    user.Window().Run(kInformation);
    EXPECT_EQ(width, 90);
    EXPECT_TRUE(user.WaitFor([&] { return user.Viewer().Document().Data().width == 60; }));
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
        ASSERT_TRUE(user.WaitFor([&] { return !user.Window().IsLoading() && !user.Viewer().Picture().WantsFrame(); }));
        if (i == 14)
            warm = ResidentBytes();
    }
    // What 35 terrains would take, each with a light map of 400 KB and a tree of more, is several times this.
    EXPECT_LT(ResidentBytes(), warm + (std::size_t{12} << 20));
}

}  // namespace

}  // namespace tessara::test

// The command "tessara view" as a program of its own.

#include "app/program.h"
#include "app/viewer/start_toolkit.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <wx/uiaction.h>

#include <atomic>
#include <cstdlib>
#include <thread>

namespace tessara {

namespace {

using testing::HasSubstr;

/// Whether the middle of the screen shows something.
bool IsPainted()
{
    GdkPixbuf* const shot = gdk_pixbuf_get_from_window(gdk_get_default_root_window(), 300, 300, 1, 1);
    const guchar* const pixel = gdk_pixbuf_get_pixels(shot);
    const bool painted = pixel[0] + pixel[1] + pixel[2] > 60;
    g_object_unref(shot);
    return painted;
}

TEST(ViewProgram, OpensAWindowAndClosesQuietly)
{
    ASSERT_TRUE(test::StartToolkit()) << "no display answers";
    const ScratchFolder home;
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"})
        setenv(name, (home / name).c_str(), 1);
    WriteGrid(home / "ground.asc", 40, 30, [](int x, int y) { return 100 + x * 3 + y; });
    ProgramRun run;
    std::atomic<bool> ended{false};
    // The display's driver is unloaded before a leak checker looks, and what it keeps seems lost then. The window's
    // tests in this process look for leaks.
    setenv("LSAN_OPTIONS", "detect_leaks=0", 1);
    std::thread program([&] {
        run = RunTessara({"view", home / "ground.asc"});
        ended = true;
    });
    bool painted = false;
    for (int i = 0; i < 600 && !ended; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        painted = painted || IsPainted();
        // The window hears keys as soon as it is ready.
        if (painted && i % 10 == 9) {
            wxUIActionSimulator().Char('Q', wxMOD_CONTROL);
        }
    }
    program.join();
    EXPECT_TRUE(painted);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, "");
}

TEST(ViewProgram, OffersAPictureWithoutADisplay)
{
    const char* const display = std::getenv("DISPLAY");
    const std::string before = display ? display : "";
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    const ProgramRun run = RunTessara({"view", "alps.tif"});
    setenv("DISPLAY", before.c_str(), 1);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr("needs a display"));
    EXPECT_THAT(run.errors, HasSubstr("tessara render alps.tif -o picture.png"));
}

}  // namespace

}  // namespace tessara

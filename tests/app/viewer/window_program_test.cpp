// The command "tessara view" as a program of its own.

#include "app/program.h"
#include "app/viewer/start_toolkit.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <signal.h>
#include <wx/uiaction.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <thread>

namespace tessara {

namespace {

using testing::HasSubstr;

/// What the screen shows at a place, as the sum of its colours.
int Brightness(int x, int y)
{
    GdkPixbuf* const shot = gdk_pixbuf_get_from_window(gdk_get_default_root_window(), x, y, 1, 1);
    const guchar* const pixel = gdk_pixbuf_get_pixels(shot);
    const int sum = pixel[0] + pixel[1] + pixel[2];
    g_object_unref(shot);
    return sum;
}

bool IsPainted()
{
    return Brightness(300, 300) > 60;
}

/// The program "tessara view", started and left to itself.
class ViewProcess {
public:
    explicit ViewProcess(const std::string& file)
        : program_([this, file] {
              run_ = RunTessara({"view", file}, {}, &process_);
              ended_ = true;
          })
    {
    }
    ViewProcess(const ViewProcess&) = delete;
    ViewProcess& operator=(const ViewProcess&) = delete;
    ~ViewProcess() { Kill(); }

    bool HasEnded() const { return ended_; }

    /// Ends it on the spot, as a crash would. \return what the program left
    const ProgramRun& Kill()
    {
        while (process_ == 0 && !ended_)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        if (!ended_)
            kill(process_, SIGKILL);
        return Join();
    }

    const ProgramRun& Join()
    {
        if (program_.joinable())
            program_.join();
        return run_;
    }

    /// Does something again and again until something is so. \return whether that came before the program's end
    bool Until(const std::function<bool()>& done, const std::function<void()>& act = {}) const
    {
        for (int i = 1; i < 600 && !ended_; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            if (done())
                return true;
            // The window hears keys and clicks as soon as it is ready.
            if (act && i % 15 == 0)
                act();
        }
        return false;
    }

private:
    std::atomic<pid_t> process_{0};
    std::atomic<bool> ended_{false};
    ProgramRun run_;
    std::thread program_;
};

class ViewProgram : public testing::Test {
protected:
    ViewProgram()
    {
        EXPECT_TRUE(test::StartToolkit()) << "no display answers";
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"})
            setenv(name, (home_ / name).c_str(), 1);
        // The display's driver is unloaded before a leak checker looks, and what it keeps seems lost then. The window's
        // tests in this process look for leaks.
        setenv("LSAN_OPTIONS", "detect_leaks=0", 1);
        WriteGrid(home_ / "ground.asc", 40, 30,
                  [](int x, int y) { return x == 9 && y == 9 ? -9999 : 100 + x * 3 + y; });
        WriteGrid(home_ / "other.asc", 40, 30, [](int x, int y) { return 100 + x - y; });
    }

    std::string Settings() const { return ReadText(home_ / "XDG_CONFIG_HOME/tessara/viewer.ini"); }
    bool HasKept(const char* text) const { return Settings().find(text) != std::string::npos; }

    const ScratchFolder home_;
};

TEST_F(ViewProgram, OpensAWindowAndClosesQuietly)
{
    ViewProcess program(home_ / "ground.asc");
    EXPECT_TRUE(program.Until(&IsPainted));
    EXPECT_FALSE(program.Until([] { return false; }, [] { wxUIActionSimulator().Char('Q', wxMOD_CONTROL); }));
    const ProgramRun& run = program.Join();
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, "");
}

TEST_F(ViewProgram, HearsKeysOnceTheNotesAreClosedAndKeepsItsSettingsWhenItIsKilled)
{
    std::filesystem::create_directories(home_ / "XDG_CONFIG_HOME/tessara");
    WriteText(home_ / "XDG_CONFIG_HOME/tessara/viewer.ini", "[Window]\nX=0\nY=0\nWidth=1000\nHeight=640\n");
    ViewProcess program(home_ / "ground.asc");
    // The bar is brighter than the sky that it covers.
    const auto notesAreShown = [] { return Brightness(3, 62) > 600 && IsPainted(); };
    ASSERT_TRUE(program.Until(notesAreShown)) << "no notes";
    const auto close = [] {
        // The simulator's own way to move the mouse wants a window of this process below it.
        gdk_device_warp(gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default())),
                        gdk_screen_get_default(), 950, 47);
        gdk_display_flush(gdk_display_get_default());
        wxUIActionSimulator().MouseClick();
    };
    ASSERT_TRUE(program.Until([&] { return !notesAreShown(); }, close)) << "the notes stay";
    EXPECT_TRUE(program.Until([this] { return HasKept("MapShown=0"); }, [] { wxUIActionSimulator().Char('M'); }));
    ViewProcess other(home_ / "other.asc");
    EXPECT_TRUE(other.Until([this] { return HasKept("other.asc"); }));
    EXPECT_EQ(program.Kill().errors, "");
    EXPECT_EQ(other.Kill().errors, "");
    for (const char* text : {"MapShown=0", "File1=", "File2=", "ground.asc", "other.asc", "Width=1000"})
        EXPECT_TRUE(HasKept(text)) << text << " isn't in\n" << Settings();
}

TEST_F(ViewProgram, OffersAPictureWithoutADisplay)
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

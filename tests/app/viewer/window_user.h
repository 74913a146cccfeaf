#pragma once

#include "app/viewer/viewer.h"
#include "app/viewer/window/main_window.h"
#include "support/scratch_folder.h"

#include <wx/timer.h>
#include <wx/uiaction.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

class wxEventLoopActivator;
class wxGUIEventLoop;

namespace tessara::test {

/// Folders for settings and unsaved work, in place of the user's own, for as long as it lives.
class OwnFolders {
public:
    OwnFolders();
    test::ScratchFolder scratch;
};

/// Somebody at mouse and keyboard in front of the viewer's window.
class WindowUser {
public:
    /// Opens the window with a file. \param width,height of the window
    explicit WindowUser(const std::string& file = {}, int width = 760, int height = 560);
    WindowUser(const WindowUser&) = delete;
    WindowUser& operator=(const WindowUser&) = delete;

    /// Ends the window, whatever it still wants.
    ~WindowUser();

    MainWindow& Window() const { return *window_; }
    bool IsOpen() const;
    tessara::Viewer& Viewer() const { return *window_->GetViewer(); }
    CameraController& Camera() const { return Viewer().Camera(); }

    /// Lets the window work.
    void Wait(int milliseconds) const;

    /// Waits until something is so. \return whether that came in half a minute
    bool WaitFor(const std::function<bool()>& done) const;

    /// Waits until the file that is being read has been opened and its picture is final.
    bool WaitForPicture() const;

    /// Opens another file, and waits for it.
    bool Open(const std::string& file) const;

    // The mouse over a window, at shares of its width and height.
    void Move(const wxWindow& pane, double x, double y) const;
    void Click(const wxWindow& pane, double x, double y) const;
    void Drag(const wxWindow& pane, std::array<double, 2> from, std::array<double, 2> to,
              int button = wxMOUSE_BTN_LEFT) const;

    /// Turns the wheel over the picture. \param steps positive away from the user
    void Wheel(double x, double y, int steps) const;

    /// Presses a key. \param modifiers of wxMOD_...
    void Key(int key, int modifiers = wxMOD_NONE) const;

    /// What the screen shows of a window, three bytes a pixel, the top row first.
    std::vector<std::uint8_t> Pixels(const wxWindow& pane) const;

    /// Mean colours of an 8 x 8 raster over the same.
    std::vector<int> Look(const wxWindow& pane) const;

    std::string Status() const;

private:
    void Focus() const;

    std::unique_ptr<wxGUIEventLoop> loop_;
    std::unique_ptr<wxEventLoopActivator> active_;
    MainWindow* window_ = nullptr;
};

/// Sum of what two looks differ by.
int Difference(const std::vector<int>& a, const std::vector<int>& b);

/// Answers the questions that come up, in order: a message with a response of the toolkit, a file dialog with a path.
class Answers {
public:
    Answers();

    Answers& Message(int response);
    Answers& File(const std::string& path);

    /// For any other dialog: the key.
    Answers& Escape();

    /// Texts of the messages and titles of the dialogs that came up.
    const std::vector<std::string>& Messages() const { return messages_; }
    bool AreAllGiven() const { return answers_.empty(); }

private:
    struct Answer {
        bool escape;
        int response;
        std::string path;
    };

    void Look();
    void Press();

    std::vector<Answer> answers_;
    std::vector<std::string> messages_;
    wxTimer timer_;
    int seen_ = 0;
};

}  // namespace tessara::test

#pragma once

#include "platform/ui/sample_dialog.h"

#include <gtest/gtest.h>
#include <wx/timer.h>

#include <functional>
#include <string>

class wxChoice;
class wxDialog;
class wxListBox;
class wxWindow;

namespace tessara::test {

/// Works with mouse and keyboard at the dialog that is open, by its native window. Controls go by their ids.
class WxUser final {
public:
    explicit WxUser(wxDialog& dialog) : dialog_(dialog) {}

    void Click(int control);
    void Type(int control, const std::string& text);   ///< replaces the text of an edit field
    void Pick(int control, int row);                   ///< of a drop list or a list box
    void PickRange(int control, int first, int last);  ///< of a list box: a click, and one with Shift
    void Press(WPARAM key);
    void StepUp(int spin) { ClickArrow(spin, 0.25); }
    void StepDown(int spin) { ClickArrow(spin, 0.75); }
    void Rest();  ///< until everything has happened

    /// Moves the mouse to a point of a window.
    void MoveTo(const wxWindow& window, double shareX, double shareY);

    /// Waits with the event loop running.
    void Wait(int milliseconds);

private:
    wxWindow* Find(int control);
    void ClickArrow(int spin, double height);
    void MoveToRow(wxListBox& list, int row);
    void WaitForPopup(const wxChoice& choice, bool open);

    wxDialog& dialog_;
};

using User = WxUser;
using ModalWindow = wxDialog;

/// Calls somebody back as soon as a modal dialog runs.
class WhenModal {
public:
    /// \param act what happens then \param leave press Escape afterwards where the dialog is still open
    explicit WhenModal(std::function<void(wxDialog&)> act, bool leave = true);
    ~WhenModal() { timer_.Stop(); }

private:
    void Look();

    std::function<void(wxDialog&)> act_;
    bool leave_;
    bool busy_ = false;
    wxTimer timer_;
};

/// Answers the next message box that the desktop shows with a key.
class WhenAsked {
public:
    /// \param key a letter, which is pressed with Alt, or a key as the toolkit numbers them
    explicit WhenAsked(int key);
    ~WhenAsked() { timer_.Stop(); }

private:
    void Look();

    int key_;
    int seen_ = 0;
    wxTimer timer_;
};

}  // namespace tessara::test

#pragma once

#include "platform/ui/window_contract.h"

#include <wx/timer.h>

#include <functional>
#include <string>

class wxChoice;
class wxDialog;
class wxListBox;
class wxWindow;

namespace tessara::test {

/// Works with mouse and keyboard at the dialog that is open, by its native window.
class WxUser final : public DialogUser {
public:
    explicit WxUser(wxDialog& dialog) : dialog_(dialog) {}

    void Click(int control) override;
    void Type(int control, const std::string& text) override;
    void Pick(int control, int row) override;
    void PickRange(int control, int first, int last) override;
    void Press(WPARAM key) override;
    void StepUp(int spin) override;
    void StepDown(int spin) override;
    void Rest() override;

    /// Moves the mouse to a point of a window.
    void MoveTo(const wxWindow& window, double shareX, double shareY);

    /// Waits with the event loop running.
    void Wait(int milliseconds);

private:
    wxWindow* Find(int control);
    void MoveToRow(wxListBox& list, int row);
    void WaitForPopup(const wxChoice& choice, bool open);

    wxDialog& dialog_;
};

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

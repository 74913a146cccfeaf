#pragma once

#include "platform/ui/sample_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace tessara::test {

/// A dialog that is open.
struct ModalWindow {
    HWND window;
};

/// Works with mouse and keyboard at the dialog that is open. Controls go by their ids.
class User {
public:
    explicit User(const ModalWindow& dialog) : dialog_(dialog.window) {}

    void Click(int control);
    void Type(int control, const std::string& text);   ///< replaces the text of an edit field
    void Pick(int control, int row);                   ///< of a drop list or a list box
    void PickRange(int control, int first, int last);  ///< of a list box: a click, and one with Shift
    void Press(WPARAM key);
    void StepUp(int spin) { ClickInside(Find(spin), 0.5, 0.25); }
    void Rest() { Wait(40); }  ///< until everything has happened

    /// Waits with the thread's messages running.
    void Wait(int milliseconds);

private:
    HWND Find(int control) const;
    void ClickInside(HWND window, double shareX, double shareY);
    void ClickRow(HWND list, int row, bool shift = false);
    void ClickAt(POINT place, bool shift = false);

    HWND dialog_;
};

/// Calls somebody back as soon as a modal dialog runs.
class WhenModal {
public:
    /// \param act what happens then \param leave press Escape afterwards where the dialog is still open
    explicit WhenModal(std::function<void(ModalWindow&)> act, bool leave = true);
    ~WhenModal();

private:
    static void CALLBACK Look(HWND, UINT, UINT_PTR timer, DWORD);

    std::function<void(ModalWindow&)> act_;
    bool leave_;
    UINT_PTR timer_;
};

}  // namespace tessara::test

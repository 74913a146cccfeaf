#pragma once

#include "platform/ui/sample_dialog.h"
#include "platform/ui/window_system.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tessara::test {

/// A person at an open dialog, who names controls by their ids.
class DialogUser {
public:
    virtual ~DialogUser() = default;
    virtual void Click(int control) = 0;
    virtual void Type(int control, const std::string& text) = 0;   ///< replaces the text of an edit field
    virtual void Pick(int control, int row) = 0;                   ///< of a drop list or a list box
    virtual void PickRange(int control, int first, int last) = 0;  ///< of a list box: a click, and one with Shift
    virtual void Press(WPARAM key) = 0;
    virtual void StepUp(int spin) = 0;
    virtual void StepDown(int spin) = 0;
    virtual void Rest() = 0;  ///< until everything has happened
};

/// A back end of the window system, with somebody who uses it.
class WindowBackEnd {
public:
    virtual ~WindowBackEnd() = default;
    virtual WindowSystem& System() = 0;

    /// What the user does in the next dialog.
    virtual void SetUser(std::function<void(DialogUser&)> user) = 0;

    /// What the user answers to the next message, IDYES, IDNO or IDOK.
    virtual void SetAnswer(int answer) = 0;
};

using MakeBackEnd = std::unique_ptr<WindowBackEnd> (*)();

/// A window system, seen through a dialog with one control of each kind.
class WindowContract : public testing::TestWithParam<MakeBackEnd> {
protected:
    WindowContract() : backEnd_(GetParam()()) { previous_ = SetWindowSystem(&backEnd_->System()); }
    ~WindowContract() override { SetWindowSystem(previous_); }

    /// Runs the dialog with what the user does, and keeps what the dialog heard, paints left out.
    int Run(std::function<void(DialogUser&)> user);

    /// What the dialog heard between its creation and its end.
    std::vector<std::string> Heard() const;

    std::unique_ptr<WindowBackEnd> backEnd_;
    SampleDialog dialog_;
    bool painted_ = false;

private:
    WindowSystem* previous_;
};

/// What holds for every window system that opens windows, and for every one that doesn't.
class DialogContract : public WindowContract {};
class NoWindowsContract : public WindowContract {};

}  // namespace tessara::test

#pragma once

#include "platform/ui/device_context.h"
#include "platform/ui/dialog_window.h"
#include "platform/ui/window_system.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessara::test {

using CallLog = std::vector<std::string>;

/// A surface for OpenGL that draws nothing.
class ScriptedSurface final : public DeviceContext {
public:
    ScriptedSurface(int width, int height) : width_(width), height_(height) {}
    int Width() const override { return width_; }
    int Height() const override { return height_; }
    bool CreateGl() override { return true; }
    void DestroyGl() override {}
    bool MakeCurrent() override { return true; }
    void ReleaseCurrent() override {}
    void SwapBuffers() override {}

private:
    int width_;
    int height_;
};

/// An open dialog without a screen. The lower half acts as the user does, and then runs what was posted and paints what
/// was invalidated, as a window system does between two inputs.
class ScriptedDialog final : public DialogWindow {
public:
    ScriptedDialog(const DialogTemplate& form, DialogEvents& events);

    std::string GetText(int control) const override { return Of(control).text; }
    void SetText(int control, const std::string& text) override;
    void Enable(int control, bool enable) override { Of(control).enabled = enable; }
    bool IsEnabled(int control) const override { return Of(control).enabled; }
    RECT GetRect(int control) const override;
    void Invalidate(int) override { invalid_ = true; }
    void SetChecked(int control, bool checked) override { Of(control).checked = checked; }
    bool IsChecked(int control) const override { return Of(control).checked; }
    int GetFocus() const override { return focus_; }
    void SetFocus(int control) override;
    bool IsActive() const override { return active; }
    int AddRow(int control, const std::string& text) override;
    void ClearRows(int control) override;
    int RowCount(int control) const override { return static_cast<int>(Of(control).rows.size()); }
    std::string RowText(int control, int row) const override;
    int CurrentRow(int control) const override { return Of(control).current; }
    void SetCurrentRow(int control, int row) override { Of(control).current = row < RowCount(control) ? row : -1; }
    std::vector<int> SelectedRows(int control) const override;
    void SelectRow(int control, int row, bool select) override;
    bool IsModified(int control) const override { return Of(control).modified; }
    void SetModified(int control, bool modified) override { Of(control).modified = modified; }
    void SetImage(int control, const Image& image) override { images[control] = image; }
    bool CreateToolTip() override { return hasToolTips; }
    void SetToolTipLink(UINT message) override { linkMessage = message; }
    void AddToolTip(int control, const std::string& markup) override { toolTips.emplace_back(control, markup); }
    void RelayToToolTip(const InputMessage& message) override { relayed.push_back(message); }
    void ShowHelp(const std::string& markup) override { helps.push_back(markup); }
    DeviceContext* GetDeviceContext(int control) override { return Of(control).surface.get(); }
    void Post(UINT message, WPARAM wParam, LPARAM lParam) override { posted_.push_back({message, wParam, lParam, 0}); }
    void End(int value) override { result = result.value_or(value); }
    NativeWindow Native() const override { return const_cast<ScriptedDialog*>(this); }

    // The user.
    void Click(int control);
    void Type(int control, const std::string& text);                      ///< replaces an edit field's text
    void Pick(int control, int row) { PickRows(control, {row}, row); }    ///< of a drop list or a list box
    void PickRows(int control, const std::vector<int>& rows, int focus);  ///< of a list box
    void Press(WPARAM key);
    void Step(int control, int steps);
    void Focus(int control);
    void ClickLink(const std::string& text);
    void Paint() { Invalidate(0), Rest(); }
    void Rest();  ///< runs what was posted and paints what was invalidated

    bool active = true;
    bool hasToolTips = true;
    UINT linkMessage = 0;
    std::vector<std::pair<int, std::string>> toolTips;
    std::vector<std::string> helps;
    std::vector<InputMessage> relayed;
    std::map<int, Image> images;
    std::optional<int> result;

private:
    struct Control {
        ControlTemplate form{};
        std::string text;
        bool enabled = true;
        bool checked = false;
        bool modified = false;
        int current = -1;
        std::vector<std::string> rows;
        std::vector<bool> selected;
        std::unique_ptr<ScriptedSurface> surface;
    };

    Control& Of(int control) const;  ///< an empty, disabled one for an id that isn't there
    bool Reach(int control);         ///< \return false where the user can't act on it
    void Notify(int control, UINT notification);
    void FocusNext();

    const DialogTemplate& form_;
    DialogEvents& events_;
    std::map<int, Control> controls_;  ///< 0 is the dialog itself
    mutable Control missing_;
    std::deque<InputMessage> posted_;
    int focus_ = 0;
    bool invalid_ = false;
};

/// A window system that a test plays the user of. Boxes and questions are answered from the front of their queues; an
/// empty queue says No, or cancels.
class ScriptedWindowSystem final : public WindowSystem {
public:
    explicit ScriptedWindowSystem(CallLog& log) : log_(log) { previous_ = SetWindowSystem(this); }
    ScriptedWindowSystem(const ScriptedWindowSystem&) = delete;
    ScriptedWindowSystem& operator=(const ScriptedWindowSystem&) = delete;
    ~ScriptedWindowSystem() override { SetWindowSystem(previous_); }

    bool CanOpenWindows() const override { return true; }
    int RunDialog(const DialogTemplate& form, DialogEvents& events, NativeWindow parent) override;
    int ShowMessage(const std::string& text, const std::string& caption, UINT buttons, NativeWindow parent) override;
    std::optional<std::string> AskForFile(const FileQuestion& question, NativeWindow parent) override;
    void BeginWaitCursor() override;
    void EndWaitCursor() override;
    bool OpenAddress(const std::string& address) override;

    /// What the user does in the dialog. Where it is still open afterwards, the user presses Escape.
    std::function<void(ScriptedDialog&)> user;

    /// Prepares the dialog before it hears of its window.
    std::function<void(ScriptedDialog&)> prepare;

    std::deque<int> answers;
    std::deque<std::optional<std::string>> files;
    FileQuestion lastQuestion;
    NativeWindow lastParent = nullptr;
    int waiting = 0;  ///< open BeginWaitCursor calls

private:
    CallLog& log_;
    WindowSystem* previous_;
};

}  // namespace tessara::test

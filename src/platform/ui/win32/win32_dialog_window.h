#pragma once

#include "platform/gl/current_context.h"
#include "platform/ui/dialog_template.h"
#include "platform/ui/dialog_window.h"
#include "platform/ui/win32/gl_viewport.h"
#include "platform/ui/win32/picture_bitmap.h"

#include <deque>
#include <map>
#include <memory>
#include <vector>

namespace tessara {

/// A viewport tells its dialog that it has to be drawn.
inline constexpr UINT kViewportPaint = WM_APP + 1;

/// The window classes of dialogs. They belong to the module that this code is in, and go before it does.
class WindowClasses {
public:
    WindowClasses();
    WindowClasses(const WindowClasses&) = delete;
    WindowClasses& operator=(const WindowClasses&) = delete;
    ~WindowClasses();
};

/// A dialog of the system's own controls, made of a template.
class Win32DialogWindow final : public DialogWindow {
public:
    /// \param parent null for none
    Win32DialogWindow(const DialogTemplate& form, DialogEvents& events, HWND parent);
    Win32DialogWindow(const Win32DialogWindow&) = delete;
    Win32DialogWindow& operator=(const Win32DialogWindow&) = delete;
    ~Win32DialogWindow();

    /// Shows the dialog until it ends. \return its result, IDCANCEL where it couldn't be made
    int Run();

    std::string GetText(int control) const override;
    void SetText(int control, const std::string& text) override;
    void Enable(int control, bool enable) override;
    bool IsEnabled(int control) const override;
    RECT GetRect(int control) const override;
    void Invalidate(int control) override;
    void SetChecked(int control, bool checked) override;
    bool IsChecked(int control) const override;
    int GetFocus() const override;
    void SetFocus(int control) override;
    bool IsActive() const override;
    int AddRow(int control, const std::string& text) override;
    void ClearRows(int control) override;
    int RowCount(int control) const override;
    std::string RowText(int control, int row) const override;
    int CurrentRow(int control) const override;
    void SetCurrentRow(int control, int row) override;
    std::vector<int> SelectedRows(int control) const override;
    void SelectRow(int control, int row, bool select) override;
    bool IsModified(int control) const override;
    void SetModified(int control, bool modified) override;
    void SetImage(int control, const Image& image) override;
    bool CreateToolTip() override { return false; }
    void SetToolTipLink(UINT) override {}
    void AddToolTip(int, const std::string&) override {}
    void RelayToToolTip(const InputMessage&) override {}
    void ShowHelp(const std::string&) override {}
    DeviceContext* GetDeviceContext(int control) override;
    void Post(UINT message, WPARAM wParam, LPARAM lParam) override;
    void End(int result) override;
    NativeWindow Native() const override { return dialog_; }

private:
    struct Control {
        const ControlTemplate* form = nullptr;
        HWND window = nullptr;
        bool hasCaret = false;  // of a list box: a row has the focus
        PictureBitmap picture;  // of a button
        std::unique_ptr<GlViewport> surface;
    };
    struct Backdrop {
        ControlKind kind;
        RECT place;
        PictureBitmap picture;
    };
    struct PostedMessage {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };

    // Building, in win32_dialog_controls.cpp.
    bool Create(HWND parent);
    void Add(const ControlTemplate& form);
    HWND MakeControl(const ControlTemplate& form, const RECT& place);
    HWND MakeSpin(const ControlTemplate& form);
    RECT PlaceOf(const ControlTemplate& form) const;
    void DrawBackdrops(HDC device) const;

    // Events, in win32_dialog_events.cpp.
    friend LRESULT CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK MessageTaken(int code, WPARAM removed, LPARAM message);
    bool Handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void HandleCommand(int control, UINT notification);
    void RunLoop();
    bool Translate(const MSG& message);
    bool HandleKey(WPARAM key);
    bool StepBuddy(int edit, int steps);
    void Step(int spin, int steps);
    void FocusFrom(int focused, bool previous);
    bool GoToListRow(int control, wchar_t letter);
    void PressDefault();
    void Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    void Notify(int control, UINT notification);
    void SendPosted();
    template <class Body>
    void WithHostContext(Body&& body);

    const Control* Find(int control) const;
    const Control* Find(int control, ControlKind kind) const;
    int IdOf(HWND window) const;
    LRESULT Ask(int control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    const DialogTemplate& form_;
    DialogEvents& events_;
    HWND dialog_ = nullptr;
    HWND parent_;
    Win32DialogWindow* below_ = nullptr;  // the dialog that this one stands before
    std::map<int, Control> controls_;
    std::vector<Backdrop> backdrops_;
    std::deque<PostedMessage> posted_;
    CurrentContext hostContext_;  // for the handlers' OpenGL calls
    bool alive_ = false;          // between Created and WM_DESTROY
    bool ended_ = false;
    int result_ = IDCANCEL;
};

LRESULT CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace tessara

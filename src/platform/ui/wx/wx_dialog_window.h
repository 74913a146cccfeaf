#pragma once

#include "platform/gl/current_context.h"
#include "platform/ui/dialog_template.h"
#include "platform/ui/dialog_window.h"

#include <wx/dialog.h>
#include <wx/eventfilter.h>

#include <map>
#include <memory>

namespace tessara {

class GlSurface;
class ToolTips;

/// A dialog on the desktop, made of a template.
class WxDialogWindow final : public DialogWindow, private wxEventFilter {
public:
    /// \param parent null for none
    WxDialogWindow(const DialogTemplate& form, DialogEvents& events, wxWindow* parent);
    WxDialogWindow(const WxDialogWindow&) = delete;
    WxDialogWindow& operator=(const WxDialogWindow&) = delete;
    ~WxDialogWindow() override;

    /// Shows the dialog until it ends. \return its result
    int Run();

    wxDialog& Window() noexcept { return dialog_; }

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
    bool CreateToolTip() override;
    void SetToolTipLink(UINT message) override { linkMessage_ = message; }
    void AddToolTip(int control, const std::string& markup) override;
    void RelayToToolTip(const InputMessage& message) override;
    void ShowHelp(const std::string& markup) override;
    DeviceContext* GetDeviceContext(int control) override;
    void Post(UINT message, WPARAM wParam, LPARAM lParam) override;
    void End(int result) override;
    NativeWindow Native() const override { return dialog_.GetHandle(); }

private:
    struct Control {
        const ControlTemplate* form = nullptr;
        wxWindow* window = nullptr;
        std::unique_ptr<GlSurface> surface;
    };

    // Building and events, in wx_dialog_events.cpp.
    void Build();
    void Add(const ControlTemplate& form);
    wxRect PlaceOf(const ControlTemplate& form) const;
    wxWindow* AddViewport(const ControlTemplate& form, Control& control);
    wxWindow* AddSpin(const ControlTemplate& form);
    void Listen(const ControlTemplate& form, wxWindow& window);
    void Realize();
    int FilterEvent(wxEvent& event) override;
    static int KeyPressed(void* widget, void* event, WxDialogWindow* self);
    void OnKey(wxKeyEvent& event);
    bool TakeKey(int key, bool shift);
    bool HandleKey(int key, bool shift);
    void Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    void Notify(int control, UINT notification);
    bool StepBuddy(int edit, int steps);
    void Step(int spin, int steps);
    void FocusNext(bool previous);
    void PressDefault();
    template <class Body>
    void WithHostContext(Body&& body);

    const Control* Find(int control) const;
    const Control* Find(int control, ControlKind kind) const;
    int IdOf(const wxWindow* window) const;

    const DialogTemplate& form_;
    DialogEvents& events_;
    wxDialog dialog_;
    std::map<int, Control> controls_;  // windows are children of the dialog
    std::unique_ptr<ToolTips> toolTips_;
    UINT linkMessage_ = 0;
    CurrentContext hostContext_;  // for the handlers' OpenGL calls
    bool alive_ = false;          // between Created and WM_DESTROY
    bool ended_ = false;
    int result_ = IDCANCEL;
};

}  // namespace tessara

#pragma once

#include "platform/ui/cwnd.h"
#include "platform/ui/dialog_window.h"
#include "platform/ui/message_map.h"

#include <exception>
#include <map>
#include <memory>

namespace tessara {
class WindowSystem;
struct DialogTemplate;
}  // namespace tessara

/// What passes when a dialog binds its members to its controls.
struct CDataExchange {
    CDialog* m_pDlgWnd;
};

/// A modal dialog of a template of the module's resources. Controls without a member are reached by id; an id that the
/// template lacks gives a window on which everything does nothing.
///
/// What a handler throws ends the dialog with IDCANCEL and comes out of DoModal.
class CDialog : public CWnd, private tessara::DialogEvents {
public:
    /// \param parent null for the application's main window; outlives the dialog
    explicit CDialog(UINT templateId, CWnd* parent = nullptr) noexcept : m_template(templateId), m_parent(parent) {}

    /// Runs the dialog. \return what EndDialog gave: IDOK and IDCANCEL for the closing buttons; IDCANCEL where the
    /// dialog can't be shown, -1 where there is no such template. Nothing is sent to the dialog in the last two cases.
    int DoModal();

    CWnd* GetDlgItem(int id);
    void CheckDlgButton(int id, BOOL check);
    BOOL IsDlgButtonChecked(int id) const;

    /// The control that the keyboard goes to, or null.
    CWnd* GetFocus();

    /// The dialog, where it is the window that the user works in, else null.
    CWnd* GetActiveWindow();

    /// The next control in tab order that can have the focus, the first after the last one.
    /// \param from null for a start before the first control \return null when no control can have the focus
    CWnd* GetNextDlgTabItem(const CWnd* from, BOOL previous = FALSE);
    void GotoDlgCtrl(CWnd* control);

    /// Handles a message at once. \return the handler's result, 0 without a handler
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    /// Has a message handled after the running one. \return FALSE for a dialog that isn't open
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    void EndDialog(int result);

    /// Makes a member stand for a control. Called in DoDataExchange.
    void BindControl(int id, CWnd& member);

protected:
    virtual const tessara::MessageMap* GetMessageMap() const;

    /// Binds members to controls, see DDX_Control. Called by OnInitDialog.
    virtual void DoDataExchange(CDataExchange* exchange);

    /// A key or a move of the mouse is about to go to a control. \return TRUE to take it
    virtual BOOL PreTranslateMessage(tessara::InputMessage* message);

    /// The window and its controls exist. A derived class calls this first.
    /// \return TRUE to give the first control in tab order the focus
    virtual BOOL OnInitDialog();

    virtual void OnOK();
    virtual void OnCancel();

    /// Default handlers, to be called by those of a derived class. The window system has painted already.
    void OnPaint() {}
    void OnDestroy() {}

private:
    bool Created(tessara::DialogWindow& window) override;
    bool Translate(tessara::InputMessage& message) override;
    LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Step(int control, int steps) override;

    int RunIn(tessara::WindowSystem& system, const tessara::DialogTemplate& form);
    template <class Body>
    void KeepFailure(Body&& body) noexcept;
    const tessara::MessageMapEntry* FindHandler(UINT message, WPARAM wParam) const;
    const tessara::DialogTemplate* Template() const;
    void Unbind();

    UINT m_template;
    CWnd* m_parent;
    std::map<int, CWnd*> m_members;                  // bound by DDX_Control
    std::map<int, std::unique_ptr<CWnd>> m_unbound;  // made by GetDlgItem
    std::exception_ptr m_failure;
};

/// Binds a member to the control `id` of the dialog.
inline void DDX_Control(CDataExchange* exchange, int id, CWnd& member)
{
    exchange->m_pDlgWnd->BindControl(id, member);
}

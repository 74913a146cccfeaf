#pragma once

#include "platform/ui/window_types.h"

#include <string>

namespace tessara {
class DialogWindow;
}

class CDialog;

/// A window: a dialog, a control of a dialog, or a window of somebody else's. As long as it stands for none, everything
/// does nothing and answers with nothing; the same holds for the operations on controls where it stands for a window of
/// somebody else's. Texts are UTF-8.
class CWnd {
public:
    CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    virtual ~CWnd() = default;

    /// Makes this stand for a window of somebody else's, as a parent of dialogs. \param window not owned
    void Attach(tessara::NativeWindow window) noexcept { m_native = window; }

    tessara::NativeWindow GetSafeHwnd() const;
    int GetDlgCtrlID() const noexcept { return m_control; }

    /// The open dialog that this window is, or is a control of; null for none. Owned by the window system.
    tessara::DialogWindow* Dialog() const noexcept { return m_window; }

    std::string GetWindowText() const;
    void SetWindowText(const std::string& text);
    void EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;

    /// In pixels of the screen. \param rect all 0 without a window
    void GetWindowRect(RECT* rect) const;

    /// Has the window drawn again, soon. \param erase the background is drawn again in either case
    void Invalidate(BOOL erase = TRUE);

    void SetFocus();

    /// A message box of this window. \param caption null for "Tessara" \param type MB_OK or MB_YESNO
    /// \return IDOK, IDYES or IDNO
    int MessageBox(const std::string& text, const char* caption = nullptr, UINT type = MB_OK) const;

    static void BeginWaitCursor();
    static void EndWaitCursor();

protected:
    tessara::DialogWindow* m_window = nullptr;  // the open dialog, owned by the window system
    int m_control = 0;                          // id of the control, 0 for the dialog itself

private:
    friend class CDialog;

    /// An arrow of this spin control, which belongs to the control `buddy`, was pressed. \param steps positive for up
    virtual void OnStep(CDialog& dialog, int buddy, int steps);

    tessara::NativeWindow m_native = nullptr;
};

/// The application's main window, as the parent of dialogs: whatever the window system takes for it.
CWnd* AfxGetMainWnd() noexcept;

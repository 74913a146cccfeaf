#include "platform/ui/cwnd.h"

#include "platform/ui/dialog_window.h"
#include "platform/ui/window_system.h"

tessara::NativeWindow CWnd::GetSafeHwnd() const
{
    return m_window ? m_window->Native() : m_native;
}

std::string CWnd::GetWindowText() const
{
    return m_window ? m_window->GetText(m_control) : std::string();
}

void CWnd::SetWindowText(const std::string& text)
{
    if (m_window)
        m_window->SetText(m_control, text);
}

void CWnd::EnableWindow(BOOL enable)
{
    if (m_window)
        m_window->Enable(m_control, enable != FALSE);
}

BOOL CWnd::IsWindowEnabled() const
{
    return m_window && m_window->IsEnabled(m_control) ? TRUE : FALSE;
}

void CWnd::GetWindowRect(RECT* rect) const
{
    *rect = m_window ? m_window->GetRect(m_control) : RECT{};
}

void CWnd::Invalidate(BOOL)
{
    if (m_window)
        m_window->Invalidate(m_control);
}

void CWnd::SetFocus()
{
    if (m_window)
        m_window->SetFocus(m_control);
}

int CWnd::MessageBox(const std::string& text, const char* caption, UINT type) const
{
    return tessara::CurrentWindowSystem().ShowMessage(text, caption ? caption : "Tessara", type, GetSafeHwnd());
}

void CWnd::BeginWaitCursor()
{
    tessara::CurrentWindowSystem().BeginWaitCursor();
}

void CWnd::EndWaitCursor()
{
    tessara::CurrentWindowSystem().EndWaitCursor();
}

void CWnd::OnStep(CDialog&, int, int) {}

CWnd* AfxGetMainWnd() noexcept
{
    static CWnd window;
    return &window;
}

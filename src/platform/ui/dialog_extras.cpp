#include "platform/ui/cclient_dc.h"
#include "platform/ui/cpp_tool_tip.h"
#include "platform/ui/cxt_hyper_link.h"
#include "platform/ui/dialog_window.h"
#include "platform/ui/resource_table.h"
#include "platform/ui/window_system.h"

CClientDC::CClientDC(const CWnd* control)
    : m_device(control->Dialog() ? control->Dialog()->GetDeviceContext(control->GetDlgCtrlID()) : nullptr)
{
}

BOOL CPPToolTip::Create(CWnd* dialog, BOOL)
{
    if (!dialog->Dialog() || !dialog->Dialog()->CreateToolTip())
        return FALSE;
    m_dialog = dialog;
    return TRUE;
}

void CPPToolTip::SetCallbackHyperlink(CWnd*, UINT message, LPARAM)
{
    if (tessara::DialogWindow* window = Window())
        window->SetToolTipLink(message);
}

void CPPToolTip::AddTool(CWnd* control, UINT textId, const RECT*, UINT)
{
    if (tessara::DialogWindow* window = Window())
        window->AddToolTip(control->GetDlgCtrlID(), LoadString(textId));
}

void CPPToolTip::RelayEvent(const tessara::InputMessage* message)
{
    if (tessara::DialogWindow* window = Window())
        window->RelayToToolTip(*message);
}

void CPPToolTip::ShowHelpTooltip(const std::string& text)
{
    if (tessara::DialogWindow* window = Window())
        window->ShowHelp(text);
}

tessara::DialogWindow* CPPToolTip::Window() const
{
    return m_dialog ? m_dialog->Dialog() : nullptr;
}

BOOL CXTHyperLink::GotoURL(const std::string& address, int)
{
    return tessara::CurrentWindowSystem().OpenAddress(address) ? TRUE : FALSE;
}

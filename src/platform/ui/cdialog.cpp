#include "platform/ui/cdialog.h"

#include "platform/ui/resource_table.h"
#include "platform/ui/window_system.h"

#include <utility>

int CDialog::DoModal()
{
    const tessara::DialogTemplate* form = Template();
    if (!form)
        return -1;
    tessara::WindowSystem& system = tessara::CurrentWindowSystem();
    if (!system.CanOpenWindows())
        return IDCANCEL;
    const int result = RunIn(system, *form);
    if (m_failure)
        std::rethrow_exception(std::exchange(m_failure, nullptr));
    return result;
}

int CDialog::RunIn(tessara::WindowSystem& system, const tessara::DialogTemplate& form)
{
    struct Unbinder {
        CDialog& dialog;
        ~Unbinder() { dialog.Unbind(); }
    } const unbinder{*this};
    return system.RunDialog(form, *this, m_parent ? m_parent->GetSafeHwnd() : nullptr);
}

CWnd* CDialog::GetDlgItem(int id)
{
    const auto member = m_members.find(id);
    if (member != m_members.end())
        return member->second;
    std::unique_ptr<CWnd>& window = m_unbound[id];
    if (!window)
        window = std::make_unique<CWnd>();
    window->m_window = m_window;
    window->m_control = id;
    return window.get();
}

void CDialog::CheckDlgButton(int id, BOOL check)
{
    if (m_window)
        m_window->SetChecked(id, check != FALSE);
}

BOOL CDialog::IsDlgButtonChecked(int id) const
{
    return m_window && m_window->IsChecked(id) ? TRUE : FALSE;
}

CWnd* CDialog::GetFocus()
{
    const int control = m_window ? m_window->GetFocus() : 0;
    return control == 0 ? nullptr : GetDlgItem(control);
}

CWnd* CDialog::GetActiveWindow()
{
    return m_window && m_window->IsActive() ? this : nullptr;
}

CWnd* CDialog::GetNextDlgTabItem(const CWnd* from, BOOL previous)
{
    const tessara::DialogTemplate* form = Template();
    if (!form || !m_window)
        return nullptr;
    const auto controls = form->controls;
    const std::size_t count = controls.size();
    std::size_t place = previous ? 0 : count - 1;
    for (std::size_t i = 0; i < count && from; ++i) {
        if (controls[i].id == from->GetDlgCtrlID())
            place = i;
    }
    for (std::size_t tried = 0; tried < count; ++tried) {
        place = (place + (previous ? count - 1 : 1)) % count;
        if (controls[place].tabStop && m_window->IsEnabled(controls[place].id))
            return GetDlgItem(controls[place].id);
    }
    return nullptr;
}

void CDialog::GotoDlgCtrl(CWnd* control)
{
    control->SetFocus();
}

LRESULT CDialog::SendMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const tessara::MessageMapEntry* entry = FindHandler(message, wParam);
    return entry ? entry->call(*this, wParam, lParam) : 0;
}

BOOL CDialog::PostMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_window)
        return FALSE;
    m_window->Post(message, wParam, lParam);
    return TRUE;
}

void CDialog::EndDialog(int result)
{
    if (m_window)
        m_window->End(result);
}

void CDialog::BindControl(int id, CWnd& member)
{
    m_members[id] = &member;
    member.m_window = m_window;
    member.m_control = id;
}

const tessara::MessageMap* CDialog::GetMessageMap() const
{
    static const tessara::MessageMapEntry entries[] = {
        tessara::OnControl<&CDialog::OnOK>(IDOK, BN_CLICKED),
        tessara::OnControl<&CDialog::OnCancel>(IDCANCEL, BN_CLICKED),
    };
    static const tessara::MessageMap map = {nullptr, entries};
    return &map;
}

void CDialog::DoDataExchange(CDataExchange*) {}

BOOL CDialog::PreTranslateMessage(tessara::InputMessage*)
{
    return FALSE;
}

BOOL CDialog::OnInitDialog()
{
    CDataExchange exchange{this};
    DoDataExchange(&exchange);
    return TRUE;
}

void CDialog::OnOK()
{
    EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

bool CDialog::Created(tessara::DialogWindow& window)
{
    m_window = &window;
    bool focusFirst = true;
    KeepFailure([&] { focusFirst = OnInitDialog() != FALSE; });
    return focusFirst;
}

bool CDialog::Translate(tessara::InputMessage& message)
{
    bool taken = false;
    KeepFailure([&] { taken = PreTranslateMessage(&message) != FALSE; });
    return taken;
}

LRESULT CDialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    KeepFailure([&] { result = SendMessage(message, wParam, lParam); });
    return result;
}

void CDialog::Step(int control, int steps)
{
    const auto member = m_members.find(control);
    const tessara::DialogTemplate* form = Template();
    if (member == m_members.end() || !form)
        return;
    for (const tessara::ControlTemplate& candidate : form->controls) {
        if (candidate.id == control)
            KeepFailure([&] { member->second->OnStep(*this, candidate.buddy, steps); });
    }
}

/// Window systems are written in C and mustn't be thrown through.
template <class Body>
void CDialog::KeepFailure(Body&& body) noexcept
{
    try {
        body();
    } catch (...) {
        if (!m_failure)
            m_failure = std::current_exception();
        EndDialog(IDCANCEL);
    }
}

const tessara::MessageMapEntry* CDialog::FindHandler(UINT message, WPARAM wParam) const
{
    const bool command = message == WM_COMMAND;
    for (const tessara::MessageMap* map = GetMessageMap(); map; map = map->base) {
        for (const tessara::MessageMapEntry& entry : map->entries) {
            if (entry.message == message && (!command || (entry.control == tessara::CommandControl(wParam) &&
                                                          entry.notification == tessara::CommandNotification(wParam))))
                return &entry;
        }
    }
    return nullptr;
}

const tessara::DialogTemplate* CDialog::Template() const
{
    return tessara::DialogTable::Find(m_template);
}

/// Members outlive the window: they stand for nothing from now on.
void CDialog::Unbind()
{
    for (const auto& [id, member] : m_members)
        member->m_window = nullptr;
    m_members.clear();
    m_unbound.clear();
    m_window = nullptr;
}

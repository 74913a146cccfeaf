#include "platform/ui/ccombo_box.h"
#include "platform/ui/clist_box.h"
#include "platform/ui/dialog_window.h"

#include <algorithm>

int CComboBox::AddString(const std::string& text)
{
    return m_window ? m_window->AddRow(m_control, text) : -1;
}

void CComboBox::ResetContent()
{
    if (m_window)
        m_window->ClearRows(m_control);
}

int CComboBox::GetCount() const
{
    return m_window ? m_window->RowCount(m_control) : 0;
}

int CComboBox::GetCurSel() const
{
    return m_window ? m_window->CurrentRow(m_control) : -1;
}

void CComboBox::SetCurSel(int row)
{
    if (m_window)
        m_window->SetCurrentRow(m_control, row);
}

std::string CComboBox::GetLBText(int row) const
{
    return m_window ? m_window->RowText(m_control, row) : std::string();
}

int CListBox::AddString(const std::string& text)
{
    return m_window ? m_window->AddRow(m_control, text) : -1;
}

void CListBox::ResetContent()
{
    if (m_window)
        m_window->ClearRows(m_control);
}

int CListBox::GetCount() const
{
    return m_window ? m_window->RowCount(m_control) : 0;
}

int CListBox::GetCurSel() const
{
    return m_window ? m_window->CurrentRow(m_control) : -1;
}

std::vector<int> CListBox::GetSelItems(int limit) const
{
    std::vector<int> rows = m_window ? m_window->SelectedRows(m_control) : std::vector<int>();
    rows.resize(std::min(rows.size(), static_cast<std::size_t>(std::max(limit, 0))));
    return rows;
}

void CListBox::SetSel(int row, BOOL select)
{
    if (m_window)
        m_window->SelectRow(m_control, row, select != FALSE);
}

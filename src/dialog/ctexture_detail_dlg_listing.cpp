#include "dialog/ctexture_detail_dlg.h"
#include "dialog/database_selector.h"
#include "dialog/detail_resources.h"
#include "platform/com/bstr.h"
#include "services/kvo_host.h"
#include "services/texture_database.h"

#include <string_view>
#include <unordered_map>

using namespace tessara;

namespace {

using WideView = std::basic_string_view<OLECHAR>;

WideView View(BSTR text)
{
    return text ? WideView(text, SysStringLen(text)) : WideView();
}

void Free(std::vector<BSTR>& strings) noexcept
{
    for (const BSTR string : strings)
        SysFreeString(string);
    strings.clear();
}

}  // namespace

/// \return null where the host has no such database
ComPtr<ITextureDatabase> CTextureDetailDlg::OpenDatabase(VARIANT* selector)
{
    ComPtr<ITextureDatabase> database;
    if (m_pHost)
        m_pHost->OpenTextureDatabase(database.Out(), selector);
    return database;
}

/// The system's database is read-only to the user.
void CTextureDetailDlg::UpdateDatabaseControls()
{
    const BOOL enable = m_strDatabaseLabel != m_strSystemLabel && m_hasDatabase ? TRUE : FALSE;
    for (const int control : {kNameLabel, kImportButton, kDeleteButton, kNameField})
        GetDlgItem(control)->EnableWindow(enable);
}

/// There is nothing to choose from, apply or change in a database that the host doesn't have.
void CTextureDetailDlg::SetDatabasePresent(bool present)
{
    if (present == m_hasDatabase)
        return;
    m_hasDatabase = present;
    m_listElements.EnableWindow(present ? TRUE : FALSE);
    m_btnApply.EnableWindow(present ? TRUE : FALSE);
    UpdateDatabaseControls();
}

void CTextureDetailDlg::FillElementList()
{
    FreeElements();
    m_listElements.ResetContent();
    DatabaseSelector selector(m_strDatabaseLabel == m_strUserLabel);
    const ComPtr<ITextureDatabase> database = OpenDatabase(selector.Get());
    SetDatabasePresent(static_cast<bool>(database));
    if (!database)
        return;
    ReadElements(*database);
    // A key that stands there twice has the display name of its first entry, as in FindDisplayName.
    std::unordered_map<WideView, std::size_t> entries;
    int selected = 0;
    for (std::size_t i = 0; i < m_keys.size(); ++i) {
        const std::string name = NarrowText(m_displayNames[i]);
        m_listElements.AddString(name.empty() ? NarrowText(m_keys[i]) : name);
        const std::size_t first = entries.emplace(View(m_keys[i]), i).first->second;
        if ((first == i ? name : NarrowText(m_displayNames[first])) == m_strElement)
            selected = static_cast<int>(i);
    }
    m_listElements.SetSel(selected, TRUE);
}

/// Fills both lists, to the same length whatever the database gives.
void CTextureDetailDlg::ReadElements(ITextureDatabase& database)
{
    const BstrHolder table(m_strTable);
    database.SetTableName(table.Get());
    database.ListElements(&m_keys, &m_displayNames);
    for (std::size_t i = m_keys.size(); i < m_displayNames.size(); ++i)
        SysFreeString(m_displayNames[i]);
    m_displayNames.resize(m_keys.size(), nullptr);
}

void CTextureDetailDlg::FreeElements() noexcept
{
    Free(m_keys);
    Free(m_displayNames);
}

/// \return false, with `out` left alone, for an unknown key; an element without a display name is found
bool CTextureDetailDlg::FindDisplayName(const std::string& key, std::string& out) const
{
    const std::basic_string<OLECHAR> wide = WideText(key);
    for (std::size_t i = 0; i < m_keys.size(); ++i) {
        if (View(m_keys[i]) == wide) {
            out = NarrowText(m_displayNames[i]);
            return true;
        }
    }
    return false;
}

void CTextureDetailDlg::OnDatabaseSelChange()
{
    const int row = m_comboDatabase.GetCurSel();
    if (row < 0)
        return;
    m_strDatabaseLabel = m_comboDatabase.GetLBText(row);
    UpdateDatabaseControls();
    FillElementList();
    m_strElement.clear();
    OnElementSelChange();
}

/// Also the step after each refill of the list. The element becomes the preview's; the surface gets it from OnApply.
void CTextureDetailDlg::OnElementSelChange()
{
    DropPreviewTexture();
    if (m_listElements.GetCount() == 0) {
        Invalidate();
        return;
    }
    const int row = m_listElements.GetCurSel();
    if (row < 0 || static_cast<std::size_t>(row) >= m_keys.size())
        return;
    CheckDlgButton(kShowBox, TRUE);
    OnShowClicked();
    m_strElement = NarrowText(m_keys[static_cast<std::size_t>(row)]);
    LoadPreviewElement();
    Invalidate(TRUE);
}

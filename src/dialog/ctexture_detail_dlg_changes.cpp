#include "dialog/ctexture_detail_dlg.h"
#include "dialog/database_selector.h"
#include "dialog/detail_resources.h"
#include "platform/com/bstr.h"
#include "platform/system/number_text.h"
#include "services/progress_window.h"
#include "surface/itessara.h"

using namespace tessara;

/// The host shows each change at once, behind the dialog.
void CTextureDetailDlg::Redraw()
{
    if (m_pProgress)
        m_pProgress->RequestRedraw(8, 0);
}

void CTextureDetailDlg::OnApply()
{
    std::string name;
    if (FindDisplayName(m_strElement, name))
        m_pSurface->SetUserTextureName(BstrHolder(name).Get());
    const BstrHolder key(m_strElement);
    const BstrHolder table(m_strTable);
    DatabaseSelector selector(m_strDatabaseLabel == m_strUserLabel);
    m_pSurface->SetTextureDetailFromDB(key.Get(), table.Get(), selector.Get());
    Redraw();
}

void CTextureDetailDlg::OnShowClicked()
{
    m_pSurface->UseTextureDetail(IsDlgButtonChecked(kShowBox) ? 1 : 0);
    Redraw();
}

void CTextureDetailDlg::OnBrightnessSelChange()
{
    m_pSurface->SetTextureDetailRGBGamma(m_comboBrightness.GetCurSel() + 1);
    Redraw();
}

void CTextureDetailDlg::OnTilingXKillFocus()
{
    ApplyTiling(m_editTilingX, true);
}

void CTextureDetailDlg::OnTilingYKillFocus()
{
    ApplyTiling(m_editTilingY, false);
}

/// Once a field was edited it stays modified, and each time it is left applies its text again.
void CTextureDetailDlg::ApplyTiling(CEdit& field, bool horizontal)
{
    if (!field.GetModify())
        return;
    auto value = static_cast<float>(LeadingNumber(field.GetWindowText()));
    m_pSurface->SetTextureDetailTiling(horizontal ? &value : nullptr, horizontal ? nullptr : &value);
    Redraw();
    field.SetModify(TRUE);
}

LRESULT CTextureDetailDlg::OnSpinUp(WPARAM id, LPARAM)
{
    if (id == kTilingXSpin) {
        m_editTilingX.SetModify(TRUE);
        OnTilingXKillFocus();
    } else if (id == kTilingYSpin) {
        m_editTilingY.SetModify(TRUE);
        OnTilingYKillFocus();
    }
    return 1;
}

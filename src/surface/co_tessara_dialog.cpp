#include "dialog/ctexture_detail_dlg.h"
#include "services/kvo_host.h"
#include "services/progress_window.h"
#include "surface/co_tessara.h"

#include <utility>

namespace {

/// Tells the host's view that a modal dialog stands before it.
class ViewBehindDialog {
public:
    explicit ViewBehindDialog(IProgressWindow* progress) : progress_(progress)
    {
        if (progress_)
            progress_->SetViewState(0, 8);
    }
    ViewBehindDialog(const ViewBehindDialog&) = delete;
    ViewBehindDialog& operator=(const ViewBehindDialog&) = delete;
    ~ViewBehindDialog()
    {
        if (progress_)
            progress_->SetViewState(1, 2);
    }

private:
    IProgressWindow* progress_;
};

/// What the dialog takes back when it is cancelled. Taken before it opens, so that going back needs no memory.
struct DetailBefore {
    tessara::BstrHolder name;
    tessara::BstrHolder table;
    std::string database;
    float tiling[2] = {};
    int rgbScale = 0;
};

}  // namespace

HRESULT CoTessara::TextureDetailDlg()
{
    if (!m_pKvo || !m_pTerrain)
        return E_FAIL;
    ComPtr<IProgressWindow> progress;
    m_pKvo->GetProgressWindow(progress.Out());
    const ViewBehindDialog view(progress.Get());
    return Guard(
        [this] {
            DetailBefore before{tessara::BstrHolder(m_detailName), tessara::BstrHolder(m_detailTable), m_database};
            GetTextureDetailTiling(&before.tiling[0], &before.tiling[1]);
            GetTextureDetailRGBGamma(&before.rgbScale);
            if (RunDetailDialog())
                return S_OK;
            SetTextureDetailTiling(&before.tiling[0], &before.tiling[1]);
            SetTextureDetailRGBGamma(before.rgbScale);
            m_database = std::move(before.database);
            VARIANT user{};
            SetTextureDetailFromDB(before.name.Get(), before.table.Get(), m_database == "USERDB" ? &user : nullptr);
            return S_FALSE;
        },
        S_FALSE);
}

/// \return whether the user agreed to the changes; a dialog that broke off counts as cancelled
bool CoTessara::RunDetailDialog()
{
    int result = IDCANCEL;
    Guard([&] {
        CTextureDetailDlg dialog(this, m_pKvo, AfxGetMainWnd());
        dialog.SetCurrentElement(m_userTextureName);
        dialog.SetDatabaseKey(m_database);
        result = dialog.DoModal();
        return S_OK;
    });
    return result == IDOK;
}

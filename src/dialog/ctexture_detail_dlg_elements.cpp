#include "dialog/ctexture_detail_dlg.h"
#include "dialog/database_selector.h"
#include "dialog/detail_resources.h"
#include "dialog/image_filter.h"
#include "platform/com/bstr.h"
#include "platform/ui/cfile_dialog.h"
#include "platform/ui/wait_cursor.h"
#include "services/image_file.h"
#include "services/kvo_host.h"
#include "services/progress_window.h"
#include "services/texture_database.h"

#include <utility>

using namespace tessara;

namespace {

/// Tells the user, where the host shows messages.
void Tell(IProgressWindow* progress, UINT text)
{
    if (progress)
        progress->ShowMessage(BstrHolder(LoadString(text)).Get());
}

}  // namespace

void CTextureDetailDlg::OnImport()
{
    const std::string name = m_editName.GetWindowText();
    if (name.empty()) {
        MessageBox(LoadString(kNameMissing), LoadString(kProductName).c_str(), MB_OK);
        return;
    }
    CFileDialog question(TRUE, "*.*", nullptr, OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, kImageFilter, this);
    if (question.DoModal() != IDOK)
        return;
    DatabaseSelector user(true);
    ComPtr<ITextureDatabase> database = OpenDatabase(user.Get());
    if (!database) {
        Tell(m_pProgress, kNoUserDatabase);
        return;
    }
    if (!MakeRoomFor(*database, name))
        return;
    if (FAILED(StoreImage(std::move(database), question.GetPathName(), name)))
        return;
    FillElementList();
    OnElementSelChange();
}

/// Takes an element of this display name out, if the user agrees. \return false where it has to stay
bool CTextureDetailDlg::MakeRoomFor(ITextureDatabase& database, const std::string& name)
{
    database.SetDisplayName(BstrHolder(name).Get());
    if (database.DisplayNameExists() == 0)
        return true;
    if (MessageBox(LoadString(kReplaceQuestion), LoadString(kProductName).c_str(), MB_YESNO) != IDYES)
        return false;
    database.DeleteElement();
    return true;
}

/// Reads an image under the wait cursor and stores it. The host's image reader tells the user why it can't.
/// \return what opening the image gave
HRESULT CTextureDetailDlg::StoreImage(ComPtr<ITextureDatabase> database, const std::string& path,
                                      const std::string& name)
{
    const BstrHolder file(path);
    const BstrHolder displayName(name);
    ComPtr<IImageFile> image;
    m_pHost->CreateImageFile(image.Out());
    if (!image) {
        Tell(m_pProgress, kNoImageReader);
        return E_FAIL;
    }
    image->SetFileName(file.Get());
    image->SetProgressWindow(m_pProgress);
    image->SetTextureMgr(nullptr);
    const WaitCursor cursor;
    const ComPtr<IImageFile> reader = std::move(image);  // goes before the cursor, and behind the database
    const HRESULT opened = reader->Open();
    if (SUCCEEDED(opened))
        CopyImage(*reader, *database, displayName.Get());
    database = nullptr;
    reader->Close();
    return opened;
}

void CTextureDetailDlg::CopyImage(IImageFile& image, ITextureDatabase& database, BSTR name)
{
    UINT width = 0;
    UINT height = 0;
    VARIANT pixels{};
    WORD bitsPerPixel = 0;
    BstrHolder key;
    image.GetWidth(&width);
    image.GetHeight(&height);
    image.ReadPixels();
    image.GetPixels(&pixels);
    image.GetBitsPerPixel(&bitsPerPixel);
    m_pHost->NewElementKey(key.Out());
    database.SetElementKey(key.Get());
    database.SetDisplayName(name);
    database.SetWidth(width);
    database.SetHeight(height);
    database.SetBitsPerPixel(bitsPerPixel);
    database.SetPixels(&pixels);
    database.StoreElement();
}

void CTextureDetailDlg::OnDelete()
{
    if (MessageBox(LoadString(kDeleteQuestion), "Delete", MB_YESNO) != IDYES)
        return;
    const std::vector<int> rows = m_listElements.GetSelItems(m_listElements.GetCount());
    if (rows.empty())
        return;
    for (const int row : rows) {
        if (row < 0 || static_cast<std::size_t>(row) >= m_keys.size())
            continue;
        DatabaseSelector user(true);
        const ComPtr<ITextureDatabase> database = OpenDatabase(user.Get());
        if (!database)
            continue;
        database->SetElementKey(m_keys[static_cast<std::size_t>(row)]);
        database->DeleteElement();
    }
    FillElementList();
    OnElementSelChange();
}

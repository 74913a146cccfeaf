#include "app/viewer/window/texture_desk.h"

#include "app/view/saved_textures.h"
#include "app/viewer/viewer.h"
#include "app/viewer/window/dialogs/messages.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/settings_desk.h"
#include "surface/itessara.h"

namespace tessara {

TextureDesk::TextureDesk(wxWindow& window, Viewer& viewer, PicturePane& picture, SettingsDesk& settings)
    : window_(window), viewer_(viewer), picture_(picture), settings_(settings)
{
}

/// The surface asks for the file, and tells what is wrong with it.
void TextureDesk::Import()
{
    const bool imported = SUCCEEDED(viewer_.Document().Session().Surface().ImportTextureSource(nullptr));
    if (!imported || !picture_.MakeCurrent())
        return;
    hasSource_ = true;
    settings_.Change([](ViewSettings& settings) { settings.sourceTexture = true; });
    viewer_.Work().TexturesChanged();
}

void TextureDesk::OpenDialog()
{
    const HRESULT result = viewer_.Document().Session().Surface().TextureDetailDlg();
    if (FAILED(result))
        ShowError(&window_, "The dialog for detail textures couldn't be opened.");
    else if (result == S_OK)
        viewer_.Work().TexturesChanged();
    picture_.RequestDraw();
}

void TextureDesk::TerrainOpened()
{
    hasSource_ = tessara::HasSource(viewer_.Document().Session().Surface());
}

}  // namespace tessara

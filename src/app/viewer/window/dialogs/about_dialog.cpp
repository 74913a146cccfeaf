#include "app/viewer/window/dialogs/about_dialog.h"

#include <wx/aboutdlg.h>
#include <wx/generic/aboutdlgg.h>

namespace tessara {

void ShowAbout(wxWindow* parent)
{
    wxAboutDialogInfo about;
    about.SetName("Tessara");
    about.SetVersion(TESSARA_VERSION);
    about.SetDescription("Terrain from elevation files,\nwith as much detail as the view needs.");
    wxGenericAboutBox(about, parent);
}

}  // namespace tessara

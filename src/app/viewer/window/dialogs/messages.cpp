#include "app/viewer/window/dialogs/messages.h"

#include "app/viewer/window/window_text.h"

#include <wx/msgdlg.h>

namespace tessara {

void ShowError(wxWindow* parent, const std::string& message)
{
    wxMessageBox(Wide(message), "Tessara", wxOK | wxICON_ERROR, parent);
}

}  // namespace tessara

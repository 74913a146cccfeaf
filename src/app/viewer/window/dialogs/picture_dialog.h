#pragma once

#include <wx/gdicmn.h>

#include <optional>

class wxWindow;

namespace tessara {

/// Asks how large a picture shall be. \param shown size of the picture in the window, which is proposed
std::optional<wxSize> AskPictureSize(wxWindow* parent, const wxSize& shown);

}  // namespace tessara

#pragma once

#include <wx/gdicmn.h>

#include <optional>

class wxWindow;

namespace tessara {

/// Asks for the size of a picture. \param shown size of the picture in the window, which is proposed
std::optional<wxSize> AskPictureSize(wxWindow* parent, const wxSize& shown);

}  // namespace tessara

#pragma once

#include <wx/window.h>

namespace tessara {

/// Room between the controls of a page, in pixels.
inline int PageGap(const wxWindow* window, int count = 1)
{
    return window->FromDIP(6 * count);
}

}  // namespace tessara

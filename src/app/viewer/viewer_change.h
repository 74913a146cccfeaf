#pragma once

#include <functional>

namespace tessara {

/// What the window must do about a change.
struct ViewerChange {
    bool picture = false;  ///< draw the terrain again
    bool map = false;      ///< draw the map again
    bool state = false;    ///< show menus, fields and titles anew
    bool brush = false;    ///< draw the outline of the brush again
};

/// Hears of changes, on the window's thread.
using ViewerListener = std::function<void(const ViewerChange&)>;

}  // namespace tessara

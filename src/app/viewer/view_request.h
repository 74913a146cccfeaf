#pragma once

#include "host/elevation/elevation_file.h"

#include <string>

namespace tessara {

/// What "tessara view" asks of the viewer's library.
struct ViewRequest {
    std::string file;     ///< an elevation file or a project; empty for the built-in sample
    std::string element;  ///< which terrain of a project; empty to ask where there are several
    ElevationReadOptions reading;
    double exaggeration = 0.0;  ///< 0 for the one of the last time
};

enum class ViewResult { Done, NoDisplay, Failed };

/// Entry of the viewer's library, exported under the name kViewerEntry: runs the window until it is closed.
using ViewerEntry = ViewResult (*)(const ViewRequest& request);
inline constexpr char kViewerEntry[] = "TessaraViewer1";

}  // namespace tessara

#include "app/viewer/window/window_text.h"

#include <wx/filename.h>

namespace tessara {

std::string TerrainName(const std::string& path)
{
    return path.empty() ? "Sample" : wxFileName(Wide(path)).GetFullName().utf8_string();
}

}  // namespace tessara

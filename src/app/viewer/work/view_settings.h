#pragma once

#include "app/viewer/terrain/height_brush.h"

#include <map>
#include <string>
#include <vector>

namespace tessara {

enum class FillMode { Filled, Wireframe, Points };

/// What a person can set about the picture, and what the next start of the program shall know.
struct ViewSettings {
    double errorPixels = 1.5;  ///< height errors smaller than this many pixels are left; smaller is finer
    double exaggeration = 1.0;
    FillMode fill = FillMode::Filled;
    bool vertexColors = true;
    bool sourceTexture = true;  ///< the imported picture of the ground is shown where there is one
    double sunAzimuth = 305.0;  ///< compass direction in degrees
    double sunHeight = 38.0;    ///< degrees above the horizon
    double fog = 0.3;           ///< 0 for none to 1
    bool realTime = false;      ///< heights may change, and the brush works
    BrushSettings brush;
    std::string ramp = "natural";

    // These begin anew at each start.
    bool levelColors = false;
    bool nodeBoxes = false;
    bool frozen = false;  ///< the detail stays as it is while the camera moves on
};

/// Where the window stood.
struct WindowPlace {
    int x = -1;  ///< of the screen; negative for wherever the desktop likes
    int y = -1;
    int width = 1200;
    int height = 800;
    bool maximised = false;
    int sideWidth = 330;  ///< of the panes beside the terrain
    int mapHeight = 280;
    bool sideShown = true;
    bool mapShown = true;
};

/// Files that were opened, the youngest first, each once.
class RecentFiles {
public:
    static constexpr std::size_t kMost = 9;

    void Add(std::string path);
    void Remove(std::string path);
    const std::vector<std::string>& Paths() const noexcept { return paths_; }

private:
    std::vector<std::string> paths_;
};

/// Everything that is kept between two starts.
struct KeptSettings {
    ViewSettings view;
    WindowPlace window;
    RecentFiles recent;
};

/// Settings as names and texts, as they are stored. Numbers have a decimal point.
using SettingsMap = std::map<std::string, std::string>;

SettingsMap Store(const KeptSettings& settings);

/// What is missing or no value gets its default, what is out of range the nearest value that isn't.
KeptSettings Restore(const SettingsMap& stored);

}  // namespace tessara

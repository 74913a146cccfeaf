#pragma once

#include "app/viewer/work/view_settings.h"

#include <map>
#include <string>
#include <vector>

namespace tessara {

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

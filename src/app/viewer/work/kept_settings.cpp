#include "app/viewer/work/kept_settings.h"

#include "app/viewer/work/setting_table.h"
#include "app/viewer/work/typed_number.h"

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

struct PlaceNumber {
    const char* name;
    int WindowPlace::*field;
    int low;
};

constexpr int kFarthest = 100000;
constexpr PlaceNumber kPlaceNumbers[] = {
    {"Window/X", &WindowPlace::x, -1},
    {"Window/Y", &WindowPlace::y, -1},
    {"Window/Width", &WindowPlace::width, 400},
    {"Window/Height", &WindowPlace::height, 300},
    {"Window/SideWidth", &WindowPlace::sideWidth, 100},
    {"Window/MapHeight", &WindowPlace::mapHeight, 50},
};

constexpr std::pair<const char*, bool WindowPlace::*> kPlaceSwitches[] = {
    {"Window/Maximised", &WindowPlace::maximised},
    {"Window/SideShown", &WindowPlace::sideShown},
    {"Window/MapShown", &WindowPlace::mapShown},
};

}  // namespace

void RecentFiles::Add(std::string path)
{
    Remove(path);
    paths_.insert(paths_.begin(), std::move(path));
    paths_.resize(std::min(paths_.size(), kMost));
}

void RecentFiles::Remove(std::string path)
{
    std::erase(paths_, path);
}

SettingsMap Store(const KeptSettings& settings)
{
    SettingsMap stored;
    for (const Setting& each : AllSettings()) {
        if (each.kept != Setting::Kept::Run)
            stored[each.name] = each.TextOf(settings.view);
    }
    for (const PlaceNumber& each : kPlaceNumbers)
        stored[each.name] = std::to_string(settings.window.*each.field);
    for (const auto& [name, field] : kPlaceSwitches)
        stored[name] = settings.window.*field ? "1" : "0";
    for (std::size_t i = 0; i < settings.recent.Paths().size(); ++i)
        stored["Recent/File" + std::to_string(i + 1)] = settings.recent.Paths()[i];
    return stored;
}

KeptSettings Restore(const SettingsMap& stored)
{
    KeptSettings settings;
    const auto find = [&stored](const std::string& name) {
        const auto found = stored.find(name);
        return found == stored.end() ? std::string() : found->second;
    };
    for (const Setting& each : AllSettings()) {
        if (each.kept != Setting::Kept::Run)
            each.TakeText(settings.view, find(each.name));
    }
    for (const PlaceNumber& each : kPlaceNumbers) {
        if (const auto number = WholeText<int>(find(each.name)))
            settings.window.*each.field = std::clamp(*number, each.low, kFarthest);
    }
    for (const auto& [name, field] : kPlaceSwitches) {
        const std::string text = find(name);
        if (text == "0" || text == "1")
            settings.window.*field = text == "1";
    }
    for (std::size_t i = RecentFiles::kMost; i > 0; --i) {
        const std::string path = find("Recent/File" + std::to_string(i));
        if (!path.empty())
            settings.recent.Add(path);
    }
    return settings;
}

}  // namespace tessara

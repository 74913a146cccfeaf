#include "app/viewer/window/files/settings_store.h"

#include "app/viewer/window/files/settings_file.h"

namespace tessara {

void SettingsStore::AddRecent(const std::string& path)
{
    kept_.recent.Add(path);
    changed_();
}

void SettingsStore::RemoveRecent(const std::string& path)
{
    kept_.recent.Remove(path);
    changed_();
}

void SettingsStore::ClearRecent()
{
    kept_.recent = {};
    changed_();
}

void SettingsStore::Write() const
{
    SaveSettings(kept_);
}

}  // namespace tessara

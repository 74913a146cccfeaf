#include "app/viewer/window/files/settings_store.h"

#include "app/viewer/window/files/settings_file.h"

#include <utility>

namespace tessara {

namespace {

constexpr int kSoon = 400;  // milliseconds

bool IsRecent(const std::string& name)
{
    return name.starts_with("Recent/");
}

}  // namespace

SettingsStore::SettingsStore(KeptSettings kept) : kept_(std::move(kept)), written_(Store(kept_))
{
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Write(); });
}

void SettingsStore::ChangeRecent(const std::function<void(RecentFiles&)>& change)
{
    change(kept_.recent);
    forRecent_.push_back(change);
    listener_.recent();
    Changed();
}

void SettingsStore::AddRecent(const std::string& path)
{
    ChangeRecent([path](RecentFiles& recent) { recent.Add(path); });
}

void SettingsStore::RemoveRecent(const std::string& path)
{
    ChangeRecent([path](RecentFiles& recent) { recent.Remove(path); });
}

void SettingsStore::ClearRecent()
{
    ChangeRecent([](RecentFiles& recent) { recent = {}; });
}

void SettingsStore::Changed()
{
    if (!timer_.IsRunning())
        timer_.StartOnce(kSoon);
}

void SettingsStore::Write()
{
    listener_.collect();
    SettingsMap now = Store(kept_);
    SettingsMap changed;
    for (const auto& [name, text] : now) {
        if (const auto old = written_.find(name); !IsRecent(name) && (old == written_.end() || old->second != text))
            changed[name] = text;
    }
    if (changed.empty() && forRecent_.empty())
        return;
    RecentFiles recent;
    const bool done = ChangeSettings([&](SettingsMap& stored) {
        for (const auto& [name, text] : changed)
            stored[name] = text;
        recent = Restore(stored).recent;
        for (const auto& change : forRecent_)
            change(recent);
        std::erase_if(stored, [](const auto& entry) { return IsRecent(entry.first); });
        for (const auto& [name, text] : Store({{}, {}, recent})) {
            if (IsRecent(name))
                stored[name] = text;
        }
    });
    if (!done)
        return;
    written_ = std::move(now);
    forRecent_.clear();
    if (kept_.recent.Paths() != recent.Paths()) {
        kept_.recent = recent;
        listener_.recent();
    }
}

}  // namespace tessara

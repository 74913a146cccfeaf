#pragma once

#include "app/viewer/work/kept_settings.h"

#include <functional>
#include <string>

namespace tessara {

/// What the window keeps for the next start: settings, its place, and the files that were opened.
class SettingsStore {
public:
    explicit SettingsStore(KeptSettings kept) : kept_(std::move(kept)) {}

    const KeptSettings& Kept() const noexcept { return kept_; }
    const std::vector<std::string>& Recent() const noexcept { return kept_.recent.Paths(); }

    /// \param changed the list of recent files is another one
    void Listen(std::function<void()> changed) { changed_ = std::move(changed); }

    void AddRecent(const std::string& path);
    void RemoveRecent(const std::string& path);
    void ClearRecent();

    void Keep(const ViewSettings& view) { kept_.view = view; }
    void Keep(const WindowPlace& place) { kept_.window = place; }

    /// Writes everything into the user's file of settings.
    void Write() const;

private:
    KeptSettings kept_;
    std::function<void()> changed_ = [] {};
};

}  // namespace tessara

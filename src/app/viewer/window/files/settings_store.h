#pragma once

#include "app/viewer/work/kept_settings.h"

#include <wx/timer.h>

#include <functional>
#include <string>
#include <vector>

namespace tessara {

/// What the window keeps for the next start: settings, its place, and the files that were opened. What changes is
/// written soon, and nothing else: other windows write theirs into the same file.
class SettingsStore {
public:
    struct Listener {
        std::function<void()> collect;  ///< the store is about to write: Keep what is to be kept
        std::function<void()> recent;   ///< the list of recent files is another one
    };

    explicit SettingsStore(KeptSettings kept);

    void Listen(Listener listener) { listener_ = std::move(listener); }

    const KeptSettings& Kept() const noexcept { return kept_; }
    const std::vector<std::string>& Recent() const noexcept { return kept_.recent.Paths(); }

    void AddRecent(const std::string& path);
    void RemoveRecent(const std::string& path);
    void ClearRecent();

    void Keep(const ViewSettings& view) { kept_.view = view; }
    void Keep(const WindowPlace& place) { kept_.window = place; }

    /// Something may have changed; writes soon.
    void Changed();

    /// Writes what has changed into the user's file of settings.
    void Write();

private:
    void ChangeRecent(const std::function<void(RecentFiles&)>& change);

    KeptSettings kept_;
    SettingsMap written_;                                       // what this window last saw in the file
    std::vector<std::function<void(RecentFiles&)>> forRecent_;  // what is to be done to the list in the file
    Listener listener_{[] {}, [] {}};
    wxTimer timer_;
};

}  // namespace tessara

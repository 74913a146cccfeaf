#pragma once

#include "app/viewer/work/view_settings.h"

#include <functional>

namespace tessara {

/// What the pages of settings tell the window.
struct SettingsListener {
    /// A setting becomes what the function makes of it.
    std::function<void(const std::function<void(ViewSettings&)>& change)> change;

    /// One of the commands was asked for.
    std::function<void(int command)> run;

    /// Heights in metres that get the first and the last colour.
    std::function<void(double low, double high)> colors;
    std::function<void()> resetColors;
};

}  // namespace tessara

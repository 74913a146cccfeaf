#pragma once

#include <functional>

namespace tessara {

/// Hears how far long work has come, from 0 to 1, never falling. May be empty. What it throws ends the work and reaches
/// the caller.
using ProgressCallback = std::function<void(double fraction)>;

}  // namespace tessara

#pragma once

#include <functional>
#include <string>

namespace tessara {

/// Told of each failure: one sentence.
using FailureReport = std::function<void(const std::string&)>;

}  // namespace tessara

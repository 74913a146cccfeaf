#pragma once

#include <span>

namespace tessara {

/// One way to steer the viewer, and what it does.
struct KeyHelp {
    const char* keys;  ///< empty for a heading
    const char* effect;
};

/// All of them, under headings, as F1 lists them.
std::span<const KeyHelp> AllKeys();

}  // namespace tessara

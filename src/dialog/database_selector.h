#pragma once

#include "platform/com/com.h"

namespace tessara {

/// Tells the host which of its databases is meant.
class DatabaseSelector {
public:
    explicit DatabaseSelector(bool user) noexcept : user_(user) {}

    /// Null for the system's database; an empty variant for the user's.
    VARIANT* Get() noexcept { return user_ ? &variant_ : nullptr; }

private:
    VARIANT variant_{};
    bool user_;
};

}  // namespace tessara

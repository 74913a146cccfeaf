#pragma once

#include "platform/system/debug_output.h"

#include <string>

namespace tessara {

/// Keeps what components say of their failures while it lives, for the one sentence that a user gets.
class DebugReasons {
public:
    DebugReasons() : before_(SetDebugSink(&DebugReasons::Keep, this, &contextBefore_)) {}
    DebugReasons(const DebugReasons&) = delete;
    DebugReasons& operator=(const DebugReasons&) = delete;
    ~DebugReasons() { SetDebugSink(before_, contextBefore_); }

    /// What was said first, without a line end; empty where nothing was.
    const std::string& First() const noexcept { return first_; }

private:
    static void Keep(void* self, const char* text)
    {
        std::string& first = static_cast<DebugReasons*>(self)->first_;
        if (!first.empty())
            return;
        first = text;
        first.erase(first.find_last_not_of("\n .") + 1);
    }

    std::string first_;
    void* contextBefore_ = nullptr;
    DebugSink before_;
};

}  // namespace tessara

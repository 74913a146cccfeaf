#pragma once

#include <mutex>
#include <utility>

namespace tessara {

/// A function and its context that a program sets once and any thread calls.
template <class Function>
class ProcessHook {
public:
    struct Target {
        Function function = nullptr;
        void* context = nullptr;
    };

    Target Exchange(Target next) noexcept
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(target_, next);
    }

    /// A copy: the function is called outside the lock, since it may send a line or set a hook itself.
    Target Current() noexcept
    {
        const std::lock_guard lock(mutex_);
        return target_;
    }

private:
    std::mutex mutex_;
    Target target_;
};

}  // namespace tessara

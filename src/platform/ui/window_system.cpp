#include "platform/ui/window_system.h"

#include "platform/ui/window_system_library.h"

#include <mutex>
#include <utility>

namespace tessara {

namespace {

std::mutex g_mutex;
WindowSystem* g_chosen = nullptr;

WindowSystem* Chosen() noexcept
{
    const std::lock_guard lock(g_mutex);
    return g_chosen;
}

/// Starting a toolkit takes a while and can't be repeated: a display that doesn't answer the first time is given up.
WindowSystem& Desktop() noexcept
{
    static WindowSystem* const started = StartWindowSystemLibrary();
    return started ? *started : NullWindowSystem();
}

}  // namespace

WindowSystem& CurrentWindowSystem() noexcept
{
    WindowSystem* const chosen = Chosen();
    return chosen ? *chosen : Desktop();
}

WindowSystem* SetWindowSystem(WindowSystem* system) noexcept
{
    const std::lock_guard lock(g_mutex);
    return std::exchange(g_chosen, system);
}

}  // namespace tessara

#include "module/module_locks.h"

#include <atomic>

namespace {

std::atomic<std::int32_t> g_locks{0};

}  // namespace

void ModuleLocks::Take() noexcept
{
    ++g_locks;
}

void ModuleLocks::GiveBack() noexcept
{
    --g_locks;
}

std::int32_t ModuleLocks::Count() noexcept
{
    return g_locks;
}

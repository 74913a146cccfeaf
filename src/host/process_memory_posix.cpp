#include "host/process_memory.h"

#include <malloc.h>
#include <unistd.h>

#include <fstream>

namespace tessara {

namespace {

constexpr int kLarge = 1 << 20;  // bytes

}  // namespace

std::size_t ResidentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    if (!(file >> total >> resident))
        return 0;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// The allocator maps large blocks one by one, but raises the size from which it does so with every one that is freed.
void ReturnLargeBlocks() noexcept
{
    mallopt(M_MMAP_THRESHOLD, kLarge);
    mallopt(M_TRIM_THRESHOLD, 16 * kLarge);
}

}  // namespace tessara

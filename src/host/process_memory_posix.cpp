#include "host/process_memory.h"

#include <unistd.h>

#include <fstream>

namespace tessara {

std::size_t ResidentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    if (!(file >> total >> resident))
        return 0;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace tessara

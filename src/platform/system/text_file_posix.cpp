#include "platform/system/text_file.h"

namespace tessara {

std::FILE* CreateTextFile(const char* path)
{
    return std::fopen(path, "w");
}

}  // namespace tessara

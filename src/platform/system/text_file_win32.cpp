#include "platform/system/text_file.h"
#include "platform/system/wide_text_win32.h"

namespace tessara {

std::FILE* CreateTextFile(const char* path)
{
    return _wfopen(ToWide(path).c_str(), L"wb");
}

}  // namespace tessara

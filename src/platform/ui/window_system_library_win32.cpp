#include "platform/ui/window_system_library.h"

namespace tessara {

WindowSystem* StartWindowSystemLibrary() noexcept
{
    return nullptr;
}

}  // namespace tessara

#include "app/viewer/start_toolkit.h"

#include "platform/ui/window_system.h"

namespace tessara::test {

bool StartToolkit()
{
    return CurrentWindowSystem().CanOpenWindows();
}

}  // namespace tessara::test

#include "host/host_classes.h"

namespace tessara {

HostClasses RegisterHostClasses()
{
    return HostClasses::OfHost();
}

}  // namespace tessara

#include "module/resources.h"
#include "platform/com/own_resource_win32.h"

// The others are for who reads the file.
const std::string_view kRegistryScript = tessara::OwnResource(&kRegistryScript, "REGISTRY", 102);

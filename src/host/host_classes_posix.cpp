#include "host/host_classes.h"
#include "host/storage/own_folder.h"
#include "platform/com/module_class.h"
#include "services/image_file.h"

#include <new>

namespace tessara {

HostClasses RegisterHostClasses()
{
    const std::string images = (OwnFolder() / TESSARA_IMAGE_MODULE).string();
    if (FAILED(RegisterModuleClass(CLSID_ImageFile, images.c_str())))
        throw std::bad_alloc();
    return HostClasses::OfHost();
}

}  // namespace tessara

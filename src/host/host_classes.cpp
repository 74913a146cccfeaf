#include "host/host_classes.h"

#include "host/class_factory.h"
#include "host/elevation_matrix.h"
#include "host/gl_context.h"
#include "host/storage/own_folder.h"
#include "platform/com/module_class.h"
#include "services/image_file.h"

#include <new>

namespace tessara {

HostClasses::~HostClasses()
{
    for (const DWORD cookie : cookies_)
        CoRevokeClassObject(cookie);
}

void HostClasses::Add(REFCLSID clsid, IUnknown* factory)
{
    cookies_.reserve(cookies_.size() + 1);
    DWORD cookie = 0;
    if (FAILED(CoRegisterClassObject(clsid, factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie)))
        throw std::bad_alloc();
    cookies_.push_back(cookie);
}

HostClasses RegisterHostClasses()
{
    HostClasses classes;
    const std::string images = (OwnFolder() / TESSARA_IMAGE_MODULE).string();
    if (FAILED(RegisterModuleClass(CLSID_ImageFile, images.c_str())))
        throw std::bad_alloc();
    classes.Add(CLSID_ElevationMatrix, MakeObject<ClassFactory<ElevationMatrix>>().Get());
    classes.Add(CLSID_GLContext, MakeObject<ClassFactory<GlContext>>().Get());
    return classes;
}

}  // namespace tessara

#include "host/host_classes.h"

#include "host/class_factory.h"
#include "host/elevation_matrix.h"
#include "host/gl_context.h"

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

HostClasses HostClasses::OfHost()
{
    HostClasses classes;
    classes.Add(CLSID_ElevationMatrix, MakeObject<ClassFactory<ElevationMatrix>>().Get());
    classes.Add(CLSID_GLContext, MakeObject<ClassFactory<GlContext>>().Get());
    return classes;
}

}  // namespace tessara

#include "host/class_factory.h"
#include "host/images/image_file.h"

extern "C" {

/// Gives the class factory of the image reader.
/// \return S_OK; E_POINTER for a null `out`; CLASS_E_CLASSNOTAVAILABLE for another class; E_NOINTERFACE for an
///         interface that a factory doesn't have; E_OUTOFMEMORY
TESSARA_EXPORT HRESULT DllGetClassObject(REFCLSID clsid, REFIID iid, void** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (!(clsid == CLSID_ImageFile))
        return CLASS_E_CLASSNOTAVAILABLE;
    return Guard([&] { return HandOut(new tessara::ClassFactory<tessara::ImageFile>, iid, out); });
}

/// \return S_FALSE: the image library keeps threads, so the module stays once it is loaded
TESSARA_EXPORT HRESULT DllCanUnloadNow()
{
    return S_FALSE;
}
}

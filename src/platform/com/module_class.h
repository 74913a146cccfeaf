#pragma once

#include "com.h"

namespace tessara {

/// Enters a class whose factory a module serves into the process's class table, behind the factories that are
/// registered directly. The module is loaded at the first CoCreateInstance or CoGetClassObject of the class, once for
/// all of its classes, and stays loaded until the process ends.
/// \param modulePath UTF-8 path of the module file, which exports DllGetClassObject
/// \return S_OK; E_OUTOFMEMORY
TESSARA_EXPORT HRESULT RegisterModuleClass(REFCLSID clsid, const char* modulePath) noexcept;

}  // namespace tessara

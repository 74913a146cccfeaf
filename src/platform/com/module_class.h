#pragma once

#include "com.h"

namespace tessara {

/// Enters a class whose factory a module serves into the process's class table, behind the factories that are
/// registered directly. The module is loaded at the first CoCreateInstance or CoGetClassObject of the class, once for
/// all of its classes, and stays loaded until the process ends.
///
/// On Windows the table is that of the calling thread's apartment, and the module is loaded at once.
/// \param modulePath UTF-8 path of the module file, which exports DllGetClassObject
/// \return S_OK; E_OUTOFMEMORY; on Windows also why the module can't be loaded or doesn't serve the class
TESSARA_EXPORT HRESULT RegisterModuleClass(REFCLSID clsid, const char* modulePath) noexcept;

}  // namespace tessara

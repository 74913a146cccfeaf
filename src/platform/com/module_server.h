#pragma once

#include "com.h"
#include "module_file.h"

#include <string>

namespace tessara {

/// Loads a module's file, lets it enter itself into the registry of classes through its export DllRegisterServer, and
/// lets it go again. SetRegistrationScope says into whose.
/// \return the export's result; CO_E_DLLNOTFOUND; CO_E_ERRORINDLL, also for a module without that export;
/// E_OUTOFMEMORY. A failure comes with a debug line
TESSARA_EXPORT HRESULT RegisterServer(const std::string& modulePath) noexcept;

/// The same with DllUnregisterServer.
TESSARA_EXPORT HRESULT UnregisterServer(const std::string& modulePath) noexcept;

/// Whether a module's file can be loaded and gives the class factory of a class. The module goes again afterwards.
/// \return S_OK; CO_E_DLLNOTFOUND; CO_E_ERRORINDLL; the result of DllGetClassObject. A module that can't be loaded
/// comes with a debug line
TESSARA_EXPORT HRESULT ProbeServer(const std::string& modulePath, REFCLSID clsid) noexcept;

}  // namespace tessara

#pragma once

#include "com.h"

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

/// Path, absolute and without links, of the file that the code at an address was loaded from. A module that was loaded
/// by a relative path asks before the process's folder can change. \return empty where there is no such file
TESSARA_EXPORT std::string ModulePathOf(const void* address);

}  // namespace tessara

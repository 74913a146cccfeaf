#pragma once

// The functions of com.h where the system has none.

#include "unknown_posix.h"

extern "C" {

/// Makes an object of class `clsid`, which is looked for in the process's class table first, then in the user's
/// registrations, then in those of the machine (see class_registry.h). `outer` is the controlling object of an
/// aggregate, or null. `context` is CLSCTX_INPROC_SERVER.
/// \return the factory's result; E_POINTER for a null `out`; REGDB_E_CLASSNOTREG for a class that nobody registered;
///         CO_E_DLLNOTFOUND for a module file that isn't there; CO_E_ERRORINDLL for a file that can't be loaded or
///         isn't a module; REGDB_E_READREGDB for damaged registrations. The last three come with a debug line.
TESSARA_EXPORT HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid, void** out);

/// Gives the class factory of `clsid`. `server` is reserved and null. Results as CoCreateInstance.
TESSARA_EXPORT HRESULT CoGetClassObject(REFCLSID clsid, DWORD context, void* server, REFIID iid, void** out);

/// Puts `factory` into the process's class table, with one reference, in front of earlier entries of the same class.
/// `*cookie` identifies the entry for CoRevokeClassObject.
TESSARA_EXPORT HRESULT CoRegisterClassObject(REFCLSID clsid, IUnknown* factory, DWORD context, DWORD flags,
                                             DWORD* cookie);

/// Takes an entry out of the class table and releases its factory. \return CO_E_OBJNOTREG for an unknown cookie.
TESSARA_EXPORT HRESULT CoRevokeClassObject(DWORD cookie);

/// Unloads the modules that CoGetClassObject and CoCreateInstance have loaded, that have no factory in the class table,
/// and whose DllCanUnloadNow answers S_OK. A module is loaded again when one of its classes is next asked for. No other
/// thread may be inside of a module's code at this time: the end of an object's last Release counts as inside.
TESSARA_EXPORT void CoFreeUnusedLibraries();

/// Finds the class that is registered under a name, as "Tessara.CoTessara". `progId` is zero-terminated.
/// \return S_OK; E_POINTER; CO_E_CLASSSTRING for a name that isn't registered; REGDB_E_READREGDB
TESSARA_EXPORT HRESULT CLSIDFromProgID(const OLECHAR* progId, CLSID* clsid);

/// Copies zero-terminated text. \return null for null text or when memory is short.
TESSARA_EXPORT BSTR SysAllocString(const OLECHAR* text);

/// Copies `length` characters, or leaves them unset when `text` is null, and terminates them with 0.
/// \return null when memory is short.
TESSARA_EXPORT BSTR SysAllocStringLen(const OLECHAR* text, UINT length);

/// \return the length in characters, 0 for null.
TESSARA_EXPORT UINT SysStringLen(BSTR text);

TESSARA_EXPORT void SysFreeString(BSTR text);

/// Makes the variant empty without looking at what it held.
TESSARA_EXPORT void VariantInit(VARIANT* variant);

/// Frees a string, releases an object, and makes the variant empty. A variant by reference owns nothing.
TESSARA_EXPORT HRESULT VariantClear(VARIANT* variant);

/// Allocator of memory that one side of the border allocates and the other frees. \return null when memory is short.
TESSARA_EXPORT void* CoTaskMemAlloc(std::size_t size);

TESSARA_EXPORT void CoTaskMemFree(void* memory);
}

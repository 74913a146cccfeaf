#pragma once

// The types of types.h where the system has none: those of 64-bit hosts.

#include <cstddef>
#include <cstdint>
#include <cstring>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using USHORT = std::uint16_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using UINT = std::uint32_t;
using DWORD = std::uint32_t;
using BOOL = std::int32_t;
using FLOAT = float;
using OLECHAR = char16_t;

/// Result code: negative values are failures, all others successes.
using HRESULT = std::int32_t;

/// 128-bit identifier, the first three fields in native byte order.
struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
static_assert(sizeof(GUID) == 16);

inline bool operator==(const GUID& a, const GUID& b) noexcept
{
    return std::memcmp(&a, &b, sizeof(GUID)) == 0;
}

using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

/// Pointer to zero-terminated UTF-16 text whose length in bytes stands in the 32 bits before it. Null is a valid empty
/// string on input. Made by SysAllocString and SysAllocStringLen, freed by SysFreeString.
using BSTR = OLECHAR*;

using VARTYPE = std::uint16_t;
inline constexpr VARTYPE VT_EMPTY = 0;
inline constexpr VARTYPE VT_I4 = 3;
inline constexpr VARTYPE VT_R4 = 4;
inline constexpr VARTYPE VT_BSTR = 8;
inline constexpr VARTYPE VT_UNKNOWN = 13;
inline constexpr VARTYPE VT_UI1 = 17;
inline constexpr VARTYPE VT_BYREF = 0x4000;

struct IUnknown;

/// Tagged value: 16-bit type, three reserved fields, the data member at offset 8.
struct VARIANT {
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        std::int64_t llVal;
        LONG lVal;
        float fltVal;
        double dblVal;
        BSTR bstrVal;
        IUnknown* punkVal;
        void* byref;
        struct {
            void* pvRecord;
            void* pRecInfo;
        } record;
    };
};
static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, llVal) == 8);

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = static_cast<HRESULT>(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = static_cast<HRESULT>(0x80040111);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154);
inline constexpr HRESULT REGDB_E_READREGDB = static_cast<HRESULT>(0x80040150);
inline constexpr HRESULT REGDB_E_WRITEREGDB = static_cast<HRESULT>(0x80040151);
inline constexpr HRESULT REGDB_E_INVALIDVALUE = static_cast<HRESULT>(0x80040153);
inline constexpr HRESULT CO_E_CLASSSTRING = static_cast<HRESULT>(0x800401F3);
inline constexpr HRESULT TYPE_E_LIBNOTREGISTERED = static_cast<HRESULT>(0x8002801D);
inline constexpr HRESULT TYPE_E_CANTLOADLIBRARY = static_cast<HRESULT>(0x80029C4A);
inline constexpr HRESULT CO_E_OBJNOTREG = static_cast<HRESULT>(0x800401FC);
inline constexpr HRESULT CO_E_DLLNOTFOUND = static_cast<HRESULT>(0x800401F8);
inline constexpr HRESULT CO_E_ERRORINDLL = static_cast<HRESULT>(0x800401F9);

inline constexpr bool SUCCEEDED(HRESULT result) noexcept
{
    return result >= 0;
}

inline constexpr bool FAILED(HRESULT result) noexcept
{
    return result < 0;
}

/// Class contexts of CoCreateInstance. This system only has in-process servers.
inline constexpr DWORD CLSCTX_INPROC_SERVER = 1;

/// Registration flags of CoRegisterClassObject.
inline constexpr DWORD REGCLS_MULTIPLEUSE = 1;

/// Calling convention of interface methods: the platform's default one.
#define STDMETHODCALLTYPE

/// Marks what the shared libraries of this system export.
#define TESSARA_EXPORT __attribute__((visibility("default")))

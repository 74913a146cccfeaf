#pragma once

#include "types.h"

#ifndef _WIN32
#include "unknown_posix.h"
#endif

/// Identifier of interface T. Each interface specialises it beside its declaration.
template <class T>
inline constexpr GUID InterfaceId{};

template <>
inline constexpr GUID InterfaceId<IUnknown> = {0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

template <>
inline constexpr GUID InterfaceId<IClassFactory> = {0x00000001, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

#pragma once

#include "platform/com/types.h"

namespace tessara {

/// Receiver of debug lines, on the thread that sends them.
using DebugSink = void (*)(void* context, const char* text);

namespace test {

inline DebugSink g_debugSink = nullptr;
inline void* g_debugSinkContext = nullptr;

/// The system gives debug lines away as exceptions, which a debugger takes.
inline LONG CALLBACK TakeDebugLine(EXCEPTION_POINTERS* what)
{
    constexpr DWORD kDebugLine = 0x40010006;
    if (what->ExceptionRecord->ExceptionCode != kDebugLine || !g_debugSink)
        return EXCEPTION_CONTINUE_SEARCH;
    g_debugSink(g_debugSinkContext, reinterpret_cast<const char*>(what->ExceptionRecord->ExceptionInformation[1]));
    return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace test

/// Where the debug lines of this process go, as elsewhere the platform's function of this name says.
inline DebugSink SetDebugSink(DebugSink sink, void* context, void** previousContext = nullptr) noexcept
{
    static void* const handler = AddVectoredExceptionHandler(1, &test::TakeDebugLine);
    static_cast<void>(handler);
    if (previousContext)
        *previousContext = test::g_debugSinkContext;
    const DebugSink previous = test::g_debugSink;
    test::g_debugSink = sink;
    test::g_debugSinkContext = context;
    return previous;
}

}  // namespace tessara

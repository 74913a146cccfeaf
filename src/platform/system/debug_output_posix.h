#pragma once

// The debug stream of debug_output.h where the system has none.

#include "../com/types_posix.h"

/// Sends one line to the process's debug stream: the sink of SetDebugSink, or standard error without one. Failures of
/// OpenGL and internal ones go here; the user doesn't see them. Null is nothing.
extern "C" TESSARA_EXPORT void OutputDebugStringA(const char* text);

namespace tessara {

/// Receiver of debug lines, on the thread that sends them. The text ends as its sender wrote it, mostly in a line feed.
using DebugSink = void (*)(void* context, const char* text);

/// Where the debug lines of the whole process go from now on. Null brings standard error back.
/// \param previousContext receives the context that goes with the result; may be null
/// \return the sink until now, null for standard error
TESSARA_EXPORT DebugSink SetDebugSink(DebugSink sink, void* context, void** previousContext = nullptr) noexcept;

}  // namespace tessara

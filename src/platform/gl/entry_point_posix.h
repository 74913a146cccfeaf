#pragma once

// The lookup of entry_point.h where the system has another one.

/// An entry point of unknown signature; the caller casts it to the right one.
using PROC = void (*)();

/// Address of an OpenGL entry point for the context that is current on this thread, of whatever window system it is.
/// An entry point of an extension is given only where the context has the extension; the address stays good for as long
/// as the context's driver is loaded.
/// \return null for a null name, a name that doesn't exist, and without a current context. "wglGetExtensionsStringARB"
///         alone always has an answer.
PROC wglGetProcAddress(const char* name);

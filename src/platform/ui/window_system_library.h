#pragma once

namespace tessara {

class WindowSystem;

/// Loads the library that shows windows on this platform, which lies beside this one, and starts it. Once loaded it
/// stays. \return null where it isn't installed or no display answers; the reason goes to the debug stream
WindowSystem* StartWindowSystemLibrary() noexcept;

}  // namespace tessara

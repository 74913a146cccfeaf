#pragma once

#include "platform/com/types.h"

namespace tessara {

/// The numbers of the messages that a spin button sends for a step. Each is asked for once in a module's life and the
/// same in every module of the process; 0 when no number could be had.
UINT SpinUpMessage() noexcept;
UINT SpinDownMessage() noexcept;

/// Asks for both numbers, when the module starts.
void RegisterSpinMessages() noexcept;

}  // namespace tessara

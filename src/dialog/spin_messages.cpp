#include "dialog/spin_messages.h"

#include "platform/ui/registered_message.h"

namespace tessara {

UINT SpinUpMessage() noexcept
{
    static const UINT number = RegisterWindowMessage("UWM_SPINUP-{384D476A-93A7-45f1-812C-0E729C0D1CFC}");
    return number;
}

UINT SpinDownMessage() noexcept
{
    static const UINT number = RegisterWindowMessage("UWM_SPINDOWN-{DF6BCD85-0622-4f26-BE2B-117BA1AE9226}");
    return number;
}

void RegisterSpinMessages() noexcept
{
    SpinUpMessage();
    SpinDownMessage();
}

}  // namespace tessara

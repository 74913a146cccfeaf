#pragma once

#include "platform/ui/window_types.h"

#include <span>

class CDialog;

namespace tessara {

/// Which handler of a dialog hears of what.
struct MessageMapEntry {
    UINT message;
    UINT notification;  ///< of WM_COMMAND
    int control;        ///< of WM_COMMAND
    LRESULT (*call)(CDialog& dialog, WPARAM wParam, LPARAM lParam);
};

/// The entries of a dialog class, looked at from the first on, before those of its base class.
struct MessageMap {
    const MessageMap* base;
    std::span<const MessageMapEntry> entries;
};

template <class Dialog>
LRESULT CallHandler(CDialog& dialog, void (Dialog::*handler)(), WPARAM, LPARAM)
{
    (static_cast<Dialog&>(dialog).*handler)();
    return 0;
}

template <class Dialog>
LRESULT CallHandler(CDialog& dialog, LRESULT (Dialog::*handler)(WPARAM, LPARAM), WPARAM wParam, LPARAM lParam)
{
    return (static_cast<Dialog&>(dialog).*handler)(wParam, lParam);
}

/// An entry for a message. \tparam Handler member of the dialog's class without parameters and result, or with the
/// message's parameters and a result
template <auto Handler>
constexpr MessageMapEntry OnMessage(UINT message)
{
    return {message, 0, 0,
            [](CDialog& dialog, WPARAM wParam, LPARAM lParam) { return CallHandler(dialog, Handler, wParam, lParam); }};
}

/// An entry for a control's notification.
template <auto Handler>
constexpr MessageMapEntry OnControl(int control, UINT notification)
{
    MessageMapEntry entry = OnMessage<Handler>(WM_COMMAND);
    entry.notification = notification;
    entry.control = control;
    return entry;
}

}  // namespace tessara

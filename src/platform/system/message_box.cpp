#include "platform/system/message_box.h"

#include "platform/system/process_hook.h"
#include "platform/ui/window_system.h"

namespace tessara {

namespace {

ProcessHook<MessageHandler> g_handler;

}  // namespace

void ShowMessageBox(const char* text, const char* title)
{
    text = text ? text : "";
    const auto handler = g_handler.Current();
    if (handler.function)
        handler.function(handler.context, text, title);
    else
        CurrentWindowSystem().ShowMessage(text, title ? title : "", MB_OK, nullptr);
}

MessageHandler SetMessageHandler(MessageHandler handler, void* context, void** previousContext) noexcept
{
    const auto previous = g_handler.Exchange({handler, context});
    if (previousContext)
        *previousContext = previous.context;
    return previous.function;
}

}  // namespace tessara

#include "platform/system/message_box.h"

#include "platform/system/process_hook.h"

#include <cstdio>

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
        std::fprintf(stderr, "%s%s%s\n", title ? title : "", title ? ": " : "", text);
}

MessageHandler SetMessageHandler(MessageHandler handler, void* context, void** previousContext) noexcept
{
    const auto previous = g_handler.Exchange({handler, context});
    if (previousContext)
        *previousContext = previous.context;
    return previous.function;
}

}  // namespace tessara

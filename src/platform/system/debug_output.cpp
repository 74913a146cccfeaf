#include "platform/system/debug_output.h"

#include "platform/system/process_hook.h"

#include <cstdio>
#include <string>

namespace {

tessara::ProcessHook<tessara::DebugSink> g_sink;

}  // namespace

extern "C" void OutputDebugStringA(const char* text)
{
    if (!text)
        return;
    const auto sink = g_sink.Current();
    if (sink.function) {
        sink.function(sink.context, text);
        return;
    }
    const std::size_t length = std::char_traits<char>::length(text);
    const bool ended = length != 0 && text[length - 1] == '\n';
    std::fprintf(stderr, ended ? "%s" : "%s\n", text);
}

namespace tessara {

DebugSink SetDebugSink(DebugSink sink, void* context, void** previousContext) noexcept
{
    const auto previous = g_sink.Exchange({sink, context});
    if (previousContext)
        *previousContext = previous.context;
    return previous.function;
}

}  // namespace tessara

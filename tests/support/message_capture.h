#pragma once

#include "platform/system/debug_output.h"
#include "platform/system/message_box.h"

#ifdef _WIN32
#include "support/debug_sink_win32.h"
#endif

#include <string>
#include <utility>
#include <vector>

namespace tessara::test {

/// Takes the process's debug lines and message boxes as long as it lives.
class MessageCapture {
public:
    MessageCapture()
    {
        previousSink_ = SetDebugSink(
            [](void* self, const char* text) { static_cast<MessageCapture*>(self)->lines.emplace_back(text); }, this,
            &previousSinkContext_);
        previousHandler_ = SetMessageHandler(
            [](void* self, const char* text, const char* title) {
                static_cast<MessageCapture*>(self)->boxes.emplace_back(title ? title : "", text);
            },
            this, &previousHandlerContext_);
    }
    MessageCapture(const MessageCapture&) = delete;
    MessageCapture& operator=(const MessageCapture&) = delete;
    ~MessageCapture()
    {
        SetDebugSink(previousSink_, previousSinkContext_);
        SetMessageHandler(previousHandler_, previousHandlerContext_);
    }

    std::vector<std::string> lines;                          ///< as sent
    std::vector<std::pair<std::string, std::string>> boxes;  ///< title and text; an empty title is the default one

private:
    DebugSink previousSink_;
    MessageHandler previousHandler_;
    void* previousSinkContext_ = nullptr;
    void* previousHandlerContext_ = nullptr;
};

}  // namespace tessara::test

#pragma once

#include "../com/types.h"

namespace tessara {

/// Shows a message with an OK button to the user and returns when it is closed. Without a handler of SetMessageHandler
/// the process's window system shows it; where that has no windows, the message goes to standard error.
/// \param text lines parted by line feeds; null is empty
/// \param title null for the application's own
TESSARA_EXPORT void ShowMessageBox(const char* text, const char* title = nullptr);

/// Shows one message and returns when the user has closed it. \param title null for the application's own
using MessageHandler = void (*)(void* context, const char* text, const char* title);

/// Who shows the messages of the whole process from now on. Null brings the window system
/// back.
/// \param previousContext receives the context that goes with the result; may be null
/// \return the handler until now, null for the window system
TESSARA_EXPORT MessageHandler SetMessageHandler(MessageHandler handler, void* context,
                                                void** previousContext = nullptr) noexcept;

}  // namespace tessara

#pragma once

#include <string>

class wxWindow;

namespace tessara {

/// Tells what has gone wrong, and waits until the user has read it.
void ShowError(wxWindow* parent, const std::string& message);

}  // namespace tessara

#pragma once

class wxWindow;

namespace tessara {

/// Shows the list of all keys until the user closes it.
void ShowKeys(wxWindow* parent);

}  // namespace tessara

#pragma once

class wxWindow;

namespace tessara {

/// Tells what the program is, and its version.
void ShowAbout(wxWindow* parent);

}  // namespace tessara

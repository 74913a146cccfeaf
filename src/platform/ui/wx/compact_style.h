#pragma once

class wxWindow;

namespace tessara {

/// Lets a control be as small as a dialog's template says, whatever the theme wants at least.
void MakeCompact(wxWindow& control);

}  // namespace tessara

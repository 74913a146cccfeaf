#pragma once

#include "app/viewer/window/dialogs/table_dialog.h"

#include <vector>

class wxWindow;

namespace tessara {

/// What mouse and keys do, under headings: how the camera is steered, then the commands of each menu that have a key.
std::vector<TableRow> KeyHelp();

/// Shows the list.
void ShowKeyHelp(wxWindow* parent);

}  // namespace tessara

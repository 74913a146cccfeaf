#pragma once

#include <string>
#include <vector>

class wxWindow;

namespace tessara {

/// A line of a table of two columns. One without a left part is a heading.
struct TableRow {
    std::string left;
    std::string right;
};

/// Shows a table, which scrolls where it is too high for the window, until the user closes it.
void ShowTable(wxWindow* parent, const std::string& title, const std::vector<TableRow>& rows);

}  // namespace tessara

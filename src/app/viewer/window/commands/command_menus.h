#pragma once

#include <string>
#include <vector>

class wxFrame;
class wxMenuBar;

namespace tessara {

struct Workbench;

/// The menus of the window, made from the table of commands.
class CommandMenus {
public:
    /// Gives the window its menus, hidden at first: a window that is being shown passes through sizes that are too
    /// small for them. \param frame outlives this object
    explicit CommandMenus(wxFrame& frame);

    void Show();

    /// Shows what can be done and what is on.
    void ShowState(Workbench& bench);

    /// Lists files that can be opened again.
    void ShowRecent(const std::vector<std::string>& paths);

    bool IsEnabled(int command) const;

private:
    wxMenuBar* bar_;
};

}  // namespace tessara

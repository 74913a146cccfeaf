#include "app/viewer/window/commands/command_menus.h"

#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/window_text.h"

#include <gtk/gtk.h>
#include <wx/frame.h>
#include <wx/menu.h>

#include <cctype>
#include <string_view>

namespace tessara {

namespace {

using Kind = Command::Kind;

/// Shows a key beside a menu line. The toolkit itself must not know it: it would take it away from fields in which
/// somebody types.
void ShowKey(wxMenuItem& item, int key)
{
    GtkWidget* const label = gtk_bin_get_child(GTK_BIN(item.GetMenuItem()));
    if (!GTK_IS_ACCEL_LABEL(label))
        return;
    const guint shown = key == WXK_HOME ? GDK_KEY_Home : static_cast<guint>(std::tolower(key));
    gtk_accel_label_set_accel(GTK_ACCEL_LABEL(label), shown, static_cast<GdkModifierType>(0));
}

void Append(wxMenu& menu, const Command& command)
{
    if (command.begins)
        menu.AppendSeparator();
    const int key = PlainKey(command);
    wxString label = command.label;
    if (key == 0 && *command.key)
        label += wxString("\t") + command.key;
    switch (command.kind) {
    case Kind::Submenu:
        menu.Append(command.id, label, new wxMenu, command.help);
        return;
    case Kind::Plain:
        menu.Append(command.id, label, command.help);
        break;
    case Kind::Check:
        menu.AppendCheckItem(command.id, label, command.help);
        break;
    case Kind::Radio:
        menu.AppendRadioItem(command.id, label, command.help);
        break;
    }
    if (key != 0)
        ShowKey(*menu.FindItem(command.id), key);
}

}  // namespace

CommandMenus::CommandMenus(wxFrame& frame) : bar_(new wxMenuBar)
{
    wxMenu* menu = nullptr;
    std::string_view title;
    for (const Command& command : AllCommands()) {
        if (title != command.menu)
            bar_->Append(menu = new wxMenu, command.menu);
        title = command.menu;
        Append(*menu, command);
    }
    frame.SetMenuBar(bar_);
    bar_->Hide();
}

void CommandMenus::Show()
{
    bar_->Show();
}

void CommandMenus::ShowState(Workbench& bench)
{
    for (const Command& command : AllCommands()) {
        if (command.enabled)
            bar_->Enable(command.id, command.enabled(bench));
        // Of radio lines the one that is on takes the mark from the others.
        if (command.checked && (command.kind == Kind::Check || command.checked(bench)))
            bar_->Check(command.id, command.checked(bench));
    }
}

void CommandMenus::ShowRecent(const std::vector<std::string>& paths)
{
    wxMenu& menu = *bar_->FindItem(kRecent)->GetSubMenu();
    while (menu.GetMenuItemCount() > 0)
        menu.Destroy(menu.FindItemByPosition(0));
    int command = kRecent + 1;
    for (const std::string& path : paths) {
        // Ampersands would become underlines.
        wxString label = Wide(path);
        label.Replace("&", "&&");
        menu.Append(command, wxString::Format("&%d  ", command - kRecent) + label);
        ++command;
    }
    if (command > kRecent + 1)
        menu.AppendSeparator();
    menu.Append(kClearRecent, "&Clear the List")->Enable(!paths.empty());
}

bool CommandMenus::IsEnabled(int command) const
{
    return bar_->IsEnabled(command);
}

}  // namespace tessara

#include "platform/ui/wx/compact_style.h"

#include <gtk/gtk.h>
#include <wx/window.h>

namespace tessara {

namespace {

constexpr char kClass[] = "tessara-compact";

// The rules reach our own controls only, so that a host's windows keep their looks.
constexpr char kRules[] = R"(
.tessara-compact, .tessara-compact button, .tessara-compact entry, .tessara-compact box, .tessara-compact cellview {
    min-height: 0; min-width: 0; padding-top: 0; padding-bottom: 0; margin: 0;
}
entry.tessara-compact { padding-left: 4px; padding-right: 2px; }
button.tessara-compact { padding-left: 2px; padding-right: 2px; }
button.tessara-compact.default { border-color: @theme_selected_bg_color; box-shadow: inset 0 0 0 1px @theme_selected_bg_color; }
.tessara-compact button { padding-left: 4px; padding-right: 2px; }
checkbutton.tessara-compact check { margin: 0 4px 0 0; }
)";

void InstallRules()
{
    static const bool installed = [] {
        GtkCssProvider* rules = gtk_css_provider_new();
        gtk_css_provider_load_from_data(rules, kRules, -1, nullptr);
        gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(rules),
                                                  GTK_STYLE_PROVIDER_PRIORITY_APPLICATION + 1);
        g_object_unref(rules);
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace

void MakeCompact(wxWindow& control)
{
    InstallRules();
    gtk_style_context_add_class(gtk_widget_get_style_context(GTK_WIDGET(control.GetHandle())), kClass);
}

}  // namespace tessara

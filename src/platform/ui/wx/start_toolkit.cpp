#include "platform/ui/wx/start_toolkit.h"

#include "platform/system/debug_output.h"

#include <gdk/gdk.h>
#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/html/htmlwin.h>
#include <wx/init.h>
#include <wx/log.h>

#include <string>

namespace tessara {

namespace {

const char* g_component = "";

void ReportAssert(const wxString& file, int line, const wxString& function, const wxString& condition,
                  const wxString& message)
{
    const std::string text = std::string(g_component) + ": " + message.utf8_string() + " (" + condition.utf8_string() +
                             ", " + function.utf8_string() + ", " + file.utf8_string() + ":" + std::to_string(line) +
                             ") \n";
    OutputDebugStringA(text.c_str());
}

/// Tooltips use the toolkit's HTML part, which is only made ready where it is there when the toolkit starts. This names
/// one of its classes, so that whoever starts the toolkit brings it along.
bool HasHtml()
{
    return wxCLASSINFO(wxHtmlWindow)->GetSize() > 0;
}

}  // namespace

bool StartToolkit(wxApp* application, const char* component)
{
    g_component = component;
    gtk_disable_setlocale();
    // The OpenGL surfaces are made for X11, which other desktops offer as well.
    gdk_set_allowed_backends("x11,*");
    wxSetAssertHandler(&ReportAssert);
    static char name[] = "tessara";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    const wxLogNull quiet;
    wxApp::SetInstance(application);
    return HasHtml() && wxEntryStart(count, arguments) && wxTheApp->CallOnInit();
}

}  // namespace tessara

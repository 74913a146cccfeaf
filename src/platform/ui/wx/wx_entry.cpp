#include "platform/system/debug_output.h"
#include "platform/ui/wx/wx_window_system.h"

#include <gdk/gdk.h>
#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

#include <string>

namespace tessara {

namespace {

/// The application object in a program that isn't built on the toolkit.
class GuestApp final : public wxApp {
public:
    bool OnInit() override { return true; }

    /// A closed window is no reason to end the host.
    int OnRun() override { return 0; }
};

void ReportAssert(const wxString& file, int line, const wxString& function, const wxString& condition,
                  const wxString& message)
{
    const std::string text = "Window system: " + message.utf8_string() + " (" + condition.utf8_string() + ", " +
                             function.utf8_string() + ", " + file.utf8_string() + ":" + std::to_string(line) + ") \n";
    OutputDebugStringA(text.c_str());
}

bool StartToolkit()
{
    // The host's numbers and texts follow the host's locale, not the desktop's.
    gtk_disable_setlocale();
    // The OpenGL surfaces are made for X11, which other desktops offer as well.
    gdk_set_allowed_backends("x11,*");
    wxSetAssertHandler(&ReportAssert);
    static char name[] = "tessara";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    const wxLogNull quiet;
    wxApp::SetInstance(new GuestApp);
    if (!wxEntryStart(count, arguments))
        return false;
    wxTheApp->SetExitOnFrameDelete(false);
    return wxTheApp->CallOnInit();
}

}  // namespace

}  // namespace tessara

/// See kWindowSystemEntry.
extern "C" TESSARA_EXPORT tessara::WindowSystem* TessaraWindowSystem1()
{
    static tessara::WxWindowSystem system;
    return wxTheApp || tessara::StartToolkit() ? &system : nullptr;
}

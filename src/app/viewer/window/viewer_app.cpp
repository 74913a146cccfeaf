#include "app/viewer/view_request.h"
#include "app/viewer/window/gl_pane.h"
#include "app/viewer/window/main_window.h"
#include "app/viewer/window/settings_file.h"
#include "platform/com/types.h"
#include "platform/system/debug_output.h"

#include <gdk/gdk.h>
#include <gtk/gtk.h>
#include <langinfo.h>
#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/msgdlg.h>

#include <clocale>
#include <cstring>
#include <exception>
#include <iostream>

namespace tessara {

namespace {

class ViewerApp final : public wxApp {
public:
    bool OnInit() override { return true; }

    /// Whatever goes wrong in a handler is told, and the window lives on.
    bool OnExceptionInMainLoop() override
    {
        try {
            throw;
        } catch (const std::bad_alloc&) {
            wxMessageBox("There is not enough memory.", "Tessara", wxOK | wxICON_ERROR);
        } catch (const std::exception& error) {
            wxMessageBox(wxString::FromUTF8(error.what()), "Tessara", wxOK | wxICON_ERROR);
        }
        return true;
    }
};

void ReportAssert(const wxString& file, int line, const wxString&, const wxString& condition, const wxString& message)
{
    const std::string text = "Viewer: " + message.utf8_string() + " (" + condition.utf8_string() + ", " +
                             file.utf8_string() + ":" + std::to_string(line) + ") \n";
    OutputDebugStringA(text.c_str());
}

/// File names are UTF-8 whatever the terminal speaks; numbers keep their decimal point.
void SetLetters()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

bool StartToolkit()
{
    SetLetters();
    gtk_disable_setlocale();
    // The canvases speak GLX. Desktops of another kind offer X11 as well.
    gdk_set_allowed_backends("x11,*");
    wxSetAssertHandler(&ReportAssert);
    static char name[] = "tessara";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    const wxLogNull quiet;
    wxApp::SetInstance(new ViewerApp);
    if (!wxEntryStart(count, arguments))
        return false;
    wxTheApp->SetAppName("tessara");
    wxTheApp->SetAppDisplayName("Tessara");
    wxTheApp->SetClassName("tessara");
    return wxTheApp->CallOnInit();
}

ViewResult RunWindow(const ViewRequest& request)
{
    if (!GlPane::CanShow()) {
        std::cerr << "tessara: The viewer needs OpenGL, which this display doesn't offer.\n";
        return ViewResult::Failed;
    }
    auto* window = new MainWindow(request, LoadSettings());
    wxTheApp->SetTopWindow(window);
    window->Show();
    wxTheApp->OnRun();
    return ViewResult::Done;
}

}  // namespace

}  // namespace tessara

/// See kViewerEntry.
extern "C" TESSARA_EXPORT tessara::ViewResult TessaraViewer1(const tessara::ViewRequest& request)
{
    if (!tessara::StartToolkit())
        return tessara::ViewResult::NoDisplay;
    const tessara::ViewResult result = tessara::RunWindow(request);
    wxTheApp->OnExit();
    wxEntryCleanup();
    return result;
}

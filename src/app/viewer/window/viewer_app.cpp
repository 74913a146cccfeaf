#include "app/viewer/view_request.h"
#include "app/viewer/window/files/settings_file.h"
#include "app/viewer/window/main_window.h"
#include "app/viewer/window/panes/gl_pane.h"
#include "host/process_memory.h"
#include "platform/com/types.h"
#include "platform/ui/wx/start_toolkit.h"

#include <langinfo.h>
#include <wx/app.h>
#include <wx/init.h>
#include <wx/msgdlg.h>

#include <clocale>
#include <cstring>
#include <exception>
#include <iostream>

namespace tessara {

namespace {

class ViewerApp final : public wxApp {
public:
    bool OnInit() override
    {
        SetAppName("tessara");
        SetAppDisplayName("Tessara");
        SetClassName("tessara");
        return true;
    }

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

/// File names are UTF-8 whatever the terminal speaks; numbers keep their decimal point.
void SetLetters()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        std::setlocale(LC_CTYPE, "C.UTF-8");
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
    tessara::ReturnLargeBlocks();
    tessara::SetLetters();
    if (!tessara::StartToolkit(new tessara::ViewerApp, "Viewer"))
        return tessara::ViewResult::NoDisplay;
    const tessara::ViewResult result = tessara::RunWindow(request);
    wxTheApp->OnExit();
    wxEntryCleanup();
    return result;
}

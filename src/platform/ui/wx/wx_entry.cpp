#include "platform/ui/wx/start_toolkit.h"
#include "platform/ui/wx/wx_window_system.h"

#include <wx/app.h>

namespace tessara {

namespace {

/// The application object in a program that isn't built on the toolkit.
class GuestApp final : public wxApp {
public:
    bool OnInit() override
    {
        SetExitOnFrameDelete(false);
        return true;
    }

    /// A closed window is no reason to end the host.
    int OnRun() override { return 0; }
};

}  // namespace

}  // namespace tessara

/// See kWindowSystemEntry.
extern "C" TESSARA_EXPORT tessara::WindowSystem* TessaraWindowSystem1()
{
    static tessara::WxWindowSystem system;
    return wxTheApp || tessara::StartToolkit(new tessara::GuestApp, "Window system") ? &system : nullptr;
}

#pragma once

#include "platform/ui/window_system.h"

#include <wx/string.h>

namespace tessara {

/// The desktop, through wxWidgets. Works in a program that is built on the toolkit and in any other.
class WxWindowSystem final : public WindowSystem {
public:
    bool CanOpenWindows() const override { return true; }
    int RunDialog(const DialogTemplate& dialog, DialogEvents& events, NativeWindow parent) override;
    int ShowMessage(const std::string& text, const std::string& caption, UINT buttons, NativeWindow parent) override;
    std::optional<std::string> AskForFile(const FileQuestion& question, NativeWindow parent) override;
    void BeginWaitCursor() override;
    void EndWaitCursor() override;
    bool OpenAddress(const std::string& address) override;

private:
    wxString folder_;  // of the file that was chosen last
};

/// File patterns such as "*.jpg;*.*" in the toolkit's form. Letters match in either case.
std::string ToolkitPatterns(const std::string& patterns);

}  // namespace tessara

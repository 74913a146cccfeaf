#include "platform/ui/window_system.h"

#include <cstdio>

namespace tessara {

namespace {

class NullSystem final : public WindowSystem {
public:
    bool CanOpenWindows() const override { return false; }

    int RunDialog(const DialogTemplate&, DialogEvents&, NativeWindow) override { return IDCANCEL; }

    /// Nobody can agree to anything: a question is answered with No.
    int ShowMessage(const std::string& text, const std::string& caption, UINT buttons, NativeWindow) override
    {
        const bool question = buttons == MB_YESNO;
        std::fprintf(stderr, "%s%s%s%s\n", caption.c_str(), caption.empty() ? "" : ": ", text.c_str(),
                     question ? " (taken as No)" : "");
        return question ? IDNO : IDOK;
    }

    std::optional<std::string> AskForFile(const FileQuestion&, NativeWindow) override { return std::nullopt; }

    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}

    bool OpenAddress(const std::string&) override { return false; }
};

}  // namespace

WindowSystem& NullWindowSystem() noexcept
{
    static NullSystem system;
    return system;
}

}  // namespace tessara

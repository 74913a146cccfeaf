#include "platform/gl/current_context.h"
#include "platform/system/wide_text_win32.h"
#include "platform/ui/win32/win32_dialog_window.h"
#include "platform/ui/window_system.h"
#include "platform/ui/window_system_library.h"

#include <shellapi.h>

namespace tessara {

namespace {

constexpr WORD kManifest = 2;                // of a module
constexpr std::size_t kLongestPath = 32768;  // in characters

/// The controls of the module's own manifest, whatever the host has, and sizes in pixels of the screen.
class OwnLook {
public:
    OwnLook()
    {
        ACTCTXW wanted = {};
        wanted.cbSize = sizeof wanted;
        wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        wanted.hModule = ModuleOf(reinterpret_cast<const void*>(&StartWindowSystemLibrary));
        wanted.lpResourceName = MAKEINTRESOURCEW(kManifest);
        context_ = CreateActCtxW(&wanted);
        if (context_ != INVALID_HANDLE_VALUE && !ActivateActCtx(context_, &cookie_))
            cookie_ = 0;
        setAwareness_ = reinterpret_cast<SetAwareness>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetThreadDpiAwarenessContext")));
        if (setAwareness_)
            awareness_ = setAwareness_(reinterpret_cast<void*>(static_cast<INT_PTR>(kSystemAware)));
    }
    OwnLook(const OwnLook&) = delete;
    OwnLook& operator=(const OwnLook&) = delete;
    ~OwnLook()
    {
        if (setAwareness_ && awareness_)
            setAwareness_(awareness_);
        if (cookie_ != 0)
            DeactivateActCtx(0, cookie_);
        if (context_ != INVALID_HANDLE_VALUE)
            ReleaseActCtx(context_);
    }

private:
    using SetAwareness = void*(WINAPI*)(void*);
    static constexpr int kSystemAware = -2;

    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
    SetAwareness setAwareness_ = nullptr;  // newer systems have it
    void* awareness_ = nullptr;
};

HWND Owner(NativeWindow parent)
{
    HWND window = parent ? static_cast<HWND>(parent) : GetActiveWindow();
    return window ? GetAncestor(window, GA_ROOT) : nullptr;
}

std::wstring FiltersOf(const FileQuestion& question)
{
    std::wstring filters;
    for (const FileQuestion::Filter& filter : question.filters) {
        filters += ToWide(filter.name) + L'\0';
        filters += ToWide(filter.patterns) + L'\0';
    }
    return filters + L'\0';
}

class Win32System final : public WindowSystem {
public:
    bool CanOpenWindows() const override { return GetDesktopWindow() != nullptr && GetSystemMetrics(SM_CXSCREEN) > 0; }

    int RunDialog(const DialogTemplate& form, DialogEvents& events, NativeWindow parent) override
    {
        const OwnLook look;
        const WindowClasses classes;
        return Win32DialogWindow(form, events, Owner(parent)).Run();
    }

    int ShowMessage(const std::string& text, const std::string& caption, UINT buttons, NativeWindow parent) override
    {
        const ContextKeeper keeper;
        const OwnLook look;
        const bool question = buttons == MB_YESNO;
        const int answer =
            MessageBoxW(Owner(parent), ToWide(text).c_str(), ToWide(caption.empty() ? "Tessara" : caption).c_str(),
                        question ? MB_YESNO | MB_ICONQUESTION : MB_OK | MB_ICONINFORMATION);
        return !question ? IDOK : answer == IDYES ? IDYES : IDNO;
    }

    std::optional<std::string> AskForFile(const FileQuestion& question, NativeWindow parent) override
    {
        const ContextKeeper keeper;
        const OwnLook look;
        const std::wstring filters = FiltersOf(question);
        const std::wstring extension = question.extension == "*.*" ? std::wstring() : ToWide(question.extension);
        std::wstring path = ToWide(question.name);
        path.resize(kLongestPath);
        OPENFILENAMEW dialog = {};
        dialog.lStructSize = sizeof dialog;
        dialog.hwndOwner = Owner(parent);
        dialog.lpstrFilter = question.filters.empty() ? nullptr : filters.c_str();
        dialog.lpstrFile = path.data();
        dialog.nMaxFile = static_cast<DWORD>(path.size());
        dialog.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
        dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                       (question.open ? OFN_FILEMUSTEXIST : OFN_PATHMUSTEXIST) |
                       (question.confirmOverwrite ? OFN_OVERWRITEPROMPT : 0u);
        if (!(question.open ? GetOpenFileNameW(&dialog) : GetSaveFileNameW(&dialog)))
            return std::nullopt;
        return ToNarrow(path.c_str());
    }

    void BeginWaitCursor() override
    {
        if (waits_++ == 0)
            before_ = SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));
    }

    void EndWaitCursor() override
    {
        if (waits_ > 0 && --waits_ == 0)
            SetCursor(before_);
    }

    bool OpenAddress(const std::string& address) override
    {
        const auto result = reinterpret_cast<INT_PTR>(
            ShellExecuteW(nullptr, L"open", ToWide(address).c_str(), nullptr, nullptr, SW_SHOWNORMAL));
        return result > 32;
    }

private:
    int waits_ = 0;
    HCURSOR before_ = nullptr;
};

}  // namespace

WindowSystem* StartWindowSystemLibrary() noexcept
{
    static Win32System system;
    return system.CanOpenWindows() ? &system : nullptr;
}

}  // namespace tessara

#include "platform/ui/win32_user.h"

#include <cctype>
#include <vector>

namespace tessara::test {

namespace {

WhenModal* g_waiting = nullptr;

void Send(INPUT input)
{
    SendInput(1, &input, sizeof input);
}

void SendMouse(DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    Send(input);
}

void SendKey(WORD key, WORD character, DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = character;
    input.ki.dwFlags = flags;
    Send(input);
}

BOOL CALLBACK TakeDialog(HWND window, LPARAM found)
{
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    const bool open = std::wstring(name) == L"TessaraDialog" && IsWindowVisible(window) && IsWindowEnabled(window);
    if (open)
        *reinterpret_cast<HWND*>(found) = window;
    return !open;
}

/// The dialog of this thread that is open, or null.
HWND OpenDialog()
{
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &TakeDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

}  // namespace

HWND User::Find(int control) const
{
    HWND window = GetDlgItem(dialog_, control);
    EXPECT_NE(window, nullptr) << "the dialog has no control " << control;
    return window;
}

/// Keys are held from when the mouse stands still: the display tells of those that are down where the mouse comes in.
void User::ClickAt(POINT place, bool shift)
{
    SetCursorPos(place.x, place.y);
    Rest();
    if (shift)
        SendKey(VK_SHIFT, 0, 0);
    SendMouse(MOUSEEVENTF_LEFTDOWN);
    SendMouse(MOUSEEVENTF_LEFTUP);
    if (shift)
        SendKey(VK_SHIFT, 0, KEYEVENTF_KEYUP);
    Rest();
}

void User::ClickInside(HWND window, double shareX, double shareY)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    ClickAt({rect.left + static_cast<LONG>((rect.right - rect.left) * shareX),
             rect.top + static_cast<LONG>((rect.bottom - rect.top) * shareY)});
}

void User::Click(int control)
{
    ClickInside(Find(control), 0.3, 0.5);
}

void User::Type(int control, const std::string& text)
{
    HWND edit = Find(control);
    Click(control);
    SendMessageW(edit, EM_SETSEL, 0, -1);
    for (const char c : text) {
        SendKey(0, static_cast<WORD>(c), KEYEVENTF_UNICODE);
        SendKey(0, static_cast<WORD>(c), KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    }
    Rest();
    char shown[64] = {};
    GetWindowTextA(edit, shown, 64);
    EXPECT_EQ(shown, text);
}

void User::ClickRow(HWND list, int row, bool shift)
{
    RECT rect{};
    SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
    POINT place = {rect.left + 8, (rect.top + rect.bottom) / 2};
    ClientToScreen(list, &place);
    ClickAt(place, shift);
}

void User::Pick(int control, int row)
{
    HWND window = Find(control);
    COMBOBOXINFO info = {};
    info.cbSize = sizeof info;
    if (!GetComboBoxInfo(window, &info)) {
        ClickRow(window, row);
        return;
    }
    Click(control);
    Wait(100);
    ClickRow(info.hwndList, row);
}

void User::PickRange(int control, int first, int last)
{
    Pick(control, first);
    ClickRow(Find(control), last, true);
}

void User::Press(WPARAM key)
{
    const auto code = static_cast<WORD>(std::toupper(static_cast<int>(key)));
    SendKey(code, 0, 0);
    SendKey(code, 0, KEYEVENTF_KEYUP);
    Rest();
}

void User::Wait(int milliseconds)
{
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    MSG message = {};
    do {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        Sleep(2);
    } while (GetTickCount64() < end);
}

WhenModal::WhenModal(std::function<void(ModalWindow&)> act, bool leave)
    : act_(std::move(act)), leave_(leave), timer_(SetTimer(nullptr, 0, 20, &Look))
{
    g_waiting = this;
}

WhenModal::~WhenModal()
{
    KillTimer(nullptr, timer_);
    g_waiting = nullptr;
}

void CALLBACK WhenModal::Look(HWND, UINT, UINT_PTR timer, DWORD)
{
    ModalWindow dialog{OpenDialog()};
    if (!g_waiting || !dialog.window)
        return;
    WhenModal& self = *g_waiting;
    KillTimer(nullptr, timer);
    User(dialog).Wait(150);
    self.act_(dialog);
    if (self.leave_ && IsWindow(dialog.window) && IsWindowVisible(dialog.window))
        User(dialog).Press(VK_ESCAPE);
}

}  // namespace tessara::test

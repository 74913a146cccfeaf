// What happens to a dialog between its start and its end.

#include "platform/ui/win32/win32_dialog_window.h"

#include <commctrl.h>

#include <utility>

namespace tessara {

namespace {

constexpr UINT kPostedHere = WM_APP;

thread_local Win32DialogWindow* t_top = nullptr;  // the dialog that runs on this thread

}  // namespace

LRESULT CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* dialog = reinterpret_cast<Win32DialogWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    LRESULT result = 0;
    return dialog && dialog->Handle(message, wParam, lParam, result) ? result
                                                                     : DefDlgProcW(window, message, wParam, lParam);
}

Win32DialogWindow::Win32DialogWindow(const DialogTemplate& form, DialogEvents& events, HWND parent)
    : form_(form), events_(events), parent_(parent)
{
    Create(parent);
}

Win32DialogWindow::~Win32DialogWindow()
{
    if (!dialog_)
        return;
    SetWindowLongPtrW(dialog_, DWLP_USER, 0);
    controls_.clear();  // surfaces end before their windows
    DestroyWindow(dialog_);
}

int Win32DialogWindow::Run()
{
    if (!dialog_)
        return IDCANCEL;
    const ContextKeeper keeper;
    hostContext_ = keeper.Kept();
    HWND focusBefore = ::GetFocus();
    const bool disable = parent_ && IsWindowEnabled(parent_);
    if (disable)
        EnableWindow(parent_, FALSE);
    HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, &MessageTaken, nullptr, GetCurrentThreadId());
    below_ = std::exchange(t_top, this);
    alive_ = true;
    bool focusFirst = true;
    WithHostContext([&] { focusFirst = events_.Created(*this); });
    if (!ended_) {
        ShowWindow(dialog_, SW_SHOW);
        if (focusFirst)
            FocusFrom(0, false);
        UpdateWindow(dialog_);
        RunLoop();
    }
    ended_ = true;
    WithHostContext([&] { events_.Dispatch(WM_DESTROY, 0, 0); });
    alive_ = false;
    t_top = below_;
    UnhookWindowsHookEx(hook);
    // The parent first: else the system would bring another program's window to the front.
    if (disable)
        EnableWindow(parent_, TRUE);
    ShowWindow(dialog_, SW_HIDE);
    if (focusBefore)
        ::SetFocus(focusBefore);
    return result_;
}

void Win32DialogWindow::RunLoop()
{
    MSG message = {};
    while (!ended_) {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

/// Looks at the thread's messages whoever's loop they run through: lists and menus have loops of their own.
LRESULT CALLBACK Win32DialogWindow::MessageTaken(int code, WPARAM removed, LPARAM message)
{
    if (code == HC_ACTION && removed == PM_REMOVE && t_top) {
        MSG& next = *reinterpret_cast<MSG*>(message);
        if (t_top->alive_ && !t_top->ended_ && t_top->Translate(next))
            next.message = WM_NULL;
    }
    return CallNextHookEx(nullptr, code, removed, message);
}

/// Shows the dialog what is about to reach one of its controls. \return true where that is taken
bool Win32DialogWindow::Translate(const MSG& message)
{
    const bool key = message.message == WM_KEYDOWN;
    if (message.message == WM_CHAR)
        return GoToListRow(IdOf(message.hwnd), static_cast<wchar_t>(message.wParam));
    if ((!key && message.message != WM_MOUSEMOVE) || (message.hwnd != dialog_ && !IsChild(dialog_, message.hwnd)))
        return false;
    InputMessage shown{message.message, message.wParam, message.lParam, IdOf(message.hwnd)};
    bool taken = false;
    WithHostContext([&] { taken = events_.Translate(shown); });
    return taken || (key && HandleKey(message.wParam));
}

/// A letter that is typed into a list goes to the next name that begins with it, and selects that alone.
bool Win32DialogWindow::GoToListRow(int control, wchar_t letter)
{
    if (letter <= L' ' || !Find(control, ControlKind::ListBox))
        return false;
    const wchar_t text[] = {letter, 0};
    const LRESULT row =
        Ask(control, LB_FINDSTRING, static_cast<WPARAM>(CurrentRow(control)), reinterpret_cast<LPARAM>(text));
    if (row == LB_ERR)
        return true;
    Ask(control, LB_SETSEL, FALSE, -1);
    controls_[control].hasCaret = false;
    SelectRow(control, static_cast<int>(row), true);
    Ask(control, LB_SETANCHORINDEX, static_cast<WPARAM>(row));
    Notify(control, LBN_SELCHANGE);
    return true;
}

bool Win32DialogWindow::HandleKey(WPARAM key)
{
    const Control* list = Find(GetFocus(), ControlKind::DropList);
    const bool open = list && SendMessageW(list->window, CB_GETDROPPEDSTATE, 0, 0) != 0;
    switch (key) {
    case VK_TAB:
        FocusFrom(GetFocus(), (GetKeyState(VK_SHIFT) & 0x8000) != 0);
        return true;
    case VK_RETURN:
        if (!open)
            PressDefault();
        return !open;
    case VK_ESCAPE:
        if (!open)
            Notify(IDCANCEL, BN_CLICKED);
        return !open;
    case VK_UP:
    case VK_DOWN:
        return StepBuddy(GetFocus(), key == VK_UP ? 1 : -1);
    default:
        return false;
    }
}

/// \return true where the message has its answer
bool Win32DialogWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    switch (message) {
    case WM_ERASEBKGND:
        result = DefDlgProcW(dialog_, message, wParam, lParam);
        DrawBackdrops(reinterpret_cast<HDC>(wParam));
        return true;
    case WM_PAINT:
        DefDlgProcW(dialog_, message, wParam, lParam);
        for (const auto& [id, control] : controls_) {
            if (control.surface)
                return true;  // its own paint comes as well
        }
        Dispatch(WM_PAINT, 0, 0);
        return true;
    case kViewportPaint:
        Dispatch(WM_PAINT, 0, 0);
        return true;
    case kPostedHere:
        SendPosted();
        return true;
    case WM_COMMAND:
        HandleCommand(CommandControl(wParam), CommandNotification(wParam));
        return true;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->code == UDN_DELTAPOS) {
            const auto& arrows = *reinterpret_cast<const NMUPDOWN*>(lParam);
            Step(static_cast<int>(arrows.hdr.idFrom), arrows.iDelta > 0 ? 1 : -1);
            result = TRUE;  // the arrows have no number of their own
            return true;
        }
        return false;
    case WM_CLOSE:
        Notify(IDCANCEL, BN_CLICKED);
        return true;
    default:
        return false;
    }
}

void Win32DialogWindow::HandleCommand(int control, UINT notification)
{
    const auto found = controls_.find(control);
    if (found == controls_.end())
        return;
    switch (found->second.form->kind) {
    case ControlKind::Button:
    case ControlKind::DefaultButton:
    case ControlKind::CheckBox:
        if (notification == BN_CLICKED)
            Notify(control, BN_CLICKED);
        break;
    case ControlKind::DropList:
        if (notification == CBN_SELCHANGE)
            Notify(control, CBN_SELCHANGE);
        break;
    case ControlKind::ListBox:
        if (notification == LBN_SELCHANGE) {
            found->second.hasCaret = true;
            Notify(control, LBN_SELCHANGE);
        }
        break;
    case ControlKind::Edit:
        if (notification == EN_KILLFOCUS)
            Notify(control, EN_KILLFOCUS);
        break;
    default:
        break;
    }
}

/// Handlers draw and load textures in the context of the terrain: it is current whatever happened in between.
template <class Body>
void Win32DialogWindow::WithHostContext(Body&& body)
{
    hostContext_.Restore();
    body();
}

void Win32DialogWindow::Dispatch(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (alive_ && !ended_)
        WithHostContext([&] { events_.Dispatch(message, wParam, lParam); });
}

void Win32DialogWindow::Notify(int control, UINT notification)
{
    Dispatch(WM_COMMAND, MakeCommand(control, notification), 0);
}

void Win32DialogWindow::Post(UINT message, WPARAM wParam, LPARAM lParam)
{
    posted_.push_back({message, wParam, lParam});
    PostMessageW(dialog_, kPostedHere, 0, 0);
}

void Win32DialogWindow::SendPosted()
{
    if (posted_.empty())
        return;
    const PostedMessage next = posted_.front();
    posted_.pop_front();
    Dispatch(next.message, next.wParam, next.lParam);
}

void Win32DialogWindow::Step(int spin, int steps)
{
    if (alive_ && !ended_)
        WithHostContext([&] { events_.Step(spin, steps); });
}

bool Win32DialogWindow::StepBuddy(int edit, int steps)
{
    for (const ControlTemplate& control : form_.controls) {
        if (control.kind == ControlKind::Spin && control.buddy == edit && edit != 0) {
            Step(control.id, steps);
            return true;
        }
    }
    return false;
}

/// Gives the next control in tab order the focus. \param focused 0 for the first one
void Win32DialogWindow::FocusFrom(int focused, bool previous)
{
    const auto controls = form_.controls;
    const std::size_t count = controls.size();
    std::size_t place = previous ? 0 : count - 1;
    for (std::size_t i = 0; i < count; ++i) {
        if (focused != 0 && controls[i].id == focused)
            place = i;
    }
    for (std::size_t tried = 0; tried < count; ++tried) {
        place = (place + (previous ? count - 1 : 1)) % count;
        if (controls[place].tabStop && IsEnabled(controls[place].id)) {
            SetFocus(controls[place].id);
            return;
        }
    }
}

void Win32DialogWindow::PressDefault()
{
    const int focused = GetFocus();
    if (Find(focused, ControlKind::Button)) {
        Notify(focused, BN_CLICKED);
        return;
    }
    for (const ControlTemplate& control : form_.controls) {
        if (control.kind == ControlKind::DefaultButton && IsEnabled(control.id))
            Notify(control.id, BN_CLICKED);
    }
}

}  // namespace tessara

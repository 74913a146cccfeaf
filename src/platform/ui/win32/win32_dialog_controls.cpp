// The building of a dialog from its template.

#include "platform/com/module_file.h"
#include "platform/system/wide_text_win32.h"
#include "platform/ui/win32/win32_dialog_window.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

namespace tessara {

namespace {

constexpr wchar_t kDialogClass[] = L"TessaraDialog";
constexpr wchar_t kViewportClass[] = L"TessaraViewport";
constexpr wchar_t kFont[] = L"MS Shell Dlg";
constexpr int kClosedListHeight = 13;  // dialog units
constexpr int kSpinWidth = 10;

HINSTANCE OwnInstance()
{
    return ModuleOf(reinterpret_cast<const void*>(&DialogProcedure));
}

/// The dialog draws what OpenGL shows: the viewport only says that something has to be drawn.
LRESULT CALLBACK ViewportProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT:
        ValidateRect(window, nullptr);
        SendMessageW(GetParent(window), kViewportPaint, 0, 0);
        return 0;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

WNDCLASSEXW ClassOf(const wchar_t* name, WNDPROC procedure)
{
    WNDCLASSEXW described = {};
    described.cbSize = sizeof described;
    described.lpfnWndProc = procedure;
    described.hInstance = OwnInstance();
    described.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
    described.lpszClassName = name;
    return described;
}

/// A dialog template without controls, as the system reads it.
class TemplateBytes {
public:
    explicit TemplateBytes(const DialogTemplate& form)
    {
        DLGTEMPLATE head = {};
        head.style =
            DS_SETFONT | DS_CENTER | DS_MODALFRAME | WS_POPUP | WS_CAPTION | (form.systemMenu ? WS_SYSMENU : 0);
        head.cx = form.width;
        head.cy = form.height;
        words_.resize(sizeof head / sizeof(WORD));
        std::memcpy(words_.data(), &head, sizeof head);
        words_.push_back(0);  // no menu
        Append(kDialogClass);
        Append(ToWide(form.title));
        words_.push_back(static_cast<WORD>(form.fontPoints));
        Append(kFont);
    }

    const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

private:
    void Append(const std::wstring& text) { words_.insert(words_.end(), text.c_str(), text.c_str() + text.size() + 1); }

    std::vector<WORD> words_;
};

struct ControlClass {
    const wchar_t* name;
    DWORD style;
    DWORD extendedStyle;
};

ControlClass ClassOf(const ControlTemplate& form)
{
    switch (form.kind) {
    case ControlKind::Label:
        return {L"STATIC", SS_LEFT | SS_NOPREFIX, 0};
    case ControlKind::GroupBox:
        return {L"BUTTON", BS_GROUPBOX | WS_CLIPSIBLINGS, WS_EX_TRANSPARENT};
    case ControlKind::Viewport:
        return {kViewportClass, WS_CLIPSIBLINGS, 0};
    case ControlKind::Button:
        return {L"BUTTON", BS_PUSHBUTTON, 0};
    case ControlKind::DefaultButton:
        return {L"BUTTON", BS_DEFPUSHBUTTON, 0};
    case ControlKind::CheckBox:
        return {L"BUTTON", BS_AUTOCHECKBOX, 0};
    case ControlKind::Edit:
        return {L"EDIT", ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    case ControlKind::DropList:
        return {L"COMBOBOX", CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL, 0};
    case ControlKind::ListBox:
        return {L"LISTBOX",
                LBS_NOTIFY | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT | LBS_DISABLENOSCROLL | WS_VSCROLL |
                    (form.multipleSelection ? LBS_EXTENDEDSEL : 0u),
                WS_EX_CLIENTEDGE};
    default:
        return {nullptr, 0, 0};
    }
}

}  // namespace

WindowClasses::WindowClasses()
{
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_STANDARD_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&controls);
    WNDCLASSEXW dialog = ClassOf(kDialogClass, &DialogProcedure);
    dialog.cbWndExtra = DLGWINDOWEXTRA;
    WNDCLASSEXW viewport = ClassOf(kViewportClass, &ViewportProcedure);
    viewport.style = CS_OWNDC;
    RegisterClassExW(&dialog);
    RegisterClassExW(&viewport);
}

WindowClasses::~WindowClasses()
{
    UnregisterClassW(kViewportClass, OwnInstance());
    UnregisterClassW(kDialogClass, OwnInstance());
}

bool Win32DialogWindow::Create(HWND parent)
{
    const TemplateBytes bytes(form_);
    dialog_ = CreateDialogIndirectParamW(OwnInstance(), bytes.Get(), parent, nullptr, 0);
    if (!dialog_)
        return false;
    SetWindowLongPtrW(dialog_, DWLP_USER, reinterpret_cast<LONG_PTR>(this));
    for (const ControlTemplate& control : form_.controls)
        Add(control);
    return true;
}

RECT Win32DialogWindow::PlaceOf(const ControlTemplate& form) const
{
    RECT place = {form.x, form.y, form.x + form.width, form.y + form.height};
    MapDialogRect(dialog_, &place);
    return place;
}

void Win32DialogWindow::Add(const ControlTemplate& form)
{
    RECT place = PlaceOf(form);
    switch (form.kind) {
    case ControlKind::EtchedLine:
    case ControlKind::WhiteRectangle:
        backdrops_.push_back({form.kind, place, {}});
        return;
    case ControlKind::Picture:
        if (form.picture)
            backdrops_.push_back(
                {form.kind, place, PictureBitmap(form.picture(), place.right - place.left, place.bottom - place.top)});
        return;
    case ControlKind::Viewport:
        backdrops_.push_back({ControlKind::WhiteRectangle, place, {}});
        InflateRect(&place, -1, -1);
        break;
    default:
        break;
    }
    Control control;
    control.form = &form;
    control.window = form.kind == ControlKind::Spin ? MakeSpin(form) : MakeControl(form, place);
    if (!control.window)
        return;
    if (form.kind == ControlKind::Viewport)
        control.surface = std::make_unique<GlViewport>(control.window);
    if (form.id != 0)
        controls_[form.id] = std::move(control);
}

HWND Win32DialogWindow::MakeControl(const ControlTemplate& form, const RECT& place)
{
    const ControlClass kind = ClassOf(form);
    HWND window = CreateWindowExW(kind.extendedStyle, kind.name, ToWide(form.text).c_str(),
                                  WS_CHILD | WS_VISIBLE | (form.tabStop ? WS_TABSTOP : 0u) | kind.style, place.left,
                                  place.top, place.right - place.left, place.bottom - place.top, dialog_,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(form.id)), OwnInstance(), nullptr);
    if (!window)
        return nullptr;
    SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(SendMessageW(dialog_, WM_GETFONT, 0, 0)), FALSE);
    if (form.kind == ControlKind::DropList) {
        RECT closed = {0, 0, 4, kClosedListHeight};
        MapDialogRect(dialog_, &closed);
        // The height of the part that is always seen, without its frame.
        SendMessageW(window, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max<LONG>(closed.bottom - 6, 8));
        for (const char* row : form.rows)
            SendMessageW(window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(row).c_str()));
    }
    return window;
}

/// The arrows stand inside the right edge of their field. Without a buddy of the system's they leave the focus where it
/// is.
HWND Win32DialogWindow::MakeSpin(const ControlTemplate& form)
{
    const auto buddy = std::find_if(form_.controls.begin(), form_.controls.end(),
                                    [&](const ControlTemplate& other) { return other.id == form.buddy; });
    if (buddy == form_.controls.end())
        return nullptr;
    const RECT place = PlaceOf(*buddy);
    RECT arrows = {0, 0, kSpinWidth, 1};
    MapDialogRect(dialog_, &arrows);
    const int width = arrows.right;
    const int height = place.bottom - place.top;
    if (const Control* edit = Find(form.buddy))
        SetWindowPos(edit->window, nullptr, 0, 0, place.right - place.left - width, height, SWP_NOMOVE | SWP_NOZORDER);
    HWND window =
        CreateWindowExW(0, UPDOWN_CLASSW, nullptr, WS_CHILD | WS_VISIBLE, place.right - width, place.top, width, height,
                        dialog_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(form.id)), OwnInstance(), nullptr);
    if (window)
        SendMessageW(window, UDM_SETRANGE32, static_cast<WPARAM>(-1000000), 1000000);
    return window;
}

void Win32DialogWindow::DrawBackdrops(HDC device) const
{
    for (const Backdrop& backdrop : backdrops_) {
        RECT place = backdrop.place;
        if (backdrop.kind == ControlKind::EtchedLine)
            DrawEdge(device, &place, EDGE_ETCHED, BF_TOP);
        else if (backdrop.kind == ControlKind::WhiteRectangle)
            FillRect(device, &place, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        else
            backdrop.picture.Draw(device, place.left, place.top);
    }
}

}  // namespace tessara

#include "platform/ui/win32/win32_dialog_window.h"

#include "platform/system/wide_text_win32.h"

#include <commctrl.h>

namespace tessara {

namespace {

std::wstring WindowText(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool IsList(const ControlTemplate& form)
{
    return form.kind == ControlKind::ListBox;
}

}  // namespace

const Win32DialogWindow::Control* Win32DialogWindow::Find(int control) const
{
    const auto found = controls_.find(control);
    return found == controls_.end() ? nullptr : &found->second;
}

const Win32DialogWindow::Control* Win32DialogWindow::Find(int control, ControlKind kind) const
{
    const Control* found = Find(control);
    return found && found->form->kind == kind ? found : nullptr;
}

/// The control that a window is, or is a part of; 0 for none.
int Win32DialogWindow::IdOf(HWND window) const
{
    for (; window && window != dialog_; window = GetParent(window)) {
        for (const auto& [id, control] : controls_) {
            if (control.window == window)
                return id;
        }
    }
    return 0;
}

/// Sends a control a message. \return 0 for a control that isn't there
LRESULT Win32DialogWindow::Ask(int control, UINT message, WPARAM wParam, LPARAM lParam) const
{
    const Control* found = Find(control);
    return found ? SendMessageW(found->window, message, wParam, lParam) : 0;
}

std::string Win32DialogWindow::GetText(int control) const
{
    const Control* found = Find(control);
    if (control == 0)
        return ToNarrow(WindowText(dialog_));
    return found && found->form->kind != ControlKind::Spin ? ToNarrow(WindowText(found->window)) : std::string();
}

void Win32DialogWindow::SetText(int control, const std::string& text)
{
    const Control* found = Find(control);
    if (control == 0)
        SetWindowTextW(dialog_, ToWide(text).c_str());
    else if (found)
        SetWindowTextW(found->window, ToWide(text).c_str());
    SetModified(control, false);
}

void Win32DialogWindow::Enable(int control, bool enable)
{
    if (const Control* found = Find(control))
        EnableWindow(found->window, enable);
}

bool Win32DialogWindow::IsEnabled(int control) const
{
    const Control* found = Find(control);
    return control == 0 || (found && IsWindowEnabled(found->window));
}

RECT Win32DialogWindow::GetRect(int control) const
{
    const Control* found = Find(control);
    RECT rect{};
    if (control == 0 || found)
        GetWindowRect(found ? found->window : dialog_, &rect);
    return rect;
}

void Win32DialogWindow::Invalidate(int control)
{
    const Control* found = Find(control);
    if (found)
        InvalidateRect(found->window, nullptr, TRUE);
    else if (control == 0)
        RedrawWindow(dialog_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void Win32DialogWindow::SetChecked(int control, bool checked)
{
    if (Find(control, ControlKind::CheckBox))
        Ask(control, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
}

bool Win32DialogWindow::IsChecked(int control) const
{
    return Find(control, ControlKind::CheckBox) && Ask(control, BM_GETCHECK) == BST_CHECKED;
}

int Win32DialogWindow::GetFocus() const
{
    return IdOf(::GetFocus());
}

void Win32DialogWindow::SetFocus(int control)
{
    const Control* found = Find(control);
    if (!found)
        return;
    ::SetFocus(found->window);
    if (found->form->kind == ControlKind::Edit)
        Ask(control, EM_SETSEL, 0, -1);
}

bool Win32DialogWindow::IsActive() const
{
    return GetActiveWindow() == dialog_;
}

int Win32DialogWindow::AddRow(int control, const std::string& text)
{
    const std::wstring wide = ToWide(text);
    if (Find(control, ControlKind::DropList))
        return static_cast<int>(Ask(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide.c_str())));
    if (Find(control, ControlKind::ListBox))
        return static_cast<int>(Ask(control, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide.c_str())));
    return -1;
}

void Win32DialogWindow::ClearRows(int control)
{
    if (Find(control, ControlKind::DropList))
        Ask(control, CB_RESETCONTENT);
    if (Find(control, ControlKind::ListBox)) {
        Ask(control, LB_RESETCONTENT);
        controls_[control].hasCaret = false;
    }
}

int Win32DialogWindow::RowCount(int control) const
{
    if (Find(control, ControlKind::DropList))
        return static_cast<int>(Ask(control, CB_GETCOUNT));
    return Find(control, ControlKind::ListBox) ? static_cast<int>(Ask(control, LB_GETCOUNT)) : 0;
}

std::string Win32DialogWindow::RowText(int control, int row) const
{
    if (row < 0 || row >= RowCount(control))
        return {};
    const bool list = IsList(*Find(control)->form);
    const auto place = static_cast<WPARAM>(row);
    std::wstring text(static_cast<std::size_t>(Ask(control, list ? LB_GETTEXTLEN : CB_GETLBTEXTLEN, place)) + 1, L'\0');
    Ask(control, list ? LB_GETTEXT : CB_GETLBTEXT, place, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return ToNarrow(text);
}

int Win32DialogWindow::CurrentRow(int control) const
{
    if (Find(control, ControlKind::DropList))
        return static_cast<int>(Ask(control, CB_GETCURSEL));
    const Control* list = Find(control, ControlKind::ListBox);
    return list && list->hasCaret ? static_cast<int>(Ask(control, LB_GETCARETINDEX)) : -1;
}

void Win32DialogWindow::SetCurrentRow(int control, int row)
{
    if (Find(control, ControlKind::DropList))
        Ask(control, CB_SETCURSEL, static_cast<WPARAM>(row >= 0 && row < RowCount(control) ? row : -1));
}

std::vector<int> Win32DialogWindow::SelectedRows(int control) const
{
    std::vector<int> rows;
    if (!Find(control, ControlKind::ListBox))
        return rows;
    for (int row = 0; row < RowCount(control); ++row) {
        if (Ask(control, LB_GETSEL, static_cast<WPARAM>(row)) > 0)
            rows.push_back(row);
    }
    return rows;
}

void Win32DialogWindow::SelectRow(int control, int row, bool select)
{
    const Control* list = Find(control, ControlKind::ListBox);
    if (!list || row < 0 || row >= RowCount(control))
        return;
    if (!list->form->multipleSelection) {
        Ask(control, LB_SETCURSEL, select ? static_cast<WPARAM>(row) : static_cast<WPARAM>(-1));
        controls_[control].hasCaret = select;
        return;
    }
    const int caret = list->hasCaret ? CurrentRow(control) : row;
    Ask(control, LB_SETSEL, select, row);
    if (!select)
        return;
    Ask(control, LB_SETCARETINDEX, static_cast<WPARAM>(caret), FALSE);
    controls_[control].hasCaret = true;
}

bool Win32DialogWindow::IsModified(int control) const
{
    return Find(control, ControlKind::Edit) && Ask(control, EM_GETMODIFY) != 0;
}

void Win32DialogWindow::SetModified(int control, bool modified)
{
    if (Find(control, ControlKind::Edit))
        Ask(control, EM_SETMODIFY, modified);
}

/// Icons grow with the text.
void Win32DialogWindow::SetImage(int control, const Image& image)
{
    if (!Find(control, ControlKind::Button))
        return;
    HDC device = GetDC(dialog_);
    const int dots = GetDeviceCaps(device, LOGPIXELSX);
    ReleaseDC(dialog_, device);
    PictureBitmap picture(image, MulDiv(image.width, dots, 96), MulDiv(image.height, dots, 96));
    Ask(control, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picture.Get()));
    controls_[control].picture = std::move(picture);
}

DeviceContext* Win32DialogWindow::GetDeviceContext(int control)
{
    const Control* found = Find(control);
    return found ? found->surface.get() : nullptr;
}

void Win32DialogWindow::End(int result)
{
    if (ended_)
        return;
    ended_ = true;
    result_ = result;
    // Wakes the loop.
    PostMessageW(dialog_, WM_NULL, 0, 0);
}

}  // namespace tessara

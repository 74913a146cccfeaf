#include "platform/ui/wx/wx_dialog_window.h"

#include "platform/ui/wx/dialog_controls.h"
#include "platform/ui/wx/gl_surface.h"
#include "platform/ui/wx/image_bitmap.h"
#include "platform/ui/wx/tool_tip_window.h"

#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>

#include <algorithm>

namespace tessara {

namespace {

wxString Wide(const std::string& text)
{
    return wxString::FromUTF8(text.data(), text.size());
}

wxTextCtrl& Edit(wxWindow* window)
{
    return *static_cast<wxTextCtrl*>(window);
}

/// The rows of a drop list or a list box.
wxItemContainer* Rows(const ControlTemplate& form, wxWindow* window)
{
    if (form.kind == ControlKind::DropList)
        return static_cast<wxChoice*>(window);
    if (form.kind == ControlKind::ListBox)
        return static_cast<wxListBox*>(window);
    return nullptr;
}

}  // namespace

const WxDialogWindow::Control* WxDialogWindow::Find(int control) const
{
    const auto found = controls_.find(control);
    return found == controls_.end() ? nullptr : &found->second;
}

const WxDialogWindow::Control* WxDialogWindow::Find(int control, ControlKind kind) const
{
    const Control* found = Find(control);
    return found && found->form->kind == kind ? found : nullptr;
}

/// The control that a window is, or is a part of; 0 for none.
int WxDialogWindow::IdOf(const wxWindow* window) const
{
    for (; window && window != &dialog_; window = window->GetParent()) {
        for (const auto& [id, control] : controls_) {
            if (control.window == window)
                return id;
        }
    }
    return 0;
}

std::string WxDialogWindow::GetText(int control) const
{
    const Control* found = Find(control);
    if (control == 0)
        return dialog_.GetTitle().utf8_string();
    if (!found || found->form->kind == ControlKind::Spin)
        return {};
    if (found->form->kind == ControlKind::Edit)
        return Edit(found->window).GetValue().utf8_string();
    return wxControl::RemoveMnemonics(found->window->GetLabel()).utf8_string();
}

void WxDialogWindow::SetText(int control, const std::string& text)
{
    const Control* found = Find(control);
    if (control == 0)
        dialog_.SetTitle(Wide(text));
    else if (found && found->form->kind == ControlKind::Edit) {
        Edit(found->window).ChangeValue(Wide(text));
        Edit(found->window).SetModified(false);
    } else if (found)
        found->window->SetLabel(wxControl::EscapeMnemonics(Wide(text)));
}

void WxDialogWindow::Enable(int control, bool enable)
{
    if (const Control* found = Find(control))
        found->window->Enable(enable);
}

bool WxDialogWindow::IsEnabled(int control) const
{
    const Control* found = Find(control);
    return control == 0 || (found && found->window->IsThisEnabled());
}

RECT WxDialogWindow::GetRect(int control) const
{
    const Control* found = Find(control);
    if (control != 0 && !found)
        return {};
    const wxRect rect = found ? found->window->GetScreenRect() : dialog_.GetScreenRect();
    return {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height};
}

void WxDialogWindow::Invalidate(int control)
{
    if (const Control* found = Find(control))
        found->window->Refresh();
    if (control != 0)
        return;
    dialog_.Refresh();
    for (const auto& [id, other] : controls_) {
        if (other.surface)
            other.surface->Window().Refresh(false);
    }
}

void WxDialogWindow::SetChecked(int control, bool checked)
{
    if (const Control* found = Find(control, ControlKind::CheckBox))
        static_cast<wxCheckBox*>(found->window)->SetValue(checked);
}

bool WxDialogWindow::IsChecked(int control) const
{
    const Control* found = Find(control, ControlKind::CheckBox);
    return found && static_cast<wxCheckBox*>(found->window)->GetValue();
}

int WxDialogWindow::GetFocus() const
{
    return IdOf(wxWindow::FindFocus());
}

void WxDialogWindow::SetFocus(int control)
{
    const Control* found = Find(control);
    if (!found)
        return;
    found->window->SetFocus();
    if (found->form->kind == ControlKind::Edit)
        Edit(found->window).SelectAll();
}

bool WxDialogWindow::IsActive() const
{
    return gtk_window_is_active(GTK_WINDOW(dialog_.GetHandle())) != FALSE;
}

int WxDialogWindow::AddRow(int control, const std::string& text)
{
    const Control* found = Find(control);
    wxItemContainer* rows = found ? Rows(*found->form, found->window) : nullptr;
    return rows ? rows->Append(Wide(text)) : -1;
}

void WxDialogWindow::ClearRows(int control)
{
    const Control* found = Find(control);
    if (wxItemContainer* rows = found ? Rows(*found->form, found->window) : nullptr)
        rows->Clear();
}

int WxDialogWindow::RowCount(int control) const
{
    const Control* found = Find(control);
    const wxItemContainer* rows = found ? Rows(*found->form, found->window) : nullptr;
    return rows ? static_cast<int>(rows->GetCount()) : 0;
}

std::string WxDialogWindow::RowText(int control, int row) const
{
    if (row < 0 || row >= RowCount(control))
        return {};
    const Control* found = Find(control);
    return Rows(*found->form, found->window)->GetString(static_cast<unsigned>(row)).utf8_string();
}

int WxDialogWindow::CurrentRow(int control) const
{
    if (const Control* found = Find(control, ControlKind::DropList))
        return static_cast<wxChoice*>(found->window)->GetSelection();
    const Control* found = Find(control, ControlKind::ListBox);
    return found ? FocusedRow(*found->window) : -1;
}

void WxDialogWindow::SetCurrentRow(int control, int row)
{
    if (const Control* found = Find(control, ControlKind::DropList))
        static_cast<wxChoice*>(found->window)->SetSelection(row >= 0 && row < RowCount(control) ? row : wxNOT_FOUND);
}

std::vector<int> WxDialogWindow::SelectedRows(int control) const
{
    std::vector<int> rows;
    if (const Control* found = Find(control, ControlKind::ListBox)) {
        wxArrayInt selected;
        static_cast<wxListBox*>(found->window)->GetSelections(selected);
        rows.assign(selected.begin(), selected.end());
        std::sort(rows.begin(), rows.end());
    }
    return rows;
}

void WxDialogWindow::SelectRow(int control, int row, bool select)
{
    if (const Control* found = Find(control, ControlKind::ListBox))
        SelectListRow(*found->window, row, select);
}

bool WxDialogWindow::IsModified(int control) const
{
    const Control* found = Find(control, ControlKind::Edit);
    return found && Edit(found->window).IsModified();
}

void WxDialogWindow::SetModified(int control, bool modified)
{
    if (const Control* found = Find(control, ControlKind::Edit))
        Edit(found->window).SetModified(modified);
}

void WxDialogWindow::SetImage(int control, const Image& image)
{
    if (const Control* found = Find(control, ControlKind::Button))
        static_cast<wxButton*>(found->window)->SetBitmap(ToBitmap(image));
}

bool WxDialogWindow::CreateToolTip()
{
    toolTips_ = std::make_unique<ToolTips>(dialog_, [this](const std::string& link) {
        Dispatch(linkMessage_, reinterpret_cast<WPARAM>(link.c_str()), 0);
    });
    return true;
}

void WxDialogWindow::AddToolTip(int control, const std::string& markup)
{
    const Control* found = Find(control);
    if (toolTips_ && found)
        toolTips_->Add(*found->window, markup);
}

void WxDialogWindow::RelayToToolTip(const InputMessage& message)
{
    if (!toolTips_ || message.message != WM_MOUSEMOVE)
        return;
    const Control* found = Find(message.control);
    toolTips_->MouseOver(found ? found->window : nullptr);
}

void WxDialogWindow::ShowHelp(const std::string& markup)
{
    if (toolTips_)
        toolTips_->ShowHelp(markup);
}

DeviceContext* WxDialogWindow::GetDeviceContext(int control)
{
    const Control* found = Find(control);
    return found ? found->surface.get() : nullptr;
}

void WxDialogWindow::Post(UINT message, WPARAM wParam, LPARAM lParam)
{
    dialog_.CallAfter([this, message, wParam, lParam] { Dispatch(message, wParam, lParam); });
}

void WxDialogWindow::End(int result)
{
    if (ended_)
        return;
    ended_ = true;
    result_ = result;
    if (dialog_.IsModal())
        dialog_.EndModal(result);
}

}  // namespace tessara

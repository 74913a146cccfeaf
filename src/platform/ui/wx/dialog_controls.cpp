#include "platform/ui/wx/dialog_controls.h"

#include "platform/ui/wx/image_bitmap.h"

#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/statline.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace tessara {

namespace {

/// Text as it stands: an ampersand is no mark of a shortcut.
wxString Plain(const char* text)
{
    return wxControl::EscapeMnemonics(wxString::FromUTF8(text));
}

wxWindow* MakePicture(wxWindow* parent, const ControlTemplate& form, const wxRect& place)
{
    if (!form.picture)
        return nullptr;
    wxImage picture = ToBitmap(form.picture()).ConvertToImage();
    picture.Rescale(place.width, place.height, wxIMAGE_QUALITY_BILINEAR);
    return new wxStaticBitmap(parent, wxID_ANY, wxBitmap(picture), place.GetPosition(), place.GetSize());
}

wxWindow* MakeRectangle(wxWindow* parent, const wxRect& place)
{
    auto* panel = new wxPanel(parent, wxID_ANY, place.GetPosition(), place.GetSize(), wxBORDER_NONE);
    panel->SetBackgroundColour(*wxWHITE);
    return panel;
}

wxWindow* MakeDropList(wxWindow* parent, const ControlTemplate& form, int id, const wxRect& place)
{
    wxArrayString rows;
    for (const char* row : form.rows)
        rows.Add(wxString::FromUTF8(row));
    return new wxChoice(parent, id, place.GetPosition(), wxSize(place.width, -1), rows);
}

GtkTreeView* TreeOf(const wxWindow& listBox)
{
    return static_cast<const wxListBox&>(listBox).m_treeview;
}

wxWindow* MakeButton(wxWindow* parent, const ControlTemplate& form, int id, const wxRect& place)
{
    auto* button = new wxButton(parent, id, Plain(form.text), place.GetPosition(), place.GetSize());
    if (form.kind == ControlKind::DefaultButton)
        button->SetDefault();
    return button;
}

/// With a scroll bar that is always seen, and without the toolkit's window for searching: a letter that is typed goes
/// to the next name that begins with it.
wxWindow* MakeListBox(wxWindow* parent, const ControlTemplate& form, int id, const wxRect& place)
{
    auto* list = new wxListBox(parent, id, place.GetPosition(), place.GetSize(), 0, nullptr,
                               (form.multipleSelection ? wxLB_EXTENDED : wxLB_SINGLE) | wxLB_ALWAYS_SB);
    gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(list->GetHandle()), FALSE);
    gtk_tree_view_set_enable_search(TreeOf(*list), FALSE);
    return list;
}

/// Gives a row the focus and selects it and no other, without telling anybody.
void MoveCursor(wxListBox& list, int row)
{
    GtkTreePath* path = gtk_tree_path_new_from_indices(row, -1);
    list.GTKDisableEvents();
    gtk_tree_view_set_cursor(TreeOf(list), path, nullptr, FALSE);
    list.GTKEnableEvents();
    gtk_tree_path_free(path);
}

}  // namespace

bool IsBackdrop(ControlKind kind) noexcept
{
    return kind == ControlKind::GroupBox || kind == ControlKind::EtchedLine || kind == ControlKind::WhiteRectangle ||
           kind == ControlKind::Picture;
}

wxWindow* MakeControl(wxWindow* parent, const ControlTemplate& form, const wxRect& place)
{
    const int id = form.id == 0 ? static_cast<int>(wxID_ANY) : form.id;
    const wxPoint at = place.GetPosition();
    const wxSize size = place.GetSize();
    switch (form.kind) {
    case ControlKind::Label:
        return new wxStaticText(parent, id, Plain(form.text), at, size, wxST_NO_AUTORESIZE);
    case ControlKind::GroupBox:
        return new wxStaticBox(parent, id, Plain(form.text), at, size);
    case ControlKind::EtchedLine:
        return new wxStaticLine(parent, id, at, size);
    case ControlKind::WhiteRectangle:
        return MakeRectangle(parent, place);
    case ControlKind::Picture:
        return MakePicture(parent, form, place);
    case ControlKind::Button:
    case ControlKind::DefaultButton:
        return MakeButton(parent, form, id, place);
    case ControlKind::CheckBox:
        return new wxCheckBox(parent, id, Plain(form.text), at, size);
    case ControlKind::Edit:
        return new wxTextCtrl(parent, id, wxEmptyString, at, size, wxTE_PROCESS_ENTER);
    case ControlKind::DropList:
        return MakeDropList(parent, form, id, place);
    case ControlKind::ListBox:
        return MakeListBox(parent, form, id, place);
    case ControlKind::Spin:
    case ControlKind::Viewport:
        break;
    }
    return nullptr;
}

int FocusedRow(const wxWindow& listBox)
{
    GtkTreePath* path = nullptr;
    gtk_tree_view_get_cursor(TreeOf(listBox), &path, nullptr);
    if (!path)
        return -1;
    const int row = gtk_tree_path_get_indices(path)[0];
    gtk_tree_path_free(path);
    return row < static_cast<int>(static_cast<const wxListBox&>(listBox).GetCount()) ? row : -1;
}

bool GoToListRow(wxWindow& listBox, wxChar letter)
{
    auto& list = static_cast<wxListBox&>(listBox);
    const int count = static_cast<int>(list.GetCount());
    const int from = FocusedRow(list);
    for (int step = 1; step <= count; ++step) {
        const int row = (from + step + count) % count;
        const wxString text = list.GetString(static_cast<unsigned>(row));
        if (text.empty() || wxTolower(text[0]) != wxTolower(letter))
            continue;
        MoveCursor(list, row);
        return true;
    }
    return false;
}

void SelectListRow(wxWindow& listBox, int row, bool select)
{
    auto& list = static_cast<wxListBox&>(listBox);
    if (row < 0 || row >= static_cast<int>(list.GetCount()))
        return;
    if (!select) {
        list.Deselect(row);
        return;
    }
    if (FocusedRow(list) < 0) {
        // Placing the cursor selects its row and no other: what was selected before comes back below.
        wxArrayInt selected;
        list.GetSelections(selected);
        MoveCursor(list, row);
        for (const int other : selected)
            list.SetSelection(other);
    }
    list.SetSelection(row);
}

}  // namespace tessara

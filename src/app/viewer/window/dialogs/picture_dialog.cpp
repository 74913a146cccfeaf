#include "app/viewer/window/dialogs/picture_dialog.h"

#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

#include <array>

namespace tessara {

namespace {

constexpr int kLargest = 16384;

struct Preset {
    const char* name;
    wxSize size;
};

const std::array kPresets = {
    Preset{"As in the window", wxSize(0, 0)}, Preset{"Full HD, 1920 × 1080", wxSize(1920, 1080)},
    Preset{"4K, 3840 × 2160", wxSize(3840, 2160)}, Preset{"A4 at 300 dpi, 3508 × 2480", wxSize(3508, 2480)}};

wxSpinCtrl* AddNumber(wxDialog& dialog, wxFlexGridSizer& rows, const char* title, int value)
{
    rows.Add(new wxStaticText(&dialog, wxID_ANY, title), wxSizerFlags().CenterVertical());
    auto* field = new wxSpinCtrl(&dialog, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize, wxSP_ARROW_KEYS, 1,
                                 kLargest, value);
    field->SetName(title);
    rows.Add(field, wxSizerFlags().Expand());
    return field;
}

}  // namespace

std::optional<wxSize> AskPictureSize(wxWindow* parent, const wxSize& shown)
{
    wxDialog dialog(parent, wxID_ANY, "Save Picture");
    auto* rows = new wxFlexGridSizer(2, dialog.FromDIP(wxSize(16, 8)));
    rows->AddGrowableCol(1);
    rows->Add(new wxStaticText(&dialog, wxID_ANY, "Size"), wxSizerFlags().CenterVertical());
    auto* preset = new wxChoice(&dialog, wxID_ANY);
    for (const Preset& each : kPresets)
        preset->Append(wxString::FromUTF8(each.name));
    preset->SetSelection(0);
    rows->Add(preset, wxSizerFlags().Expand());
    wxSpinCtrl* width = AddNumber(dialog, *rows, "Width in pixels", shown.x);
    wxSpinCtrl* height = AddNumber(dialog, *rows, "Height in pixels", shown.y);
    preset->Bind(wxEVT_CHOICE, [=](wxCommandEvent& event) {
        const wxSize& size = kPresets[static_cast<std::size_t>(event.GetInt())].size;
        width->SetValue(size.x > 0 ? size.x : shown.x);
        height->SetValue(size.y > 0 ? size.y : shown.y);
    });
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(rows, wxSizerFlags(1).Expand().Border(wxALL, dialog.FromDIP(16)));
    column->Add(dialog.CreateSeparatedButtonSizer(wxOK | wxCANCEL),
                wxSizerFlags().Expand().Border(wxALL, dialog.FromDIP(8)));
    dialog.SetSizerAndFit(column);
    dialog.CentreOnParent();
    if (dialog.ShowModal() != wxID_OK)
        return std::nullopt;
    return wxSize(width->GetValue(), height->GetValue());
}

}  // namespace tessara

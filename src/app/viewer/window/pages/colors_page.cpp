#include "app/viewer/window/pages/colors_page.h"

#include "app/viewer/viewer.h"
#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/window_text.h"
#include "platform/system/number_text.h"

#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace tessara {

ColorsPage::ColorsPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent, listener)
{
    AddGroup("Colours of the heights", SettingGroup::HeightColors);
    low_ = AddHeight("From", "Height in metres that gets the first colour");
    high_ = AddHeight("To", "Height in metres that gets the last colour");
    const auto apply = [this, colors = listener.colors] {
        if (low_->IsModified() || high_->IsModified())
            colors(LeadingNumber(low_->GetValue().utf8_string()), LeadingNumber(high_->GetValue().utf8_string()));
        low_->DiscardEdits();
        high_->DiscardEdits();
    };
    for (wxTextCtrl* each : {low_, high_}) {
        each->Bind(wxEVT_TEXT_ENTER, [apply](wxCommandEvent&) { apply(); });
        each->Bind(wxEVT_KILL_FOCUS, [apply](wxFocusEvent& event) {
            event.Skip();
            apply();
        });
    }
    auto* reset = new wxBoxSizer(wxHORIZONTAL);
    AddButton(this, *reset, "All Heights", "From the lowest to the highest point of the terrain", listener.resetColors);
    Column().Add(reset, wxSizerFlags().Expand());
    AddGroup("Picture on the ground", SettingGroup::GroundPicture);
    auto* import = new wxBoxSizer(wxHORIZONTAL);
    AddButton(this, *import, "Import...", "Stretch a picture over the terrain",
              [run = listener.run] { run(kImportSource); });
    AddButton(this, *import, "Detail...", "Choose and tune the detail texture",
              [run = listener.run] { run(kTerrainDetail); });
    Column().Add(import, wxSizerFlags().Expand());
    Finish();
}

wxTextCtrl* ColorsPage::AddHeight(const std::string& title, const std::string& help)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(this, wxID_ANY, Wide(title)), wxSizerFlags(1).CenterVertical());
    auto* field = new wxTextCtrl(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                 wxTE_PROCESS_ENTER | wxTE_RIGHT);
    field->SetToolTip(Wide(help));
    field->SetName(Wide(title));
    row->Add(field, wxSizerFlags(2).CenterVertical());
    row->Add(new wxStaticText(this, wxID_ANY, "m"), wxSizerFlags().CenterVertical().Border(wxLEFT, FromDIP(6)));
    Column().Add(row, wxSizerFlags().Expand().Border(wxTOP, FromDIP(6)));
    return field;
}

void ColorsPage::ShowState(const Viewer& viewer, bool hasSource)
{
    Show(viewer.Settings());
    const auto show = [](wxTextCtrl& field, double value) {
        const wxString text = Wide(FixedText(value, 1));
        if (!field.IsModified() && field.GetValue() != text)
            field.ChangeValue(text);
    };
    show(*low_, viewer.Colors().low);
    show(*high_, viewer.Colors().high);
    ControlOf("View/SourceTexture").Enable(hasSource);
}

}  // namespace tessara

#include "app/viewer/window/pages/number_field.h"

#include "app/viewer/window/pages/page_gap.h"
#include "app/viewer/window/window_text.h"
#include "app/viewer/work/typed_number.h"
#include "platform/system/number_text.h"

#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <utility>

namespace tessara {

NumberField::NumberField(wxWindow* parent, wxSizer& column, Look look, std::function<void()> finished)
    : look_(std::move(look))
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(parent, wxID_ANY, Wide(look_.title)), wxSizerFlags(1).CenterVertical());
    field_ = new wxTextCtrl(parent, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                            wxTE_PROCESS_ENTER | wxTE_RIGHT);
    field_->SetToolTip(Wide(look_.help));
    field_->SetName(Wide(look_.title));
    row->Add(field_, wxSizerFlags(2).CenterVertical());
    row->Add(new wxStaticText(parent, wxID_ANY, Wide(look_.unit)),
             wxSizerFlags().CenterVertical().Border(wxLEFT, PageGap(parent)));
    column.Add(row, wxSizerFlags().Expand().Border(wxTOP, PageGap(parent)));
    field_->Bind(wxEVT_TEXT_ENTER, [finished](wxCommandEvent&) { finished(); });
    field_->Bind(wxEVT_KILL_FOCUS, [finished](wxFocusEvent& event) {
        event.Skip();
        finished();
    });
    // Esc goes on to bring the keyboard back to the picture.
    field_->Bind(wxEVT_CHAR_HOOK, [this, finished](wxKeyEvent& event) {
        event.Skip();
        if (event.GetKeyCode() != WXK_ESCAPE)
            return;
        Forget();
        finished();
    });
}

void NumberField::Show(double value)
{
    shown_ = value;
    const wxString text = Wide(FixedText(value, look_.digits));
    if (!IsChanged() && field_->GetValue() != text)
        field_->ChangeValue(text);
}

bool NumberField::IsChanged() const
{
    return field_->IsModified();
}

std::optional<double> NumberField::Read(std::string& reason)
{
    // An untouched field shows a rounded value.
    if (!IsChanged())
        return shown_;
    const TypedNumber typed = ReadTyped(field_->GetValue().utf8_string(), look_.low, look_.high);
    SetRefused(!typed.value);
    if (!typed.value)
        reason = typed.reason;
    return typed.value;
}

void NumberField::SetRefused(bool refused)
{
    field_->SetForegroundColour(refused ? wxColour(0xC0, 0x1C, 0x28) : wxNullColour);
    field_->Refresh();
}

void NumberField::Forget()
{
    field_->DiscardEdits();
    SetRefused(false);
    Show(shown_);
}

}  // namespace tessara

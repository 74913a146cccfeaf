#include "app/viewer/window/key_dialog.h"

#include "app/viewer/key_help.h"
#include "app/viewer/window/window_text.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

namespace tessara {

namespace {

constexpr int kHighest = 560;

void AddKeys(wxWindow& list, wxFlexGridSizer& rows)
{
    const int gap = list.FromDIP(10);
    for (const KeyHelp& each : AllKeys()) {
        const bool heading = each.keys[0] == '\0';
        auto* left = new wxStaticText(&list, wxID_ANY, wxString::FromUTF8(heading ? each.effect : each.keys));
        if (heading)
            left->SetFont(left->GetFont().Bold());
        rows.Add(left, wxSizerFlags().Border(wxTOP, heading && rows.GetItemCount() > 0 ? gap : 0));
        if (heading)
            rows.AddSpacer(0);
        else
            rows.Add(new wxStaticText(&list, wxID_ANY, wxString::FromUTF8(each.effect)));
    }
}

}  // namespace

void ShowKeys(wxWindow* parent)
{
    wxDialog dialog(parent, wxID_ANY, "Keys and Mouse", wxDefaultPosition, wxDefaultSize,
                    wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER);
    auto* list = new wxScrolledWindow(&dialog, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxVSCROLL);
    auto* rows = new wxFlexGridSizer(2, dialog.FromDIP(wxSize(24, 4)));
    AddKeys(*list, *rows);
    auto* frame = new wxBoxSizer(wxVERTICAL);
    frame->Add(rows, wxSizerFlags().Border(wxALL, dialog.FromDIP(16)));
    list->SetSizer(frame);
    list->SetScrollRate(0, dialog.FromDIP(12));
    const wxSize wanted = frame->GetMinSize();
    const int highest = std::min(dialog.FromDIP(kHighest), parent->GetClientSize().y - dialog.FromDIP(40));
    list->SetMinSize(wxSize(wanted.x + dialog.FromDIP(20), std::min(wanted.y, highest)));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(list, wxSizerFlags(1).Expand());
    column->Add(dialog.CreateSeparatedButtonSizer(wxCLOSE), wxSizerFlags().Expand().Border(wxALL, dialog.FromDIP(8)));
    dialog.SetSizerAndFit(column);
    dialog.SetEscapeId(wxID_CLOSE);
    dialog.SetAffirmativeId(wxID_CLOSE);
    dialog.CentreOnParent();
    dialog.ShowModal();
}

}  // namespace tessara

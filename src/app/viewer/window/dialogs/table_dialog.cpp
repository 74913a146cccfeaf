#include "app/viewer/window/dialogs/table_dialog.h"

#include "app/viewer/window/window_text.h"

#include <wx/dialog.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

namespace tessara {

namespace {

constexpr int kHighest = 620;
constexpr int kWidestText = 460;

void AddRow(wxWindow& list, wxFlexGridSizer& lines, const TableRow& row)
{
    const bool heading = row.left.empty();
    auto* left = new wxStaticText(&list, wxID_ANY, Wide(heading ? row.right : row.left));
    if (heading)
        left->SetFont(left->GetFont().Bold());
    lines.Add(left, wxSizerFlags().Border(wxTOP, heading && lines.GetItemCount() > 0 ? list.FromDIP(10) : 0));
    if (heading) {
        lines.AddSpacer(0);
        return;
    }
    auto* right = new wxStaticText(&list, wxID_ANY, Wide(row.right));
    right->Wrap(list.FromDIP(kWidestText));
    lines.Add(right);
}

}  // namespace

void ShowTable(wxWindow* parent, const std::string& title, const std::vector<TableRow>& rows)
{
    wxDialog dialog(parent, wxID_ANY, Wide(title), wxDefaultPosition, wxDefaultSize,
                    wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER);
    auto* list = new wxScrolledWindow(&dialog, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxVSCROLL);
    auto* lines = new wxFlexGridSizer(2, dialog.FromDIP(wxSize(24, 4)));
    for (const TableRow& row : rows)
        AddRow(*list, *lines, row);
    auto* frame = new wxBoxSizer(wxVERTICAL);
    frame->Add(lines, wxSizerFlags().Border(wxALL, dialog.FromDIP(16)));
    list->SetSizer(frame);
    list->SetScrollRate(0, dialog.FromDIP(12));
    const wxSize wanted = frame->GetMinSize();
    const int highest = std::min(dialog.FromDIP(kHighest), parent->GetClientSize().y - dialog.FromDIP(60));
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

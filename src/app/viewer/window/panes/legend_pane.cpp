#include "app/viewer/window/panes/legend_pane.h"

#include "app/viewer/picture/view_text.h"
#include "app/viewer/window/window_text.h"
#include "platform/system/number_text.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

constexpr int kMargin = 10;
constexpr int kBarHeight = 12;
constexpr int kTick = 4;

}  // namespace

LegendPane::LegendPane(wxWindow* parent) : wxPanel(parent)
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetToolTip("Heights in metres");
    SetMinSize(wxSize(-1, FromDIP(kMargin + kBarHeight + kTick + 4) + GetCharHeight()));
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        Refresh(false);
        event.Skip();
    });
}

void LegendPane::Show(const HeightColors& colors)
{
    if (hasColors_ && colors_ == colors)
        return;
    colors_ = colors;
    hasColors_ = true;
    Refresh(false);
}

void LegendPane::Paint()
{
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(GetBackgroundColour()));
    dc.Clear();
    const int margin = FromDIP(kMargin);
    const wxRect bar(margin, FromDIP(kMargin) / 2, GetClientSize().x - 2 * margin, FromDIP(kBarHeight));
    if (bar.width < 2 || !hasColors_)
        return;
    const HeightTable table(colors_);
    for (int x = 0; x < bar.width; ++x) {
        const HeightTable::Color color = table.At(colors_.low + (colors_.high - colors_.low) * x / (bar.width - 1));
        dc.SetPen(wxPen(wxColour(color[0], color[1], color[2])));
        dc.DrawLine(bar.x + x, bar.y, bar.x + x, bar.GetBottom() + 1);
    }
    PaintMarks(dc, bar);
}

void LegendPane::PaintMarks(wxDC& dc, const wxRect& bar) const
{
    const wxColour ink = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT);
    dc.SetFont(GetFont());
    dc.SetTextForeground(ink);
    dc.SetPen(wxPen(ink));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(bar);
    const double range = colors_.high - colors_.low;
    const int widest = dc.GetTextExtent(Wide(HeightText(colors_.high))).x + FromDIP(10);
    const int most = std::clamp(bar.width / std::max(widest, 1), 2, 8);
    int free = 0;
    for (const double mark : LegendMarks(colors_.low, colors_.high, most)) {
        const int x = bar.x + static_cast<int>(std::lround((mark - colors_.low) / range * (bar.width - 1)));
        dc.DrawLine(x, bar.GetBottom() + 1, x, bar.GetBottom() + 1 + FromDIP(kTick));
        const wxString text = Wide(FixedText(mark, range < 5.0 ? 1 : 0) + " m");
        const int width = dc.GetTextExtent(text).x;
        const int edge = FromDIP(4);
        const int left = std::clamp(x - width / 2, edge, std::max(GetClientSize().x - width - edge, edge));
        if (left < free)
            continue;
        dc.DrawText(text, left, bar.GetBottom() + 1 + FromDIP(kTick));
        free = left + width + FromDIP(4);
    }
}

}  // namespace tessara

#include "app/viewer/window/panes/status_line.h"

#include "app/viewer/picture/view_text.h"
#include "app/viewer/viewer.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/window_text.h"
#include "platform/system/number_text.h"

#include <wx/frame.h>
#include <wx/statusbr.h>

#include <algorithm>

namespace tessara {

namespace {

constexpr int kGap = 16;  // around a text
constexpr int kMessageRoom = 40;
constexpr int kMessageTime = 8000;  // milliseconds
constexpr auto kBetweenFigures = std::chrono::milliseconds(200);

wxString Milliseconds(double time)
{
    return Wide(FixedText(time, 1));
}

}  // namespace

StatusLine::StatusLine(wxFrame& frame)
    : bar_(*frame.CreateStatusBar(1 + static_cast<int>(kTexts), wxSTB_ELLIPSIZE_END | wxSTB_SHOW_TIPS))
{
    texts_.fill({wxString()});
    bar_.Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        Fit();
        event.Skip();
    });
    messageTimer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { bar_.SetStatusText({}); });
}

void StatusLine::Tell(const std::string& message)
{
    bar_.SetStatusText(Wide(message));
    messageTimer_.StartOnce(kMessageTime);
}

void StatusLine::ShowPlace(const Viewer& viewer)
{
    const wxString place = Wide(viewer.HasTerrain() ? viewer.Readout().Place() : std::string());
    // Coordinates of the file, then metres in brackets.
    const int bracket = place.Find('(');
    texts_[0] = {place, bracket > 0 ? place.Left(static_cast<std::size_t>(bracket)).Trim() : place};
    const wxString height = Wide(viewer.HasTerrain() ? viewer.Readout().Height() : std::string());
    texts_[1] = {height};
    Fit();
}

void StatusLine::ShowFigures(const Viewer& viewer, const PicturePane& picture)
{
    const auto now = std::chrono::steady_clock::now();
    if (viewer.Picture().WantsFrame() && now - lastFigures_ < kBetweenFigures)
        return;
    lastFigures_ = now;
    ShowPlace(viewer);
    const FrameFigures& figures = picture.Figures();
    const wxString pace = Wide(FixedText(picture.FramesPerSecond(), 0)) + " fps";
    const wxString triangles = Wide(CountText(figures.triangles)) + " triangles";
    const wxString nodes = figures.activeNodes > 0 ? Wide(CountText(figures.activeNodes)) + " nodes" : wxString();
    const wxString update = Milliseconds(figures.update);
    const wxString draw = Milliseconds(figures.draw);
    const auto join = [](std::initializer_list<wxString> parts) {
        wxString joined;
        for (const wxString& part : parts) {
            if (!part.empty())
                joined += (joined.empty() ? wxString() : wxString("   ")) + part;
        }
        return joined;
    };
    texts_[2] = {join({pace, triangles, nodes, "update " + update + " ms", "draw " + draw + " ms"}),
                 join({pace, triangles, nodes, update + " + " + draw + " ms"}), join({pace, triangles}), pace};
    Fit();
}

int StatusLine::WidthOf(std::size_t text) const
{
    const wxString& form = texts_[text][form_[text]];
    return form.empty() ? bar_.FromDIP(kGap) : bar_.GetTextExtent(form).x + bar_.FromDIP(kGap);
}

/// Shortens the figures first, then the place.
void StatusLine::Fit()
{
    const int room = bar_.GetClientSize().x - bar_.FromDIP(kMessageRoom);
    form_ = {};
    const auto total = [&] { return WidthOf(0) + WidthOf(1) + WidthOf(2); };
    for (const std::size_t text : {2u, 0u, 2u, 2u}) {
        if (total() > room && form_[text] + 1 < texts_[text].size())
            ++form_[text];
    }
    Put();
}

/// A field that has grown keeps its width, so that the texts don't jump about.
void StatusLine::Put()
{
    const int room = bar_.GetClientSize().x - bar_.FromDIP(kMessageRoom);
    int sum = 0;
    for (std::size_t i = 0; i < kTexts; ++i) {
        widest_[i] = std::max(widest_[i], WidthOf(i));
        sum += widest_[i];
    }
    if (sum > room) {
        for (std::size_t i = 0; i < kTexts; ++i)
            widest_[i] = WidthOf(i);
    }
    const int widths[] = {-1, widest_[0], widest_[1], widest_[2]};
    bar_.SetStatusWidths(static_cast<int>(std::size(widths)), widths);
    for (std::size_t i = 0; i < kTexts; ++i) {
        const wxString& text = texts_[i][form_[i]];
        if (bar_.GetStatusText(static_cast<int>(i) + 1) != text)
            bar_.SetStatusText(text, static_cast<int>(i) + 1);
    }
}

}  // namespace tessara

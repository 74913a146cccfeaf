#include "app/viewer/window/panes/pane_splitter.h"

#include <algorithm>

namespace tessara {

PaneSplitter::PaneSplitter(wxWindow* parent, double most)
    : wxSplitterWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_LIVE_UPDATE), most_(most)
{
    SetSashGravity(1.0);
    Bind(wxEVT_SPLITTER_SASH_POS_RESIZE, [this](wxSplitterEvent& event) {
        if (event.GetEventObject() == this)
            event.SetSashPosition(PositionIn(event.GetNewSize()));
        else
            event.Skip();
    });
    Bind(wxEVT_SPLITTER_SASH_POS_CHANGING, [this](wxSplitterEvent& event) {
        if (event.GetEventObject() == this)
            second_ = std::max(GetWindowSize() - event.GetSashPosition() - GetSashSize(), GetMinimumPaneSize());
        else
            event.Skip();
    });
}

void PaneSplitter::Show(wxSplitMode mode, wxWindow* first, wxWindow* second, int size)
{
    second_ = std::max(size, GetMinimumPaneSize());
    const wxSize whole = GetClientSize();
    const int position = PositionIn(mode == wxSPLIT_VERTICAL ? whole.x : whole.y);
    if (mode == wxSPLIT_VERTICAL)
        SplitVertically(first, second, position);
    else
        SplitHorizontally(first, second, position);
}

/// Where the bar is to be in a whole of that size.
int PaneSplitter::PositionIn(int whole) const
{
    const int second = std::max(std::min(second_, static_cast<int>(whole * most_)), GetMinimumPaneSize());
    return std::max(whole - second - GetSashSize(), GetMinimumPaneSize());
}

}  // namespace tessara

#pragma once

#include <wx/splitter.h>

namespace tessara {

/// Two panes with a bar between them. The second one keeps the size that the user gave it, whatever sizes the window
/// goes through, as long as the first one keeps its share.
class PaneSplitter final : public wxSplitterWindow {
public:
    /// \param most share of the whole that the second pane takes at most, unless the user drags the bar further
    PaneSplitter(wxWindow* parent, double most);

    /// Shows both panes. \param size width or height of the second one in pixels
    void Show(wxSplitMode mode, wxWindow* first, wxWindow* second, int size);

    /// Width or height of the second pane in pixels, as it was wished for last.
    int SecondSize() const noexcept { return second_; }

private:
    int PositionIn(int whole) const;

    double most_;
    int second_ = 0;
};

}  // namespace tessara

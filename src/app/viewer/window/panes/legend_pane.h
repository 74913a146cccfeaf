#pragma once

#include "app/view/height_colors.h"

#include <wx/panel.h>

namespace tessara {

/// The colours of the heights, from the first to the last, with heights in metres below.
class LegendPane final : public wxPanel {
public:
    explicit LegendPane(wxWindow* parent);

    void Show(const HeightColors& colors);

private:
    void Paint();
    void PaintMarks(wxDC& dc, const wxRect& bar) const;

    HeightColors colors_;
    bool hasColors_ = false;
};

}  // namespace tessara

#pragma once

#include <wx/string.h>

#include <array>
#include <vector>

class wxStatusBar;

namespace tessara {

class Viewer;
struct FrameFigures;

/// The texts at the lower edge of the window: the place under the mouse, its height, and what drawing took. Each gets
/// as long a form as there is room for.
class StatusTexts {
public:
    explicit StatusTexts(wxStatusBar& bar);

    /// What the mouse points at has changed.
    void ShowPlace(const Viewer& viewer);

    /// A frame was drawn.
    void ShowFigures(const FrameFigures& figures, double framesPerSecond);

    /// The bar has another width.
    void Fit();

    static constexpr int kMessage = 0;  ///< the bar's own field, for what menus do

private:
    static constexpr std::size_t kTexts = 3;
    using Forms = std::vector<wxString>;  // of one text, from long to short

    int WidthOf(std::size_t text) const;
    void Put();

    wxStatusBar& bar_;
    std::array<Forms, kTexts> texts_;
    std::array<std::size_t, kTexts> form_{};
    std::array<int, kTexts> widest_{};
};

}  // namespace tessara

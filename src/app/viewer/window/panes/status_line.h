#pragma once

#include <wx/string.h>
#include <wx/timer.h>

#include <array>
#include <chrono>
#include <string>
#include <vector>

class wxFrame;
class wxStatusBar;

namespace tessara {

class PicturePane;
class Viewer;

/// The lower edge of the window: a message that goes after a while, the place under the mouse, its height, and what
/// drawing took. Each gets as long a form as there is room for.
class StatusLine {
public:
    /// Gives the window its status bar. \param frame outlives this object
    explicit StatusLine(wxFrame& frame);

    /// Tells what was done. It stays for as long as it takes to read; an empty text takes it away at once.
    void Tell(const std::string& message);

    /// What the mouse points at has changed.
    void ShowPlace(const Viewer& viewer);

    /// A frame was drawn. What changes faster than anybody reads is left out until the picture is final.
    void ShowFigures(const Viewer& viewer, const PicturePane& picture);

private:
    static constexpr std::size_t kTexts = 3;
    using Forms = std::vector<wxString>;  // of one text, from long to short

    int WidthOf(std::size_t text) const;
    void Fit();
    void Put();

    wxStatusBar& bar_;
    wxTimer messageTimer_;
    std::chrono::steady_clock::time_point lastFigures_;
    std::array<Forms, kTexts> texts_;
    std::array<std::size_t, kTexts> form_{};
    std::array<int, kTexts> widest_{};
};

}  // namespace tessara

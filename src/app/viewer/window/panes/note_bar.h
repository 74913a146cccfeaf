#pragma once

#include <wx/infobar.h>

#include <string>

namespace tessara {

/// A bar at the upper edge of the window with what is to be known of the open file, until the user closes it.
class NoteBar final : public wxInfoBar {
public:
    explicit NoteBar(wxWindow* parent);

    /// Shows a text; an empty one closes the bar.
    void Tell(const std::string& text);
};

}  // namespace tessara

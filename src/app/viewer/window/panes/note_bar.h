#pragma once

#include <wx/infobar.h>

#include <functional>
#include <string>

namespace tessara {

/// A bar at the upper edge of the window with what is to be known of the open file, until the user closes it.
class NoteBar final : public wxInfoBar {
public:
    /// \param closed the bar has gone: who had the keyboard in it has it no more
    NoteBar(wxWindow* parent, std::function<void()> closed);

    /// Shows a text; an empty one closes the bar.
    void Tell(const std::string& text);

    void Dismiss() override;

private:
    std::function<void()> closed_;
};

}  // namespace tessara

#include "app/viewer/window/panes/note_bar.h"

#include "app/viewer/window/window_text.h"

#include <utility>

namespace tessara {

NoteBar::NoteBar(wxWindow* parent, std::function<void()> closed) : wxInfoBar(parent), closed_(std::move(closed))
{
    SetName("Notes");
}

void NoteBar::Tell(const std::string& text)
{
    if (text.empty())
        Dismiss();
    else
        ShowMessage(Wide(text), wxICON_INFORMATION);
}

void NoteBar::Dismiss()
{
    const bool shown = IsShown();
    wxInfoBar::Dismiss();
    // The toolkit looks for another place for the keyboard first.
    if (shown)
        CallAfter(closed_);
}

}  // namespace tessara

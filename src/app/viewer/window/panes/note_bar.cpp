#include "app/viewer/window/panes/note_bar.h"

#include "app/viewer/window/window_text.h"

namespace tessara {

NoteBar::NoteBar(wxWindow* parent) : wxInfoBar(parent)
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

}  // namespace tessara

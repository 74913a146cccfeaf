#pragma once

#include "platform/ui/dialog_template.h"

#include <wx/chartype.h>

#include <functional>

class wxRect;
class wxString;
class wxWindow;

namespace tessara {

struct Image;

/// Makes the window of a control. \param place in pixels of the parent \return null for the kinds that the dialog makes
/// itself: Spin and Viewport
wxWindow* MakeControl(wxWindow* parent, const ControlTemplate& form, const wxRect& place);

/// Whether a control lies under the others, as frames and pictures do.
bool IsBackdrop(ControlKind kind) noexcept;

/// The row of a list box that has the focus, -1 for none.
int FocusedRow(const wxWindow& listBox);

/// Gives the focus to the next row, after the one that has it, that begins with a letter in either case, and selects it
/// alone. \return false where there is none
bool GoToListRow(wxWindow& listBox, wxChar letter);

/// Selects or deselects a row and leaves the others alone; a list without a focused row gets one.
void SelectListRow(wxWindow& listBox, int row, bool select);

}  // namespace tessara

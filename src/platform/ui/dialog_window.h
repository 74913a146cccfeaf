#pragma once

#include "image.h"
#include "window_types.h"

#include <string>
#include <vector>

namespace tessara {

class DeviceContext;

/// The dialog that a window system shows, and its controls by their ids; the id 0 is the dialog itself. What is asked
/// of a control that isn't there does nothing and answers with nothing. Texts are UTF-8. None of these calls makes the
/// window system send an event, but for SetFocus and Post.
///
/// Belongs to the window system, from DialogEvents::Created until DialogEvents::Dispatch(WM_DESTROY) has returned.
class DialogWindow {
public:
    virtual std::string GetText(int control) const = 0;
    virtual void SetText(int control, const std::string& text) = 0;
    virtual void Enable(int control, bool enable) = 0;
    virtual bool IsEnabled(int control) const = 0;
    virtual RECT GetRect(int control) const = 0;

    /// Has the control drawn again, soon. The dialog itself stands for all of its controls.
    virtual void Invalidate(int control) = 0;

    /// Of a check box.
    virtual void SetChecked(int control, bool checked) = 0;
    virtual bool IsChecked(int control) const = 0;

    /// The control that the keyboard goes to, 0 for none of this dialog.
    virtual int GetFocus() const = 0;
    virtual void SetFocus(int control) = 0;

    /// Whether this dialog is the window that the user works in.
    virtual bool IsActive() const = 0;

    /// Rows of a drop list or a list box, counted from 0; -1 is no row.
    virtual int AddRow(int control, const std::string& text) = 0;
    virtual void ClearRows(int control) = 0;
    virtual int RowCount(int control) const = 0;
    virtual std::string RowText(int control, int row) const = 0;

    /// The row that a drop list shows, or the row of a list box that has the focus.
    virtual int CurrentRow(int control) const = 0;

    /// Of a drop list.
    virtual void SetCurrentRow(int control, int row) = 0;

    /// Of a list box, in ascending order. Selecting a row moves the focus to it where no row has it.
    virtual std::vector<int> SelectedRows(int control) const = 0;
    virtual void SelectRow(int control, int row, bool select) = 0;

    /// Whether an edit field was changed by the user, or as SetModified said last.
    virtual bool IsModified(int control) const = 0;
    virtual void SetModified(int control, bool modified) = 0;

    /// Puts a picture beside the text of a button.
    virtual void SetImage(int control, const Image& image) = 0;

    /// Gives the dialog tooltips. \return false where the window system has none
    virtual bool CreateToolTip() = 0;

    /// The message that Dispatch gets when a link in a tooltip is clicked. First parameter: a pointer to the
    /// zero-terminated text of the link, valid during the call.
    virtual void SetToolTipLink(UINT message) = 0;

    /// \param markup text with the marks that CPPToolTip names
    virtual void AddToolTip(int control, const std::string& markup) = 0;

    /// Tooltips show themselves on account of the messages that come here.
    virtual void RelayToToolTip(const InputMessage& message) = 0;

    /// Shows a text in the place of a tooltip, at once.
    virtual void ShowHelp(const std::string& markup) = 0;

    /// The surface of a control for OpenGL. It stays the window's. \return null for a control that isn't a Viewport,
    /// and where the window system has no OpenGL
    virtual DeviceContext* GetDeviceContext(int control) = 0;

    /// Has Dispatch called with this message after the running event.
    virtual void Post(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// Ends the modal loop with a result after the running event. A dialog that isn't shown yet never is.
    virtual void End(int result) = 0;

    virtual NativeWindow Native() const = 0;

protected:
    ~DialogWindow() = default;
};

/// What a dialog hears of its window, on the thread of RunDialog.
class DialogEvents {
public:
    /// The window and its controls exist and are about to be shown. \return true to give the first tab stop the focus
    virtual bool Created(DialogWindow& window) = 0;

    /// A key or a move of the mouse is about to go to a control. \return true where the dialog took it
    virtual bool Translate(InputMessage& message) = 0;

    /// WM_COMMAND: a control's notification, see MakeCommand. BN_CLICKED of IDCANCEL also comes for the Escape key and
    /// the title bar's close button; the Return key clicks the button that has the focus, or else the default one.
    /// WM_PAINT: the dialog must be drawn; the window system has drawn everything but the viewports.
    /// WM_DESTROY: the window goes; it and its controls still exist.
    /// Every other message: what was posted.
    virtual LRESULT Dispatch(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// An arrow of a spin control was pressed. \param steps positive for up
    virtual void Step(int control, int steps) = 0;

protected:
    ~DialogEvents() = default;
};

}  // namespace tessara

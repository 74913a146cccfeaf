#pragma once

#include "platform/ui/cwnd.h"

/// Tooltips of a dialog's controls. Their texts carry marks: <h5>heading</h5>, <hr color=gray> for a line, <br> for a
/// new line, and <a msg="N">link</a>.
class CPPToolTip {
public:
    /// \param dialog an open dialog \param balloon the window system's own look is taken in either case
    /// \return FALSE where there are no tooltips; everything else then does nothing
    BOOL Create(CWnd* dialog, BOOL balloon = TRUE);

    /// A click on a link sends `message` to the dialog, which is the one of Create. First parameter: a pointer to the
    /// zero-terminated text of the link's msg attribute, valid during the call.
    void SetCallbackHyperlink(CWnd* dialog, UINT message, LPARAM reserved);

    /// Shows a text of the module's string table over a control.
    void AddTool(CWnd* control, UINT textId, const RECT* area, UINT toolId);

    /// Tooltips react to the messages that come here.
    void RelayEvent(const tessara::InputMessage* message);

    /// Shows a text at once.
    void ShowHelpTooltip(const std::string& text);

private:
    /// The open dialog of Create, null without one.
    tessara::DialogWindow* Window() const;

    CWnd* m_dialog = nullptr;  // of Create
};

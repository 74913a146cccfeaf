#pragma once

#include "platform/ui/cimage_list.h"
#include "platform/ui/cwnd.h"

class CButton : public CWnd {};

/// A button with an icon beside its text.
class CXTButton : public CButton {
public:
    /// \param size the icon's in pixels; an icon of another size is cut or padded to it
    /// \param icon null takes the icon away \param second for buttons with two states; not shown
    virtual void SetIcon(SIZE size, tessara::IconPicture icon, tessara::IconPicture second = nullptr,
                         BOOL redraw = TRUE);

    /// \param style looks of the button beyond the window system's own; kept, and not shown
    void SetXButtonStyle(DWORD style, BOOL redraw = TRUE);
    DWORD GetXButtonStyle() const noexcept { return m_style; }

private:
    DWORD m_style = 0;
};

#include "platform/ui/cedit.h"
#include "platform/ui/cxt_button.h"
#include "platform/ui/dialog_window.h"

#include <algorithm>

namespace {

/// The upper left part of a picture, with transparent pixels around where it is smaller.
tessara::Image CutTo(const tessara::Image& image, int width, int height)
{
    tessara::Image result(width, height);
    const int columns = std::min(width, image.width);
    for (int y = 0; y < std::min(height, image.height); ++y)
        std::copy_n(image.At(0, y), columns * 4, result.At(0, y));
    return result;
}

}  // namespace

BOOL CEdit::GetModify() const
{
    return m_window && m_window->IsModified(m_control) ? TRUE : FALSE;
}

void CEdit::SetModify(BOOL modified)
{
    if (m_window)
        m_window->SetModified(m_control, modified != FALSE);
}

void CXTButton::SetIcon(SIZE size, tessara::IconPicture icon, tessara::IconPicture, BOOL redraw)
{
    if (!m_window)
        return;
    m_window->SetImage(m_control, icon ? CutTo(*icon, size.cx, size.cy) : tessara::Image());
    if (redraw)
        Invalidate();
}

void CXTButton::SetXButtonStyle(DWORD style, BOOL redraw)
{
    m_style = style;
    if (redraw)
        Invalidate();
}

#include "platform/ui/cimage_list.h"

#include "platform/ui/resource_table.h"

#include <algorithm>

BOOL CBitmap::LoadBitmap(UINT id)
{
    const tessara::BitmapResource* resource = tessara::BitmapTable::Find(id);
    if (!resource)
        return FALSE;
    m_picture = resource->make();
    return TRUE;
}

BOOL CImageList::Create(int cx, int cy, UINT, int initial, int)
{
    if (cx <= 0 || cy <= 0)
        return FALSE;
    m_width = cx;
    m_height = cy;
    m_icons.clear();
    m_icons.reserve(static_cast<std::size_t>(std::max(initial, 0)));
    return TRUE;
}

int CImageList::Add(const CBitmap* bitmap, COLORREF mask)
{
    if (!bitmap || m_width == 0 || bitmap->Picture().height < m_height)
        return -1;
    const tessara::Image& strip = bitmap->Picture();
    const int first = GetImageCount();
    for (int left = 0; left + m_width <= strip.width; left += m_width) {
        const auto icon = std::make_shared<tessara::Image>(m_width, m_height);
        for (int y = 0; y < m_height; ++y) {
            for (int x = 0; x < m_width; ++x) {
                const std::uint8_t* pixel = strip.At(left + x, y);
                if (RGB(pixel[0], pixel[1], pixel[2]) != mask)
                    std::copy_n(pixel, 4, icon->At(x, y));
            }
        }
        m_icons.push_back(icon);
    }
    return first;
}

tessara::IconPicture CImageList::ExtractIcon(int index) const
{
    return index >= 0 && index < GetImageCount() ? m_icons[static_cast<std::size_t>(index)] : nullptr;
}

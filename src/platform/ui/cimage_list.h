#pragma once

#include "platform/ui/image.h"
#include "platform/ui/window_types.h"

#include <memory>
#include <vector>

/// An icon; it lives as long as somebody has it.
namespace tessara {
using IconPicture = std::shared_ptr<const Image>;
}

/// A bitmap of the module's resources.
class CBitmap {
public:
    /// \return FALSE for an unknown id
    BOOL LoadBitmap(UINT id);

    /// Empty until something is loaded.
    const tessara::Image& Picture() const noexcept { return m_picture; }

private:
    tessara::Image m_picture;
};

inline constexpr UINT ILC_MASK = 0x0001;
inline constexpr UINT ILC_COLOR24 = 0x0018;

/// Icons of one size.
class CImageList {
public:
    /// \param cx,cy size of an icon in pixels \param flags colours and mask; every list has both here
    /// \param initial,grow expected number of icons, and by how many more the list grows
    BOOL Create(int cx, int cy, UINT flags, int initial, int grow);

    /// Cuts a strip of icons that lie side by side; what is left over at its right end is dropped.
    /// \param mask this colour becomes transparent \return the index of the first new icon, -1 on a failure
    int Add(const CBitmap* bitmap, COLORREF mask);

    int GetImageCount() const noexcept { return static_cast<int>(m_icons.size()); }

    /// \return null for an icon that isn't there
    tessara::IconPicture ExtractIcon(int index) const;

private:
    int m_width = 0;
    int m_height = 0;
    std::vector<tessara::IconPicture> m_icons;
};

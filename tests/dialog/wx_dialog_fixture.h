#pragma once

#include "dialog/detail_resources.h"
#include "dialog/terrain_behind.h"
#include "platform/com/bstr.h"
#include "platform/ui/window_system.h"
#include "platform/ui/wx_user.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/dialog.h>

#include <array>
#include <functional>
#include <utility>

namespace tessara::test {

using Rgb = std::array<int, 3>;

inline Rgb ScreenPixel(int x, int y)
{
    GdkPixbuf* shot = gdk_pixbuf_get_from_window(gdk_get_default_root_window(), x, y, 1, 1);
    const guchar* pixel = gdk_pixbuf_get_pixels(shot);
    const Rgb color = {pixel[0], pixel[1], pixel[2]};
    g_object_unref(shot);
    return color;
}

inline Rgb MiddleOf(int control)
{
    const wxRect rect = wxWindow::FindWindowById(control)->GetScreenRect();
    return ScreenPixel(rect.x + rect.width / 2, rect.y + rect.height / 2);
}

/// The dialog on the desktop, before a terrain of the real component, used with mouse and keyboard.
class WxDialogTest : public testing::Test {
protected:
    WxDialogTest() { EXPECT_TRUE(CurrentWindowSystem().CanOpenWindows()) << "no display answers"; }

    HRESULT Run(std::function<void(WxUser&, wxDialog&)> act)
    {
        const WhenModal user([&](wxDialog& dialog) {
            WxUser hands(dialog);
            act(hands, dialog);
        });
        const HRESULT result = terrain.Surface().TextureDetailDlg();
        EXPECT_TRUE(terrain.HasContext());
        return result;
    }

    std::pair<float, float> Tiling()
    {
        std::pair<float, float> tiling;
        terrain.Surface().GetTextureDetailTiling(&tiling.first, &tiling.second);
        return tiling;
    }

    std::string Key()
    {
        BstrHolder key;
        BstrHolder table;
        terrain.Surface().GetDBTextureDetailName(key.Out(), table.Out());
        return key.Narrow();
    }

    TerrainBehind terrain;
};

}  // namespace tessara::test

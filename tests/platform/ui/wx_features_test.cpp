#include "platform/gl/current_context.h"
#include "platform/gl/gl.h"
#include "platform/gl/offscreen_context.h"
#include "platform/ui/cclient_dc.h"
#include "platform/ui/device_context.h"
#include "platform/ui/sample_dialog.h"
#include "platform/ui/window_system.h"
#include "platform/ui/wx/tool_tip_markup.h"
#include "platform/ui/wx_user.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/html/htmlwin.h>
#include <wx/popupwin.h>
#include <wx/uiaction.h>

#include <array>
#include <clocale>
#include <set>

namespace tessara::test {

namespace {

using testing::Contains;
using testing::HasSubstr;

class WxFeatures : public testing::Test {
protected:
    WxFeatures() { EXPECT_TRUE(CurrentWindowSystem().CanOpenWindows()) << "no display answers"; }

    void Run(std::function<void(WxUser&)> act)
    {
        const WhenModal user([&](wxDialog& dialog) {
            WxUser hands(dialog);
            act(hands);
        });
        dialog_.DoModal();
    }

    SampleDialog dialog_;
};

std::array<int, 3> MiddlePixel(const DeviceContext& device)
{
    unsigned char pixel[3] = {};
    glReadPixels(device.Width() / 2, device.Height() / 2, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel);
    return {pixel[0], pixel[1], pixel[2]};
}

std::array<int, 3> ScreenPixel(const RECT& rect)
{
    GdkPixbuf* shot = gdk_pixbuf_get_from_window(gdk_get_default_root_window(), (rect.left + rect.right) / 2,
                                                 (rect.top + rect.bottom) / 2, 1, 1);
    const guchar* pixel = gdk_pixbuf_get_pixels(shot);
    const std::array<int, 3> color = {pixel[0], pixel[1], pixel[2]};
    g_object_unref(shot);
    return color;
}

TEST_F(WxFeatures, StartingTheToolkitLeavesTheHostsLocaleAlone)
{
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST_F(WxFeatures, AViewportDrawsBesideTheHostsContextAndGivesItBack)
{
    OffscreenContext host;
    const CurrentContext hosts = CurrentContext::Take();
    ASSERT_TRUE(hosts);
    DeviceContext* device = nullptr;
    int paints = 0;
    dialog_.atStart = [&](SampleDialog& dialog) {
        device = CClientDC(dialog.GetDlgItem(kViewport)).GetSafeHdc();
        ASSERT_NE(device, nullptr);
        EXPECT_EQ(CClientDC(dialog.GetDlgItem(kNumber)).GetSafeHdc(), nullptr);
        EXPECT_FALSE(device->MakeCurrent());
        ASSERT_TRUE(device->CreateGl());
        EXPECT_FALSE(device->CreateGl());
        ASSERT_TRUE(device->MakeCurrent());
        EXPECT_FALSE(CurrentContext::Take() == hosts);
        EXPECT_NE(glGetString(GL_VERSION), nullptr);
        device->ReleaseCurrent();
        EXPECT_TRUE(CurrentContext::Take() == hosts);
    };
    dialog_.whenPainted = [&](SampleDialog&) {
        ++paints;
        EXPECT_TRUE(CurrentContext::Take() == hosts);
        ASSERT_TRUE(device->MakeCurrent());
        glViewport(0, 0, device->Width(), device->Height());
        glClearColor(0.0f, 1.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        EXPECT_EQ(MiddlePixel(*device), (std::array<int, 3>{0, 255, 0}));
        device->ReleaseCurrent();
        device->SwapBuffers();
        EXPECT_TRUE(CurrentContext::Take() == hosts);
    };
    dialog_.atEnd = [&](SampleDialog&) {
        EXPECT_TRUE(CurrentContext::Take() == hosts);
        ASSERT_TRUE(device->MakeCurrent());
        device->DestroyGl();
        EXPECT_TRUE(CurrentContext::Take() == hosts);
    };
    RECT rect{};
    std::array<int, 3> seen{};
    Run([&](WxUser& user) {
        dialog_.GetDlgItem(kViewport)->GetWindowRect(&rect);
        user.Rest();
        seen = ScreenPixel(rect);
        EXPECT_EQ(rect.right - rect.left, device->Width());
        CurrentContext::Clear();  // as another window of the program may leave it
        dialog_.Invalidate();
        user.Wait(100);
        EXPECT_GE(paints, 2);
    });
    EXPECT_EQ(seen, (std::array<int, 3>{0, 255, 0}));
    EXPECT_TRUE(CurrentContext::Take() == hosts);
}

wxPopupWindow* FindTip()
{
    for (wxWindow* window : wxTopLevelWindows) {
        for (wxWindow* child : window->GetChildren()) {
            auto* popup = dynamic_cast<wxPopupWindow*>(child);
            if (popup && popup->IsShown())
                return popup;
        }
    }
    return nullptr;
}

TEST_F(WxFeatures, ATooltipComesBesideTheDialogAndItsLinkReachesIt)
{
    Run([&](WxUser& user) {
        wxUIActionSimulator hands;
        wxWindow* number = wxWindow::FindWindowById(kNumber);
        user.MoveTo(*wxWindow::FindWindowById(kList), 0.5, 0.5);
        user.MoveTo(*number, 0.5, 0.4);
        user.MoveTo(*number, 0.5, 0.5);
        EXPECT_EQ(FindTip(), nullptr);
        user.Wait(900);
        ASSERT_NE(FindTip(), nullptr);
        const wxRect dialog = wxGetTopLevelParent(number)->GetScreenRect();
        EXPECT_FALSE(FindTip()->GetScreenRect().Intersects(dialog)) << "it covers what may be clicked next";
        user.Click(kCheck);
        EXPECT_THAT(dialog_.events, Contains("check"));
        EXPECT_EQ(FindTip(), nullptr);
        user.MoveTo(*number, 0.5, 0.5);
        user.Wait(900);
        wxPopupWindow* tip = FindTip();
        ASSERT_NE(tip, nullptr);
        auto* page = static_cast<wxHtmlWindow*>(tip->GetChildren().front());
        EXPECT_THAT(page->ToText().utf8_string(), HasSubstr("A number. More..."));

        const wxHtmlContainerCell* cells = page->GetInternalRepresentation();
        wxHtmlTerminalCellsInterator link(cells->GetFirstTerminal(), cells->GetLastTerminal());
        while (link && !link->GetLink())
            ++link;
        ASSERT_TRUE(static_cast<bool>(link));
        user.MoveTo(*wxWindow::FindWindowById(kList), 0.9, 0.2);  // on the way
        const wxPoint place = page->ClientToScreen(link->GetAbsPos() + wxPoint(5, 5));
        hands.MouseMove(place.x, place.y);
        user.Rest();
        EXPECT_TRUE(tip->IsShown());
        hands.MouseClick();
        user.Wait(100);
        EXPECT_THAT(dialog_.events, Contains("link 1"));

        dialog_.toolTip.ShowHelpTooltip("<h5>Long</h5> help");
        user.Rest();
        EXPECT_THAT(page->ToText().utf8_string(), HasSubstr("Long help"));
        user.MoveTo(*wxWindow::FindWindowById(kList), 0.5, 0.9);
        user.Wait(1500);
        EXPECT_EQ(FindTip(), nullptr);
    });
}

TEST_F(WxFeatures, AHeldArrowKeepsItsNumberInSight)
{
    std::set<std::string> seen;
    dialog_.whenStepped = [&seen](SampleDialog& dialog) {
        // A terrain that takes longer to draw than the arrow waits before its next step.
        RECT rect{};
        dialog.number.GetWindowRect(&rect);
        GdkPixbuf* shot = gdk_pixbuf_get_from_window(gdk_get_default_root_window(), rect.left, rect.top,
                                                     rect.right - rect.left, rect.bottom - rect.top);
        seen.emplace(reinterpret_cast<const char*>(gdk_pixbuf_get_pixels(shot)), gdk_pixbuf_get_byte_length(shot));
        g_object_unref(shot);
        wxMilliSleep(150);
    };
    Run([](WxUser& user) {
        user.MoveTo(*wxWindow::FindWindowById(kSpin), 0.5, 0.25);
        wxUIActionSimulator().MouseDown();
        user.Wait(2500);
        wxUIActionSimulator().MouseUp();
        user.Rest();
    });
    EXPECT_GT(seen.size(), 4u);
}

TEST_F(WxFeatures, AButtonTakesAnIconBesideItsText)
{
    dialog_.atStart = [](SampleDialog& dialog) {
        CBitmap strip;
        strip.LoadBitmap(kSampleStrip);
        CImageList icons;
        icons.Create(16, 16, ILC_COLOR24 | ILC_MASK, 4, 1);
        icons.Add(&strip, RGB(236, 233, 216));
        dialog.button.SetIcon({16, 16}, icons.ExtractIcon(1));
    };
    bool red = false;
    Run([&](WxUser& user) {
        user.Rest();
        RECT rect{};
        dialog_.button.GetWindowRect(&rect);
        for (LONG x = rect.left; x < rect.right; ++x) {
            const LONG y = (rect.top + rect.bottom) / 2;
            red = red || ScreenPixel({x, y, x, y}) == std::array<int, 3>{200, 0, 0};
        }
        EXPECT_EQ(dialog_.button.GetWindowText(), "Import");
    });
    EXPECT_TRUE(red);
}

TEST(ToolTipMarkup, BecomesAPageWithItsMarksAndNothingElse)
{
    EXPECT_EQ(
        ToolTipPage("<h5>Head</h5>\n<hr color=gray><br>a < b & c <a msg=\"1\">More...</a><script>", "#1", "#2", "#3"),
        "<html><body bgcolor=\"#2\" text=\"#1\"><b>Head</b>\n<hr>a &lt; b &amp; c <a href=\"1\"><font "
        "color=\"#3\">More...</font></a>&lt;script&gt;</body></html>");
    EXPECT_THAT(ToolTipPage("<a msg=\"open", "", "", ""), HasSubstr("&lt;a msg=&quot;open"));
}

}  // namespace

}  // namespace tessara::test

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

using namespace testing;

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

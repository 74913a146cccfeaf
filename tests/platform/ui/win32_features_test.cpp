#include "platform/gl/gl.h"
#include "platform/gl/offscreen_context.h"
#include "platform/ui/cclient_dc.h"
#include "platform/ui/device_context.h"
#include "platform/ui/win32_user.h"
#include "platform/ui/window_system.h"

#include <gmock/gmock.h>

#include <array>

namespace tessara::test {

namespace {

using namespace testing;

TEST(Win32Dialog, ArrowsStepTheirFieldAndLeaveTheFocusWhereItWas)
{
    SampleDialog dialog;
    int focused = 0;
    dialog.atStart = [](SampleDialog& self) { self.number.SetWindowText("4.00"); };
    const WhenModal user([&](ModalWindow& window) {
        User hands(window);
        hands.Click(kPlainEdit);
        dialog.events.clear();
        hands.StepUp(kSpin);
        focused = dialog.GetFocus() ? dialog.GetFocus()->GetDlgCtrlID() : -1;
    });
    dialog.DoModal();
    EXPECT_EQ(focused, kPlainEdit);
    EXPECT_THAT(dialog.events, Contains(StartsWith("stepped 303 to 5")));
}

TEST(Win32Dialog, AViewportTakesWhatOpenGlDrawsAndGivesTheHostsContextBack)
{
    const OffscreenContext host;
    HGLRC own = wglGetCurrentContext();
    SampleDialog dialog;
    std::array<unsigned char, 4> seen = {};
    bool hostsAgain = false;
    dialog.atStart = [&](SampleDialog& self) {
        DeviceContext* surface = CClientDC(self.GetDlgItem(kViewport)).GetSafeHdc();
        ASSERT_NE(surface, nullptr);
        EXPECT_TRUE(surface->CreateGl());
        EXPECT_FALSE(surface->CreateGl()) << "it has one";
    };
    const WhenModal user([&](ModalWindow&) {
        DeviceContext* surface = CClientDC(dialog.GetDlgItem(kViewport)).GetSafeHdc();
        ASSERT_TRUE(surface->MakeCurrent());
        EXPECT_NE(wglGetCurrentContext(), own);
        glClearColor(0.0f, 1.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        glReadPixels(5, 5, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, seen.data());
        surface->SwapBuffers();
        surface->ReleaseCurrent();
        hostsAgain = wglGetCurrentContext() == own;
    });
    dialog.DoModal();
    EXPECT_THAT(seen, ElementsAre(0, 255, 0, _));
    EXPECT_TRUE(hostsAgain);
    EXPECT_EQ(wglGetCurrentContext(), own);
}

TEST(Win32Dialog, LeavesNoWindowClassesAndNoBitmapsBehind)
{
    const auto run = [] {
        SampleDialog dialog;
        dialog.atStart = [](SampleDialog& self) {
            CBitmap strip;
            strip.LoadBitmap(kSampleStrip);
            CImageList icons;
            icons.Create(16, 16, ILC_COLOR24 | ILC_MASK, 4, 1);
            icons.Add(&strip, RGB(236, 233, 216));
            for (int time = 0; time < 3; ++time)
                self.button.SetIcon({16, 16}, icons.ExtractIcon(1));
        };
        const WhenModal user([](ModalWindow& window) { User(window).Rest(); });
        dialog.DoModal();
    };
    run();
    const DWORD before = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    for (int time = 0; time < 5; ++time)
        run();
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), before + 2);
    WNDCLASSEXW known = {};
    known.cbSize = sizeof known;
    EXPECT_FALSE(GetClassInfoExW(GetModuleHandleW(nullptr), L"TessaraDialog", &known));
}

}  // namespace

}  // namespace tessara::test

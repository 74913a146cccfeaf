#include "platform/system/message_box.h"
#include "platform/ui/sample_dialog.h"
#include "platform/ui/window_system.h"

#include <gtest/gtest.h>

namespace tessara::test {

namespace {

// This program runs without a display: whoever starts it takes DISPLAY and WAYLAND_DISPLAY out of its environment.
TEST(NoDisplay, TheDesktopsWindowSystemGivesWayToNone)
{
    testing::internal::CaptureStderr();
    EXPECT_FALSE(CurrentWindowSystem().CanOpenWindows());
    EXPECT_EQ(&CurrentWindowSystem(), &NullWindowSystem());
    EXPECT_EQ(SampleDialog().DoModal(), IDCANCEL);
    ShowMessageBox("text", "title");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "title: text\n");
}

}  // namespace

}  // namespace tessara::test

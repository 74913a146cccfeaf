#include "platform/system/message_box.h"
#include "platform/ui/cfile_dialog.h"
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
    SampleDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_TRUE(dialog.events.empty());
    ShowMessageBox("text", "title");
    EXPECT_EQ(AfxGetMainWnd()->MessageBox("Replace it?", "Import", MB_YESNO), IDNO);
    EXPECT_EQ(AfxGetMainWnd()->MessageBox("Enter a name"), IDOK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "title: text\nImport: Replace it? (taken as No)\nTessara: Enter a name\n");
    auto* noWindow = reinterpret_cast<CWnd*>(static_cast<std::uintptr_t>(8));
    EXPECT_EQ(CFileDialog(TRUE, "*.*", nullptr, 6, "All|*.*|", noWindow).DoModal(), IDCANCEL);
    EXPECT_FALSE(CurrentWindowSystem().OpenAddress("http://example.org"));
}

}  // namespace

}  // namespace tessara::test

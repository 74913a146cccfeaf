#include "platform/system/terminal_text.h"
#include "platform/ui/window_system.h"
#include "support/message_capture.h"

#include <gtest/gtest.h>

namespace {

using namespace tessara;
using namespace tessara::test;

TEST(Messages, GoToTheSinkInPlaceAndThenToTheOneBefore)
{
    MessageCapture outer;
    {
        MessageCapture inner;
        OutputDebugStringA("one \n");
        OutputDebugStringA(nullptr);
        tessara::ShowMessageBox("text", "title");
        EXPECT_EQ(inner.lines, std::vector<std::string>{"one \n"});
        ASSERT_EQ(inner.boxes.size(), 1u);
        EXPECT_EQ(inner.boxes[0].first, "title");
        EXPECT_EQ(inner.boxes[0].second, "text");
    }
    OutputDebugStringA("two");
    tessara::ShowMessageBox(nullptr);
    EXPECT_EQ(outer.lines, std::vector<std::string>{"two"});
    EXPECT_EQ(outer.boxes.size(), 1u);
}

TEST(Messages, GoToStandardErrorAsOneLineEachWithoutWindows)
{
    WindowSystem* const previous = SetWindowSystem(&NullWindowSystem());
    testing::internal::CaptureStderr();
    OutputDebugStringA("ended \n");
    OutputDebugStringA("open %s");
    tessara::ShowMessageBox("text");
    tessara::ShowMessageBox("text", "title");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ended \nopen %s\ntext\ntitle: text\n");
    SetWindowSystem(previous);
}

TEST(TerminalTextTest, ShowsControlCharactersAsEscapes)
{
    using tessara::TerminalText;
    EXPECT_EQ(TerminalText("Grimsel \u00e4\n2"), "Grimsel \u00e4\n2");
    EXPECT_EQ(TerminalText("a\x1b[2Jb\r\t\x7f"), "a\\x1b[2Jb\\x0d\\x09\\x7f");
    EXPECT_EQ(TerminalText("a\u009bb\u00c2\xc2"), "a\\x9bb\u00c2\xc2");
}

}  // namespace

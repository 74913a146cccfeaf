#include "platform/system/number_text.h"
#include "platform/ui/cclient_dc.h"
#include "platform/ui/registered_message.h"
#include "platform/ui/resource_table.h"
#include "platform/ui/sample_dialog.h"
#include "support/message_capture.h"
#include "support/scripted_window_system.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace tessara::test {

namespace {

using namespace testing;

class UiClasses : public testing::Test {
protected:
    CallLog log_;
    ScriptedWindowSystem system_{log_};
    SampleDialog dialog_;
};

TEST_F(UiClasses, AControlWithoutAWindowDoesNothing)
{
    CEdit edit;
    edit.SetWindowText("text");
    edit.SetModify();
    edit.Invalidate();
    edit.SetFocus();
    EXPECT_EQ(edit.GetWindowText(), "");
    EXPECT_EQ(edit.GetModify(), FALSE);
    CListBox list;
    EXPECT_EQ(list.AddString("row"), -1);
    EXPECT_EQ(list.GetCurSel(), -1);
    EXPECT_TRUE(list.GetSelItems(5).empty());
    RECT rect{1, 2, 3, 4};
    edit.GetWindowRect(&rect);
    EXPECT_EQ(rect.right, 0);
    EXPECT_EQ(CClientDC(&edit).GetSafeHdc(), nullptr);
    EXPECT_EQ(CDialog(12345).DoModal(), -1);
}

TEST_F(UiClasses, MessagesOfTheSystemAreShownByTheWindowSystem)
{
    ShowMessageBox("No such extension", "OpenGL");
    EXPECT_THAT(log_, ElementsAre("ShowMessage(OpenGL, No such extension, 0)"));
    MessageCapture capture;
    ShowMessageBox("to the handler");
    EXPECT_EQ(log_.size(), 1u);
}

TEST_F(UiClasses, ASpinStepKeepsToItsRangeAndNeverGoesAgainstItsArrow)
{
    struct Case {
        const char* text;
        int steps;
        const char* after;
    };
    const Case cases[] = {
        {"16.00", 1, "17.00"},  {"16.00", -1, "15.00"},  {"1.5", -1, "1.00"},    {"0.5", -1, "0.50"},
        {"-3", 1, "-2.00"},     {"abc", 1, "1.00"},      {"", -1, "0.00"},       {"999.5", 2, "1000.00"},
        {"5000", 1, "5000.00"}, {"5000", -1, "4999.00"}, {" +2.25x", 1, "3.25"},
    };
    system_.user = [&](ScriptedDialog& window) {
        for (const Case& c : cases) {
            window.Type(kNumber, c.text);
            window.Step(kSpin, c.steps);
            EXPECT_EQ(window.GetText(kNumber), c.after) << c.text << " by " << c.steps;
        }
        dialog_.spin.SetRange(0.0, 1.0);
        dialog_.spin.SetStep(0.25);
        dialog_.spin.SetDigits(3);
        window.Type(kNumber, "0.5");
        window.Step(kSpin, 1);
        EXPECT_EQ(window.GetText(kNumber), "0.750");
    };
    dialog_.DoModal();
}

TEST(RegisteredMessages, AreTheSameForTheSameTextOnly)
{
    const UINT up = RegisterWindowMessage(kSpinStepMessage);
    EXPECT_GE(up, 0xC000u);
    EXPECT_LE(up, 0xFFFFu);
    EXPECT_EQ(RegisterWindowMessage("uwm_spinup-{384d476a-93a7-45f1-812c-0e729c0d1cfc}"), up);
    EXPECT_NE(RegisterWindowMessage("UWM_SPINDOWN-{DF6BCD85-0622-4f26-BE2B-117BA1AE9226}"), up);
    EXPECT_EQ(RegisterWindowMessage(""), 0u);
    EXPECT_EQ(RegisterWindowMessage(nullptr), 0u);
}

TEST(Resources, AreFoundAsLongAsTheirTableLives)
{
    EXPECT_EQ(LoadString(77777), "");
    {
        const StringResource strings[] = {{77777, "text"}};
        const StringTable table(strings);
        EXPECT_EQ(LoadString(77777), "text");
        EXPECT_EQ(LoadString(kSampleToolTip).substr(0, 4), "<h5>");
    }
    EXPECT_EQ(LoadString(77777), "");
}

TEST(NumberText, ReadsTheLeadingNumberAndIgnoresTheRest)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<const char*, double> cases[] = {
        {"1.5", 1.5},     {"  -2.25 m", -2.25}, {"+4", 4.0},       {".5", 0.5},         {"7.", 7.0},
        {"1e3x", 1000.0}, {"1,5", 1.0},         {"abc", 0.0},      {"", 0.0},           {"-", 0.0},
        {"+-3", 0.0},     {"nan", 0.0},         {"-inf", 0.0},     {"1e999", infinity}, {"-1e999", -infinity},
        {"1e-999", 0.0},  {"0x10", 0.0},        {"\t\n 12", 12.0}, {"- 5", 0.0},
    };
    for (const auto& [text, number] : cases)
        EXPECT_EQ(LeadingNumber(text), number) << text;
    EXPECT_EQ(LeadingInteger("12abc"), 12);
    EXPECT_EQ(LeadingInteger("-99999999999"), std::numeric_limits<int>::min());
    EXPECT_EQ(LeadingInteger("x"), 0);
    EXPECT_EQ(FixedText(1.0 / 3.0, 2), "0.33");
    EXPECT_EQ(FixedText(-1e308, 2).size(), 313u);
}

}  // namespace

}  // namespace tessara::test

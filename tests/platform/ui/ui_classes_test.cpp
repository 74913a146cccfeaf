#include "platform/system/number_text.h"
#include "platform/ui/cclient_dc.h"
#include "platform/ui/cfile_dialog.h"
#include "platform/ui/cxt_hyper_link.h"
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

using testing::ElementsAre;
using testing::Pair;

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

TEST_F(UiClasses, AnUnknownControlDoesNothing)
{
    system_.user = [&](ScriptedDialog&) {
        CWnd* unknown = dialog_.GetDlgItem(4711);
        unknown->SetWindowText("text");
        EXPECT_EQ(unknown->GetWindowText(), "");
        EXPECT_EQ(unknown->IsWindowEnabled(), FALSE);
        EXPECT_EQ(dialog_.GetDlgItem(kNumber), &dialog_.number);
    };
    EXPECT_EQ(dialog_.DoModal(), IDCANCEL);
}

TEST_F(UiClasses, AFileDialogHandsItsSettingsOn)
{
    system_.files = {std::nullopt, "/pictures/a.png"};
    CWnd parent;
    int window = 0;
    parent.Attach(&window);
    CFileDialog dialog(TRUE, "*.*", nullptr, 6, "JPEG Files (*.jpg)|*.jpg|More Files... (*.*)|*.*|", &parent);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.GetPathName(), "");
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetPathName(), "/pictures/a.png");
    const FileQuestion& question = system_.lastQuestion;
    EXPECT_TRUE(question.open);
    EXPECT_TRUE(question.confirmOverwrite);
    EXPECT_EQ(question.extension, "*.*");
    ASSERT_EQ(question.filters.size(), 2u);
    EXPECT_EQ(question.filters[1].name, "More Files... (*.*)");
    EXPECT_EQ(question.filters[1].patterns, "*.*");
    EXPECT_EQ(system_.lastParent, &window);
}

TEST_F(UiClasses, MessagesOfTheSystemAreShownByTheWindowSystem)
{
    ShowMessageBox("No such extension", "OpenGL");
    EXPECT_THAT(log_, ElementsAre("ShowMessage(OpenGL, No such extension, 0)"));
    MessageCapture capture;
    ShowMessageBox("to the handler");
    EXPECT_EQ(log_.size(), 1u);
}

TEST_F(UiClasses, IconsAreCutFromAStripAndOutliveIt)
{
    HICON icon;
    {
        CBitmap strip;
        EXPECT_EQ(strip.LoadBitmap(1), FALSE);
        ASSERT_EQ(strip.LoadBitmap(kSampleStrip), TRUE);
        CImageList list;
        ASSERT_EQ(list.Create(16, 16, ILC_COLOR24 | ILC_MASK, 4, 1), TRUE);
        EXPECT_EQ(list.Add(&strip, RGB(236, 233, 216)), 0);
        ASSERT_EQ(list.GetImageCount(), 2);
        EXPECT_EQ(list.ExtractIcon(0)->At(3, 3)[3], 0);
        EXPECT_EQ(list.ExtractIcon(2), nullptr);
        icon = list.ExtractIcon(1);
    }
    EXPECT_THAT(std::vector<int>(icon->At(15, 15), icon->At(15, 15) + 4), ElementsAre(200, 0, 0, 255));
    system_.user = [&](ScriptedDialog& window) {
        dialog_.button.SetIcon({20, 8}, icon);
        EXPECT_EQ(window.images[kButton].width, 20);
        EXPECT_EQ(window.images[kButton].At(15, 7)[0], 200);
        EXPECT_EQ(window.images[kButton].At(16, 7)[3], 0);
    };
    dialog_.DoModal();
}

TEST_F(UiClasses, TooltipsGetTheirTextsAndLinksTheirMessage)
{
    system_.user = [&](ScriptedDialog& window) {
        ASSERT_EQ(window.toolTips.size(), 1u);
        EXPECT_EQ(window.toolTips[0].first, kNumber);
        EXPECT_EQ(window.toolTips[0].second.substr(0, 15), "<h5>Number</h5>");
        dialog_.toolTip.ShowHelpTooltip("long text");
        EXPECT_THAT(window.helps, ElementsAre("long text"));
        window.ClickLink("1");
        window.Press('A');
        EXPECT_EQ(window.relayed.back().wParam, static_cast<WPARAM>('A'));
    };
    dialog_.DoModal();
    EXPECT_EQ(dialog_.events[2], "link 1");
    EXPECT_EQ(CXTHyperLink::GotoURL("http://example.org", 5), TRUE);
    EXPECT_EQ(log_.back(), "OpenAddress(http://example.org)");

    SampleDialog bare;
    system_.prepare = [](ScriptedDialog& window) { window.hasToolTips = false; };
    system_.user = [&bare](ScriptedDialog& window) {
        EXPECT_FALSE(bare.hasToolTip);
        bare.toolTip.ShowHelpTooltip("text");
        EXPECT_TRUE(window.helps.empty());
    };
    bare.DoModal();
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

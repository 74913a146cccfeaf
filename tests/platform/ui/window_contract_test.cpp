// What a dialog can rely on, with mouse and keyboard on the desktop's windows.

#include "platform/ui/window_system.h"

#include <gmock/gmock.h>

// Who works with the windows of this system: User and WhenModal.
#include TESSARA_DIALOG_USER

#include <utility>

namespace tessara::test {

namespace {

using namespace testing;

class DialogContract : public testing::Test {
protected:
    DialogContract() { EXPECT_TRUE(CurrentWindowSystem().CanOpenWindows()) << "no display answers"; }

    /// Runs the dialog with what the user does, and keeps what the dialog heard, paints left out.
    int Run(std::function<void(User&)> act)
    {
        dialog_.events.clear();
        const WhenModal user([&act](ModalWindow& dialog) {
            User hands(dialog);
            act(hands);
        });
        const int result = dialog_.DoModal();
        EXPECT_EQ(dialog_.number.GetSafeHwnd(), nullptr);
        painted_ = std::erase(dialog_.events, "paint") > 0;
        return result;
    }

    /// What the dialog heard between its creation and its end.
    std::vector<std::string> Heard() const
    {
        const auto& events = dialog_.events;
        if (events.size() < 2 || events.front() != "created" || events.back() != "destroy")
            return {"not created and destroyed"};
        return {events.begin() + 1, events.end() - 1};
    }

    SampleDialog dialog_;
    bool painted_ = false;
};

TEST_F(DialogContract, EndsWithTheClosingButtonThatWasClicked)
{
    EXPECT_EQ(Run([](User& user) { user.Click(IDOK); }), IDOK);
    EXPECT_TRUE(painted_);
    EXPECT_THAT(dialog_.events, ElementsAre("created", "destroy"));
    EXPECT_EQ(Run([](User& user) { user.Click(IDCANCEL); }), IDCANCEL);
    EXPECT_EQ(Run([](User& user) { user.Press(VK_ESCAPE); }), IDCANCEL);
    EXPECT_EQ(Run([](User& user) { user.Press(VK_RETURN); }), IDOK);
}

TEST_F(DialogContract, IsNeverShownWhenItEndsAtItsStart)
{
    dialog_.endsAtOnce = true;
    EXPECT_EQ(Run([](User&) { FAIL() << "the dialog was shown"; }), 17);
    EXPECT_FALSE(painted_);
    EXPECT_THAT(dialog_.events, ElementsAre("created", "destroy"));
}

TEST_F(DialogContract, TakesValuesFromTheProgramWithoutNotice)
{
    dialog_.atStart = [](SampleDialog& dialog) {
        dialog.number.SetModify();
        dialog.number.SetWindowText("16.00");
        EXPECT_EQ(dialog.number.GetModify(), FALSE);
        dialog.CheckDlgButton(kCheck, TRUE);
        dialog.choice.ResetContent();
        for (const char* row : {"one", "two", "Müller"})
            EXPECT_GE(dialog.choice.AddString(row), 0);
        dialog.choice.SetCurSel(2);
        for (const char* row : {"zebra", "ape", "ape"})
            dialog.list.AddString(row);
        dialog.list.SetSel(1);
        dialog.button.EnableWindow(FALSE);
    };
    dialog_.atEnd = [](SampleDialog& dialog) {
        EXPECT_EQ(dialog.number.GetWindowText(), "16.00");
        EXPECT_EQ(dialog.IsDlgButtonChecked(kCheck), TRUE);
        EXPECT_EQ(dialog.choice.GetCurSel(), 2);
        EXPECT_EQ(dialog.choice.GetLBText(2), "Müller");
        EXPECT_EQ(dialog.list.GetCount(), 3);
        EXPECT_EQ(dialog.list.GetCurSel(), 1);
        EXPECT_THAT(dialog.list.GetSelItems(3), ElementsAre(1));
        EXPECT_EQ(dialog.button.IsWindowEnabled(), FALSE);
    };
    Run([](User& user) { user.Click(kButton); });
    EXPECT_TRUE(Heard().empty()) << testing::PrintToString(Heard());
}

TEST_F(DialogContract, HearsWhatTheUserChanges)
{
    dialog_.atStart = [](SampleDialog& dialog) {
        for (const char* row : {"a", "b", "c", "d"})
            dialog.list.AddString(row);
    };
    dialog_.atEnd = [](SampleDialog& dialog) {
        EXPECT_EQ(dialog.IsDlgButtonChecked(kCheck), TRUE);
        EXPECT_EQ(dialog.choice.GetCurSel(), 1);
        EXPECT_THAT(dialog.list.GetSelItems(4), ElementsAre(1, 2, 3));
        EXPECT_THAT(dialog.list.GetSelItems(2), ElementsAre(1, 2));
        EXPECT_EQ(dialog.list.GetCurSel(), 3);
    };
    Run([](User& user) {
        user.Click(kCheck);
        user.Pick(kChoice, 1);
        user.Pick(kList, 0);
        user.PickRange(kList, 1, 3);
        user.Click(kButton);
    });
    EXPECT_THAT(Heard(), ElementsAre("check", "choice", "list", "list", "list", "button"));
}

TEST_F(DialogContract, AnEditFieldTellsWhenItIsLeft)
{
    dialog_.atEnd = [](SampleDialog& dialog) {
        EXPECT_EQ(dialog.number.GetWindowText(), "1.5");
        EXPECT_EQ(dialog.number.GetModify(), TRUE);
        EXPECT_EQ(dialog.plain.GetModify(), FALSE);
    };
    EXPECT_EQ(Run([](User& user) {
                  user.Type(kNumber, "1.5");
                  user.Click(kPlainEdit);
                  user.Click(kNumber);
                  user.Click(IDOK);
              }),
              IDOK);
    EXPECT_THAT(Heard(), ElementsAre("number left", "number left"));
}

TEST_F(DialogContract, AListGoesToTheNameOfALetterAndLeavesReturnToTheDialog)
{
    dialog_.takesReturn = true;
    dialog_.atStart = [](SampleDialog& dialog) {
        for (const char* row : {"zebra", "ape", "Apple", "bear"})
            dialog.list.AddString(row);
    };
    std::vector<int> rows;
    int focused = 0;
    Run([&](User& user) {
        user.Pick(kList, 3);
        for (const char letter : {'a', 'a', 'a', 'z', 'q'}) {
            user.Press(static_cast<WPARAM>(letter));
            rows.push_back(dialog_.list.GetCurSel());
            EXPECT_THAT(dialog_.list.GetSelItems(4), ElementsAre(rows.back()));
        }
        user.Press(VK_RETURN);
        focused = dialog_.GetFocus() ? dialog_.GetFocus()->GetDlgCtrlID() : -1;
    });
    EXPECT_THAT(rows, ElementsAre(1, 2, 1, 0, 0));
    EXPECT_EQ(focused, kButton);
    EXPECT_THAT(Heard(), ElementsAre("list", "list", "list", "list", "list"));
}

TEST_F(DialogContract, TheTabKeySkipsDisabledControlsAndComesRound)
{
    dialog_.atStart = [](SampleDialog& dialog) { dialog.GetDlgItem(kNumber)->EnableWindow(FALSE); };
    std::vector<int> order;
    Run([&](User& user) {
        user.Click(kCheck);
        for (int i = 0; i < 7; ++i) {
            user.Press(VK_TAB);
            user.Rest();
            order.push_back(dialog_.GetFocus() ? dialog_.GetFocus()->GetDlgCtrlID() : -1);
        }
    });
    EXPECT_THAT(order, ElementsAre(kPlainEdit, kChoice, kList, kButton, IDOK, IDCANCEL, kCheck));
}

TEST_F(DialogContract, APostedMessageComesAfterTheRunningEvent)
{
    dialog_.atStart = [](SampleDialog& dialog) {
        EXPECT_EQ(dialog.PostMessage(kPosted, 7, 8), TRUE);
        EXPECT_THAT(dialog.events, Not(Contains("posted 7 8")));
        EXPECT_EQ(dialog.SendMessage(kPosted, 1, 2), 1);
        EXPECT_EQ(dialog.events.back(), "posted 1 2");
    };
    Run([](User& user) { user.Rest(); });
    EXPECT_THAT(Heard(), ElementsAre("posted 1 2", "posted 7 8"));
    EXPECT_EQ(dialog_.PostMessage(kPosted), FALSE);
}

TEST_F(DialogContract, AFailureInAHandlerEndsTheDialogAndReachesTheCaller)
{
    dialog_.throws = true;
    EXPECT_THROW(Run([](User& user) { user.Click(kButton); }), std::runtime_error);
    std::erase(dialog_.events, "paint");
    EXPECT_EQ(dialog_.events.back(), "destroy");
}

}  // namespace

}  // namespace tessara::test

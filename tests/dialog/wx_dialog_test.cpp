// What a person does in the dialog, from end to end.

#include "dialog/wx_dialog_fixture.h"

#include <wx/checkbox.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

namespace tessara::test {

namespace {

wxListBox& List()
{
    return *static_cast<wxListBox*>(wxWindow::FindWindowById(kElementList));
}

wxTextCtrl& Field(int control)
{
    return *static_cast<wxTextCtrl*>(wxWindow::FindWindowById(control));
}

/// Answers the next question for a file.
class FileChoice {
public:
    explicit FileChoice(std::string path) : path_(std::move(path))
    {
        timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Look(); });
        timer_.Start(50);
    }
    ~FileChoice() { timer_.Stop(); }
    bool Answered() const { return ticks_ >= 16; }

private:
    void Look()
    {
        GList* const windows = gtk_window_list_toplevels();
        for (GList* window = windows; window; window = window->next) {
            if (!GTK_IS_FILE_CHOOSER_DIALOG(window->data) || !gtk_widget_get_mapped(GTK_WIDGET(window->data)))
                continue;
            ++ticks_;
            if (ticks_ == 8)
                gtk_file_chooser_select_filename(GTK_FILE_CHOOSER(window->data), path_.c_str());
            else if (ticks_ == 16)
                gtk_dialog_response(GTK_DIALOG(window->data), GTK_RESPONSE_ACCEPT);
        }
        g_list_free(windows);
    }

    std::string path_;
    int ticks_ = 0;
    wxTimer timer_;
};

/// Lets the desktop work until something holds.
void WaitFor(WxUser& user, const char* what, const std::function<bool()>& holds)
{
    for (int tries = 0; tries < 100 && !holds(); ++tries)
        user.Wait(50);
    EXPECT_TRUE(holds()) << what;
    user.Wait(50);
}

void ChooseUserDatabase(WxUser& user)
{
    user.Pick(kDatabaseList, 1);
    WaitFor(user, "the user's database", [] { return wxWindow::FindWindowById(kImportButton)->IsEnabled(); });
}

void Import(WxUser& user, const std::string& path)
{
    const FileChoice choice(path);
    user.Click(kImportButton);
    WaitFor(user, "the question for a file", [&] { return choice.Answered(); });
    user.Wait(150);
}

TEST_F(WxDialogTest, EachChangeShowsOnTheTerrainAndCancelTakesItBack)
{
    const auto bare = terrain.Draw();
    Run([&](WxUser& user, wxDialog&) {
        EXPECT_EQ(List().GetCount(), terrain.Count(false));
        EXPECT_FALSE(wxWindow::FindWindowById(kImportButton)->IsEnabled());
        EXPECT_TRUE(static_cast<wxCheckBox*>(wxWindow::FindWindowById(kShowBox))->GetValue());
        user.Pick(kElementList, 2);
        user.Click(kApplyButton);
        const auto covered = terrain.Picture();
        EXPECT_NE(covered, bare);

        user.Type(kTilingXField, "2.5");
        user.Press(VK_RETURN);
        EXPECT_EQ(Tiling(), std::pair(2.5f, 16.0f));
        const auto tiled = terrain.Picture();
        EXPECT_NE(tiled, covered);
        user.StepUp(kTilingYSpin);
        user.StepUp(kTilingYSpin);
        user.StepDown(kTilingXSpin);
        EXPECT_EQ(Tiling(), std::pair(1.5f, 18.0f));
        EXPECT_EQ(Field(kTilingYField).GetValue(), "18.00");
        EXPECT_NE(terrain.Picture(), tiled);

        const auto bright = terrain.Picture();
        user.Pick(kBrightnessList, 0);
        EXPECT_NE(terrain.Picture(), bright);
        user.Click(kShowBox);
        EXPECT_EQ(terrain.Picture(), bare);
        user.Click(kShowBox);
    });
    EXPECT_EQ(Tiling(), std::pair(16.0f, 16.0f));
    // There is no element to go back to: the last one stays, and nobody is told about it.
    EXPECT_THAT(terrain.messages, testing::IsEmpty());
}

TEST_F(WxDialogTest, ImportsReplacesAndDeletesElements)
{
    const std::string red = terrain.WriteImage("r\xC3\xB6t.TGA");
    Run([&](WxUser& user, wxDialog&) {
        ChooseUserDatabase(user);
        EXPECT_EQ(List().GetCount(), 0u);
        EXPECT_NEAR(MiddleOf(kPreview)[1], 235, 3) << "an empty preview";
        Import(user, terrain.WriteFile("broken.png", "this is no picture"));
        const auto import = [&](const char* name) {
            user.Type(kNameField, name);
            Import(user, red);
        };
        import("Red");
        EXPECT_EQ(List().GetCount(), 1u);
        EXPECT_EQ(MiddleOf(kPreview), (Rgb{0xE0, 0x10, 0x20}));
        import("Red too");
        EXPECT_EQ(List().GetCount(), 2u);
        {
            const WhenAsked no('n');
            import("Red");
        }
        EXPECT_EQ(terrain.Count(true), 2u);
        {
            const WhenAsked yes('y');
            import("Red");
        }
        EXPECT_EQ(terrain.Count(true), 2u);
        EXPECT_EQ(List().GetString(1), "Red");
        user.Click(kApplyButton);
        {
            const WhenAsked yes('y');
            user.PickRange(kElementList, 0, 1);
            user.Click(kDeleteButton);
            WaitFor(user, "the deletion", [] { return List().GetCount() == 0; });
        }
        EXPECT_EQ(terrain.Count(true), 0u);
        EXPECT_EQ(List().GetCount(), 0u);
        user.Click(IDOK);
    });
    EXPECT_NE(Key(), "");
    EXPECT_THAT(terrain.messages, testing::ElementsAre(testing::HasSubstr("broken.png")));
}

}  // namespace

}  // namespace tessara::test

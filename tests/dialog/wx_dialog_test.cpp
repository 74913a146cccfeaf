// The dialog on the desktop, before a terrain of the real component, used with mouse and keyboard.

#include "dialog/detail_resources.h"
#include "dialog/terrain_behind.h"
#include "platform/com/bstr.h"
#include "platform/ui/window_system.h"
#include "platform/ui/wx_user.h"
#include "services/gl_context.h"
#include "support/fake_image_file.h"
#include "support/fake_parser.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <malloc.h>
#include <wx/app.h>
#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/html/htmlwin.h>
#include <wx/listbox.h>
#include <wx/popupwin.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <array>
#include <functional>

namespace tessara::test {

namespace {

using Rgb = std::array<int, 3>;

Rgb ScreenPixel(int x, int y)
{
    GdkPixbuf* shot = gdk_pixbuf_get_from_window(gdk_get_default_root_window(), x, y, 1, 1);
    const guchar* pixel = gdk_pixbuf_get_pixels(shot);
    const Rgb color = {pixel[0], pixel[1], pixel[2]};
    g_object_unref(shot);
    return color;
}

Rgb MiddleOf(int control)
{
    const wxRect rect = wxWindow::FindWindowById(control)->GetScreenRect();
    return ScreenPixel(rect.x + rect.width / 2, rect.y + rect.height / 2);
}

wxListBox& List()
{
    return *static_cast<wxListBox*>(wxWindow::FindWindowById(kElementList));
}

wxTextCtrl& Field(int control)
{
    return *static_cast<wxTextCtrl*>(wxWindow::FindWindowById(control));
}

class WxDialogTest : public testing::Test {
protected:
    WxDialogTest() { EXPECT_TRUE(CurrentWindowSystem().CanOpenWindows()) << "no display answers"; }

    HRESULT Run(std::function<void(WxUser&, wxDialog&)> act)
    {
        const WhenModal user([&](wxDialog& dialog) {
            WxUser hands(dialog);
            act(hands, dialog);
        });
        const HRESULT result = terrain.Surface().TextureDetailDlg();
        EXPECT_TRUE(terrain.HasContext());
        return result;
    }

    std::pair<float, float> Tiling()
    {
        std::pair<float, float> tiling;
        terrain.Surface().GetTextureDetailTiling(&tiling.first, &tiling.second);
        return tiling;
    }

    std::string Key()
    {
        BstrHolder key;
        BstrHolder table;
        terrain.Surface().GetDBTextureDetailName(key.Out(), table.Out());
        return key.Narrow();
    }

    TerrainBehind terrain;
};

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

wxPopupWindow* Tip()
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

/// What a control needs to show its text whole.
int NeededWidth(wxWindow& window)
{
    int minimum = 0;
    int natural = 0;
    gtk_widget_get_preferred_width(GTK_WIDGET(window.GetHandle()), &minimum, &natural);
    return natural;
}

TEST_F(WxDialogTest, StandsAsTheTemplateSaysWithoutClippedTextOrOverlap)
{
    Run([](WxUser&, wxDialog& dialog) {
        EXPECT_EQ(dialog.GetTitle(), "Terrain Detail");
        const auto place = [&](const ControlTemplate& form) {
            const wxPoint from = dialog.ConvertDialogToPixels(wxPoint(form.x, form.y));
            const wxPoint to = dialog.ConvertDialogToPixels(wxPoint(form.x + form.width, form.y + form.height));
            return wxRect(from, wxSize(to.x - from.x, to.y - from.y));
        };
        std::vector<std::pair<int, wxRect>> seen;
        for (const ControlTemplate& form : DetailTemplates()[0].controls) {
            wxWindow* const window = form.id == 0 ? nullptr : wxWindow::FindWindowById(form.id, &dialog);
            if (!window || form.kind == ControlKind::Spin)
                continue;
            SCOPED_TRACE(form.id);
            wxRect rect = window->GetScreenRect();
            rect.Offset(-dialog.ClientToScreen(wxPoint(0, 0)));
            // A viewport stands inside its frame.
            const wxPoint frame(form.kind == ControlKind::Viewport, form.kind == ControlKind::Viewport);
            EXPECT_EQ(rect.GetPosition(), place(form).GetPosition() + frame);
            if (form.kind != ControlKind::DropList) {
                EXPECT_LE(rect.height, place(form).height);
                EXPECT_LE(rect.width, place(form).width);
            }
            if (form.kind == ControlKind::Button || form.kind == ControlKind::DefaultButton ||
                form.kind == ControlKind::CheckBox || form.kind == ControlKind::Label) {
                EXPECT_LE(NeededWidth(*window), rect.width) << "clipped";
            }
            for (const auto& [other, taken] : seen)
                EXPECT_FALSE(rect.Intersects(taken)) << other;
            seen.emplace_back(form.id, rect);
        }
        EXPECT_GE(seen.size(), 14u);
        for (wxWindow* child : dialog.GetChildren()) {
            const wxSize inside = dialog.GetClientSize();
            EXPECT_TRUE(wxRect(inside).Contains(child->GetRect())) << child->GetLabel();
            if (child->GetId() < 0 && !child->GetLabel().empty()) {
                EXPECT_LE(NeededWidth(*child), child->GetSize().x) << child->GetLabel();
            }
        }
    });
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
    // There is no element to go back to: the host refuses the empty name and the last one stays.
    EXPECT_EQ(terrain.messages.size(), 1u);
}

TEST_F(WxDialogTest, OkKeepsTheElementAndTheNextOpeningFindsIt)
{
    EXPECT_EQ(Run([](WxUser& user, wxDialog&) {
                  user.Pick(kElementList, 3);
                  user.Click(kApplyButton);
                  user.Click(IDOK);
              }),
              S_OK);
    const std::string applied = Key();
    EXPECT_NE(applied, "");
    const auto picture = terrain.Draw();
    EXPECT_EQ(Run([&](WxUser& user, wxDialog&) {
                  wxArrayInt rows;
                  List().GetSelections(rows);
                  EXPECT_EQ(rows.size(), 1u);
                  EXPECT_TRUE(List().IsSelected(3));
                  user.Pick(kElementList, 1);
                  user.Click(kApplyButton);
                  EXPECT_NE(Key(), applied);
                  EXPECT_NE(terrain.Picture(), picture);
              }),
              S_FALSE);
    EXPECT_EQ(Key(), applied);
    EXPECT_EQ(terrain.Draw(), picture);
}

TEST_F(WxDialogTest, ImportsReplacesAndDeletesElements)
{
    const std::string red = terrain.WriteImage("red.tga");
    Run([&](WxUser& user, wxDialog&) {
        ChooseUserDatabase(user);
        EXPECT_EQ(List().GetCount(), 0u);
        EXPECT_NEAR(MiddleOf(kPreview)[1], 235, 3) << "an empty preview";
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
    EXPECT_THAT(terrain.messages, testing::IsEmpty());
}

TEST_F(WxDialogTest, AnImageThatCannotBeReadIsExplained)
{
    const std::string broken = terrain.WriteFile("broken.png", "this is no picture");
    Run([&](WxUser& user, wxDialog&) {
        ChooseUserDatabase(user);
        Import(user, broken);
        ASSERT_EQ(terrain.messages.size(), 1u);
        EXPECT_THAT(terrain.messages[0], testing::HasSubstr("broken.png"));
    });
}

TEST_F(WxDialogTest, ATooltipLeadsToTheLongText)
{
    Run([](WxUser& user, wxDialog&) {
        wxWindow* const database = wxWindow::FindWindowById(kDatabaseList);
        user.MoveTo(*database, 0.4, 0.4);
        user.MoveTo(*database, 0.4, 0.5);
        user.Wait(900);
        wxPopupWindow* const tip = Tip();
        ASSERT_NE(tip, nullptr);
        auto* const page = static_cast<wxHtmlWindow*>(tip->GetChildren().front());
        EXPECT_THAT(page->ToText().utf8_string(), testing::HasSubstr("Select the database"));
        const wxHtmlContainerCell* cells = page->GetInternalRepresentation();
        wxHtmlTerminalCellsInterator link(cells->GetFirstTerminal(), cells->GetLastTerminal());
        while (link && !link->GetLink())
            ++link;
        ASSERT_TRUE(static_cast<bool>(link));
        const wxPoint place = page->ClientToScreen(link->GetAbsPos() + wxPoint(5, 5));
        wxUIActionSimulator hands;
        hands.MouseMove(place.x, place.y);
        user.Rest();
        hands.MouseClick();
        user.Wait(150);
        EXPECT_THAT(page->ToText().utf8_string(), testing::HasSubstr("where you import your elements"));
    });
}

TEST_F(WxDialogTest, AProjectWhoseElementIsGoneAsksForAnother)
{
    const std::string red = terrain.WriteImage("red.tga");
    CallLog calls;
    const auto project = MakeObject<FakeParser>(calls);
    Run([&](WxUser& user, wxDialog&) {
        ChooseUserDatabase(user);
        Import(user, red);
        user.Click(kApplyButton);
        terrain.Surface().SerializeTextures(project.Get());
        const WhenAsked yes('y');
        user.Click(kDeleteButton);
        WaitFor(user, "the deletion", [] { return List().GetCount() == 0; });
        user.Click(IDOK);
    });
    EXPECT_EQ(terrain.Count(true), 0u);
    const std::string lost = Key();
    const WhenModal user([](wxDialog& dialog) {
        WxUser hands(dialog);
        EXPECT_EQ(List().GetCount(), 0u);
        hands.Pick(kDatabaseList, 0);
        hands.Pick(kElementList, 1);
        hands.Click(kApplyButton);
        hands.Click(IDOK);
    });
    EXPECT_EQ(terrain.Surface().LoadSerializedTextures(project.Get()), S_FALSE);
    EXPECT_NE(Key(), lost);
    EXPECT_THAT(terrain.messages, testing::ElementsAre(testing::HasSubstr(lost)));
    EXPECT_TRUE(terrain.HasContext());
}

TEST_F(WxDialogTest, WithoutAPreviewItSaysSoAndEnds)
{
    const auto other = MakeObject<KvoHost>(nullptr, nullptr);  // no context
    const ServedClass wrong(CLSID_GLContext, other.Get());
    const WhenAsked read(WXK_RETURN);
    EXPECT_EQ(terrain.Surface().TextureDetailDlg(), S_FALSE);
    EXPECT_TRUE(terrain.HasContext());
    EXPECT_TRUE(wxTopLevelWindows.empty());
}

TEST_F(WxDialogTest, AHundredOpeningsLeaveNothingBehind)
{
    wxTimer closing;
    closing.Bind(wxEVT_TIMER, [](wxTimerEvent&) {
        for (wxWindow* window : wxTopLevelWindows) {
            auto* dialog = dynamic_cast<wxDialog*>(window);
            if (dialog && dialog->IsModal() && dialog->IsShownOnScreen())
                dialog->Close();
        }
    });
    closing.Start(10);
    std::size_t early = 0;
    for (int i = 1; i <= 100; ++i) {
        EXPECT_EQ(terrain.Surface().TextureDetailDlg(), S_FALSE);
        ASSERT_TRUE(terrain.HasContext());
        if (i == 20)
            early = mallinfo2().uordblks;
    }
    EXPECT_TRUE(wxTopLevelWindows.empty());
    // What fonts, themes and drivers keep settles in the first openings. A dialog and its context take megabytes.
    const std::size_t late = mallinfo2().uordblks;
    EXPECT_LT(late, early + 4 * 1024 * 1024);
}

}  // namespace

}  // namespace tessara::test

// What reaches the surface, and what Cancel takes back.

#include "dialog/detail_fixture.h"
#include "support/allocation_failure.h"

namespace tessara::test {

namespace {

using namespace testing;

struct Action {
    const char* what;
    std::function<void(ScriptedDialog&)> act;
    CallLog calls;
};

TEST_F(DetailDialogTest, EachChangeReachesTheSurfaceAtOnce)
{
    const std::string redraw = "RequestRedraw(8, 0)";
    const Action actions[] = {
        {"hide", [](auto& it) { it.Click(kShowBox); }, {"UseTextureDetail(0)", redraw}},
        {"show", [](auto& it) { it.Click(kShowBox); }, {"UseTextureDetail(1)", redraw}},
        {"dark", [](auto& it) { it.Pick(kBrightnessList, 0); }, {"SetTextureDetailRGBGamma(1)", redraw}},
        {"bright", [](auto& it) { it.Pick(kBrightnessList, 1); }, {"SetTextureDetailRGBGamma(2)", redraw}},
        {"enter and leave",
         [](auto& it) {
             it.Focus(kTilingXField);
             it.Focus(kTilingYField);
             it.Focus(IDOK);
         },
         {}},
        {"type", [](auto& it) { it.Type(kTilingXField, "2.5 times"); }, {}},
        {"leave", [](auto& it) { it.Focus(IDOK); }, {"SetTextureDetailTiling(2.500000, none)", redraw}},
        {"leave again",
         [](auto& it) {
             it.Focus(kTilingXField);
             it.Focus(IDOK);
         },
         {"SetTextureDetailTiling(2.500000, none)", redraw}},
        {"step up", [](auto& it) { it.Step(kTilingYSpin, 1); }, {"SetTextureDetailTiling(none, 17.000000)", redraw}},
        {"step down", [](auto& it) { it.Step(kTilingXSpin, -1); }, {"SetTextureDetailTiling(1.500000, none)", redraw}},
        {"letters",
         [](auto& it) {
             it.Type(kTilingYField, "many");
             it.Focus(IDOK);
         },
         {"SetTextureDetailTiling(none, 0.000000)", redraw}},
        {"negative",
         [](auto& it) {
             it.Type(kTilingYField, " -3e1,5");
             it.Press(VK_RETURN);
         },
         {"SetTextureDetailTiling(none, -30.000000)", redraw}},
    };
    Run([&](ScriptedDialog& dialog) {
        for (const Action& action : actions)
            EXPECT_EQ(After(dialog, action.act), action.calls) << action.what;
        EXPECT_EQ(dialog.GetText(kTilingXField), "1.50");
        EXPECT_EQ(dialog.GetText(kTilingYField), " -3e1,5");
    });
}

TEST_F(DetailDialogTest, ReturnGoesOnAndNeverCloses)
{
    EXPECT_EQ(Run([](ScriptedDialog& dialog) {
                  EXPECT_EQ(dialog.GetFocus(), kShowBox);
                  std::vector<int> order;
                  for (int i = 0; i < 9; ++i) {
                      dialog.Press(VK_RETURN);
                      order.push_back(dialog.GetFocus());
                  }
                  // Import, Delete and the name belong to the user's database.
                  EXPECT_THAT(order, ElementsAre(kTilingXField, kTilingYField, kBrightnessList, kElementList,
                                                 kDatabaseList, kApplyButton, IDOK, IDCANCEL, kShowBox));
                  EXPECT_FALSE(dialog.result.has_value());
                  dialog.Click(IDOK);
              }),
              S_OK);
}

TEST_F(DetailDialogTest, OkKeepsEverythingAndAddsNothing)
{
    EXPECT_EQ(Run([this](ScriptedDialog& dialog) {
                  dialog.Pick(kElementList, 0);
                  dialog.Click(kApplyButton);
                  dialog.Type(kTilingXField, "3");
                  log.clear();
                  dialog.Click(IDOK);
              }),
              S_OK);
    EXPECT_THAT(log, ElementsAre("SetTextureDetailTiling(3.000000, none)", "RequestRedraw(8, 0)", "MakeCurrent()",
                                 "ReleaseCurrent()", "Destroy()", "DialogEnded(1)", "SetViewState(1, 2)"));
    EXPECT_EQ(Tiling(), std::pair(3.0f, 16.0f));
    EXPECT_EQ(Database(), "APPDB");
}

TEST_F(DetailDialogTest, CancelTakesBackTilingBrightnessAndElementAndNothingElse)
{
    VARIANT selector{};
    surface->SetTextureDetailFromDB(BstrHolder("u2").Get(), BstrHolder("rocks").Get(), &selector);
    SetDetail("Moss", "USERDB");
    float x = 4.0f;
    float y = 5.0f;
    surface->SetTextureDetailTiling(&x, &y);
    surface->SetTextureDetailRGBGamma(7);
    log.clear();
    EXPECT_EQ(Run([](ScriptedDialog& dialog) {
                  dialog.Pick(kDatabaseList, 0);
                  dialog.Click(kApplyButton);
                  dialog.Pick(kBrightnessList, 0);
                  dialog.Type(kTilingYField, "9");
                  dialog.Click(kShowBox);
              }),
              S_FALSE);
    const CallLog after(log.begin() + static_cast<std::ptrdiff_t>(closing), log.end());
    EXPECT_THAT(after, ElementsAre("MakeCurrent()", "ReleaseCurrent()", "Destroy()", "DialogEnded(2)",
                                   "SetTextureDetailTiling(4.000000, 5.000000)", "SetTextureDetailRGBGamma(7)",
                                   "LoadTextureFromDB(u2, rocks, user)", "ReleaseTexture(77)", "UnbindTexture()",
                                   "SetViewState(1, 2)"));
    EXPECT_EQ(Tiling(), std::pair(4.0f, 5.0f));
    EXPECT_EQ(Database(), "USERDB");
    LONG shown = 1;
    surface->IsUsingTextureDetail(&shown);
    EXPECT_EQ(shown, 0);
    // The display name of what was applied stays: the next opening looks for it.
    Run([](ScriptedDialog& dialog) { EXPECT_THAT(dialog.SelectedRows(kElementList), ElementsAre(0)); });
}

TEST_F(DetailDialogTest, ACancelWithoutAnEarlierElementLeavesWhatTheHostRefuses)
{
    host->loadResult = E_FAIL;
    EXPECT_EQ(Run([](ScriptedDialog& dialog) { dialog.Click(kApplyButton); }), S_FALSE);
    EXPECT_THAT(log, Contains("LoadTextureFromDB(, , system)"));
    EXPECT_EQ(Database(), "");
}

TEST_F(DetailDialogTest, WithoutAProgressWindowNothingIsRedrawn)
{
    host->progress = nullptr;
    EXPECT_EQ(Run([this](ScriptedDialog& dialog) {
                  EXPECT_THAT(opening, testing::Not(Contains("SetViewState(0, 8)")));
                  EXPECT_THAT(After(dialog, [](auto& it) { it.Click(kShowBox); }), ElementsAre("UseTextureDetail(0)"));
                  dialog.Click(IDOK);
              }),
              S_OK);
}

TEST_F(DetailDialogTest, ASurfaceThatIsNotWiredHasNoDialog)
{
    surface->StopServer();
    log.clear();
    EXPECT_EQ(surface->TextureDetailDlg(), E_FAIL);
    surface->InitServer();
    EXPECT_EQ(surface->TextureDetailDlg(), E_FAIL);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(DetailDialogTest, WithoutADisplayTheDialogCountsAsCancelled)
{
    SetWindowSystem(&NullWindowSystem());
    EXPECT_EQ(surface->TextureDetailDlg(), S_FALSE);
    EXPECT_THAT(log, ElementsAre("GetProgressWindow()", "SetViewState(0, 8)",
                                 "SetTextureDetailTiling(16.000000, 16.000000)", "SetTextureDetailRGBGamma(2)",
                                 "LoadTextureFromDB(, , system)", "UnbindTexture()", "SetViewState(1, 2)"));
    SetWindowSystem(&windows);
}

TEST_F(DetailDialogTest, TooltipsStandOverNineControlsAndLeadOn)
{
    Run([this](ScriptedDialog& dialog) {
        std::vector<int> controls;
        for (const auto& [control, text] : dialog.toolTips) {
            controls.push_back(control);
            EXPECT_THAT(text, testing::StartsWith("<h5>"));
        }
        EXPECT_THAT(controls, ElementsAre(208, 207, 209, 206, 201, 216, 212, 215, 205));
        EXPECT_EQ(dialog.linkMessage, 0x8100u);
        EXPECT_THAT(dialog.toolTips[6].second, testing::HasSubstr("along the X axe"));
        EXPECT_THAT(dialog.toolTips[7].second, testing::HasSubstr("along the Y axe"));
        EXPECT_EQ(dialog.toolTips[0].second, "<h5>Database</h5>\n<hr color=gray><br>Select the database you wish to "
                                             "use. <a msg=\"0\">More...</a>");
        log.clear();
        for (const char* link : {"1", "0", "7", "-1", "see http://tessara.example/help"})
            dialog.ClickLink(link);
        ASSERT_EQ(dialog.helps.size(), 2u);
        EXPECT_THAT(dialog.helps[0], testing::HasSubstr("Targa files with an alpha channel"));
        EXPECT_THAT(dialog.helps[1], testing::HasSubstr("(TGA, JPEG or BMP)"));
        EXPECT_THAT(TakeLog(), ElementsAre("OpenAddress(see http://tessara.example/help)"));

        const std::size_t relayed = dialog.relayed.size();
        dialog.active = false;
        dialog.Press('x');
        EXPECT_EQ(dialog.relayed.size(), relayed);
        dialog.active = true;
        dialog.Press('x');
        EXPECT_EQ(dialog.relayed.size(), relayed + 1);
    });
    prepare = [](ScriptedDialog& dialog) { dialog.hasToolTips = false; };
    EXPECT_EQ(Run([](ScriptedDialog& dialog) {
                  EXPECT_THAT(dialog.toolTips, IsEmpty());
                  dialog.Click(IDOK);
              }),
              S_OK);
}

TEST_F(DetailDialogTest, AShortageOfMemoryAnywhereEndsItAndLosesNothing)
{
    SetDetail("Moss", "USERDB");
    log.reserve(4096);
    std::optional<MemoryShortage> shortage;
    bool struck = true;
    windows.user = [&](ScriptedDialog& dialog) {
        dialog.Click(kImportButton);
        dialog.Pick(kElementList, 0);
        dialog.Click(kApplyButton);
        dialog.Type(kTilingXField, "2");
        dialog.Step(kTilingYSpin, 1);
        dialog.Click(kDeleteButton);
        dialog.Pick(kDatabaseList, 0);
        dialog.ClickLink("1");
        struck = shortage->Struck();
        shortage.reset();
    };
    std::size_t n = 1;
    for (; struck && n < 5000; n += n < 300 ? 1 : 7) {
        windows.answers = {IDYES, IDYES};
        windows.files = {"/pictures/ground.png"};
        user->elements = {{"u1", "Lawn"}, {"u2", "New Element"}};
        prepare = [&](ScriptedDialog&) { shortage.emplace(n); };
        EXPECT_EQ(surface->TextureDetailDlg(), S_FALSE);
        shortage.reset();
        EXPECT_EQ(Tiling(), std::pair(16.0f, 16.0f));
        EXPECT_EQ(context->References() + progress->References() + user->References(), 3u);
        log.clear();
    }
    EXPECT_GT(n, 100u);
    EXPECT_FALSE(struck);
    windows.waiting = 0;
}

}  // namespace

}  // namespace tessara::test

// Opening, listing, selecting, previewing.

#include "dialog/detail_fixture.h"
#include "dialog/detail_pictures.h"

namespace tessara::test {

namespace {

using namespace testing;

TEST_F(DetailDialogTest, OpensInOrder)
{
    RecordingGl::Get().onCall = [this](const std::string& call) { log.push_back(call); };
    EXPECT_EQ(Run(), S_FALSE);
    RecordingGl::Get().onCall = nullptr;
    ASSERT_GE(opening.size(), 33u);
    opening.resize(33);  // up to the first frame
    EXPECT_THAT(
        opening,
        ElementsAre("GetProgressWindow()", "SetViewState(0, 8)", "RunDialog(Terrain Detail)", "GetProgressWindow()",
                    "OpenTextureDatabase(system)", "SetTableName(TerrainTextureDetail)", "ListElements()",
                    "Create(24, 1, 112, 102, 1)", "UseTextureDetail(1)", "RequestRedraw(8, 0)", "MakeCurrent()",
                    "LoadPreviewTexture(k2, TerrainTextureDetail, system)", "ReleaseCurrent()", "MakeCurrent()",
                    "glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)", "glEnable(GL_TEXTURE_2D)",
                    "glBindTexture(GL_TEXTURE_2D, 31)", "glEnable(GL_BLEND)",
                    "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)", "glBegin(GL_QUADS)", "glTexCoord2f(1, 1)",
                    "glVertex3f(0, 102, 0)", "glTexCoord2f(0, 1)", "glVertex3f(112, 102, 0)", "glTexCoord2f(0, 0)",
                    "glVertex3f(112, 0, 0)", "glTexCoord2f(1, 0)", "glVertex3f(0, 0, 0)", "glEnd()",
                    "glDisable(GL_BLEND)", "glDisable(GL_TEXTURE_2D)", "ReleaseCurrent()", "SwapBuffers(0, 0)"));
    EXPECT_THAT(log, ElementsAre("MakeCurrent()", "glDisable(GL_TEXTURE_2D)", "glDeleteTextures(1, {31})",
                                 "ReleaseCurrent()", "Destroy()", "DialogEnded(2)",
                                 "SetTextureDetailTiling(16.000000, 16.000000)", "SetTextureDetailRGBGamma(2)",
                                 "LoadTextureFromDB(, , system)", "UnbindTexture()", "SetViewState(1, 2)"));
}

struct Start {
    const char* name;
    const char* database;
    FakeDatabase::Elements elements;  // of the database that is shown
    int database_row;
    std::vector<int> selected;
    std::vector<std::string> rows;
};

TEST_F(DetailDialogTest, BeginsWithTheSurfacesElement)
{
    const Start starts[] = {
        {"Moss", "USERDB", {{"a", "Lawn"}, {"b", "Moss"}}, 1, {1}, {"Lawn", "Moss"}},
        {"moss", "USERDB", {{"a", "Lawn"}, {"b", "Moss"}}, 1, {0}, {"Lawn", "Moss"}},
        {"Moss", "userdb", {{"a", "Lawn"}, {"b", "Moss"}}, 0, {1}, {"Lawn", "Moss"}},
        {"b", "", {{"a", "Lawn"}, {"b", "Moss"}}, 0, {0}, {"Lawn", "Moss"}},
        {"", "APPDB", {{"a", ""}, {"b", "Moss"}, {"c", ""}}, 0, {2}, {"a", "Moss", "c"}},
        {"Two", "APPDB", {{"a", "One"}, {"b", "Two"}, {"c", "Two"}}, 0, {2}, {"One", "Two", "Two"}},
        {"Two", "APPDB", {{"a", "One"}, {"a", "Two"}}, 0, {0}, {"One", "Two"}},
        {"", "APPDB", {}, 0, {}, {}},
    };
    for (const Start& start : starts) {
        SCOPED_TRACE(std::string(start.name) + " " + start.database);
        system->elements = user->elements = start.elements;
        SetDetail(start.name, start.database);
        surface->UseTextureDetail(0);
        Run([&](ScriptedDialog& dialog) {
            std::vector<std::string> rows;
            for (int row = 0; row < dialog.RowCount(kElementList); ++row)
                rows.push_back(dialog.RowText(kElementList, row));
            EXPECT_EQ(rows, start.rows);
            EXPECT_EQ(dialog.SelectedRows(kElementList), start.selected);
            EXPECT_EQ(dialog.CurrentRow(kDatabaseList), start.database_row);
            EXPECT_EQ(dialog.RowText(kDatabaseList, 0), "System database");
            EXPECT_EQ(dialog.RowText(kDatabaseList, 1), "User database");
            for (const int control : {kNameLabel, kNameField, kImportButton, kDeleteButton})
                EXPECT_EQ(dialog.IsEnabled(control), start.database_row == 1) << control;
            EXPECT_EQ(dialog.IsChecked(kShowBox), !start.elements.empty());
            EXPECT_EQ(dialog.GetText(kNameField), "New Element");
        });
    }
}

TEST_F(DetailDialogTest, ShowsTheSurfacesSettings)
{
    struct Shown {
        float x, y;
        int gamma;
        const char* xText;
        const char* yText;
        int row;
    };
    const Shown settings[] = {{16.0f, 16.0f, 2, "16.00", "16.00", 1},
                              {-0.125f, 1.005f, 1, "-0.12", "1.00", 0},
                              {1e6f, 0.0f, 4, "1000000.00", "0.00", 1}};
    for (Shown shown : settings) {
        surface->SetTextureDetailTiling(&shown.x, &shown.y);
        surface->SetTextureDetailRGBGamma(shown.gamma);
        Run([&](ScriptedDialog& dialog) {
            EXPECT_EQ(dialog.GetText(kTilingXField), shown.xText);
            EXPECT_EQ(dialog.GetText(kTilingYField), shown.yText);
            EXPECT_EQ(dialog.CurrentRow(kBrightnessList), shown.row);
            // The third picture of the strip, its first and its second one, without their background.
            const std::pair<int, int> pictures[] = {{kApplyButton, 32}, {kDeleteButton, 0}, {kImportButton, 16}};
            const Image strip = MakeIconStrip();
            for (const auto& [button, left] : pictures) {
                const Image& picture = dialog.images[button];
                ASSERT_EQ(picture.width, 16);
                for (int at = 0; at < 16 * 16; ++at) {
                    const std::uint8_t* pixel = picture.At(at % 16, at / 16);
                    EXPECT_TRUE(pixel[3] == 0 || std::equal(pixel, pixel + 3, strip.At(left + at % 16, at / 16)));
                }
            }
        });
    }
}

TEST_F(DetailDialogTest, TheFocusedRowIsTheOneThatCounts)
{
    SetDetail("Lawn", "USERDB");
    Run([&](ScriptedDialog& dialog) {
        log.clear();
        dialog.Click(kShowBox);
        log.clear();
        dialog.PickRows(kElementList, {0, 1, 2}, 1);
        EXPECT_THAT(TakeLog(),
                    ElementsAre("MakeCurrent()", "ReleaseCurrent()", "UseTextureDetail(1)", "RequestRedraw(8, 0)",
                                "MakeCurrent()", "LoadPreviewTexture(u2, TerrainTextureDetail, user)",
                                "ReleaseCurrent()", "MakeCurrent()", "ReleaseCurrent()", "SwapBuffers(0, 0)"));
        EXPECT_TRUE(dialog.IsChecked(kShowBox));
        dialog.Click(kApplyButton);
        EXPECT_THAT(TakeLog(),
                    ElementsAre("SetUserTextureName(Moss)", "LoadTextureFromDB(u2, TerrainTextureDetail, user)",
                                "UnbindTexture()", "RequestRedraw(8, 0)"));
        dialog.PickRows(kElementList, {}, -1);
        EXPECT_THAT(TakeLog(), ElementsAre("MakeCurrent()", "ReleaseCurrent()"));
    });
    EXPECT_EQ(RecordingGl::Get().Count("glDeleteTextures"), 2u);
}

TEST_F(DetailDialogTest, AnotherDatabaseListsAnew)
{
    SetDetail("Moss", "");
    Run([&](ScriptedDialog& dialog) {
        EXPECT_THAT(After(dialog, [](ScriptedDialog& it) { it.Pick(kDatabaseList, 1); }),
                    ElementsAre("OpenTextureDatabase(user)", "SetTableName(TerrainTextureDetail)", "ListElements()",
                                "UseTextureDetail(1)", "RequestRedraw(8, 0)",
                                "LoadPreviewTexture(u1, TerrainTextureDetail, user)"));
        EXPECT_TRUE(dialog.IsEnabled(kImportButton));
        EXPECT_EQ(user->References(), 1u);
        EXPECT_THAT(After(dialog, [](ScriptedDialog& it) { it.PickRows(kDatabaseList, {}, -1); }), IsEmpty());
    });
    user->elements.clear();
    Run([&](ScriptedDialog& dialog) {
        dialog.Click(kShowBox);
        EXPECT_THAT(After(dialog, [](ScriptedDialog& it) { it.Pick(kDatabaseList, 1); }),
                    ElementsAre("OpenTextureDatabase(user)", "SetTableName(TerrainTextureDetail)", "ListElements()"));
        EXPECT_FALSE(dialog.IsChecked(kShowBox));
        EXPECT_THAT(After(dialog, [](ScriptedDialog& it) { it.Click(kApplyButton); }),
                    Contains("LoadTextureFromDB(, TerrainTextureDetail, user)"));
        EXPECT_THAT(After(dialog, [](ScriptedDialog& it) { it.Pick(kDatabaseList, 0); }),
                    Contains("LoadPreviewTexture(k2, TerrainTextureDetail, system)"));
        EXPECT_FALSE(dialog.IsEnabled(kDeleteButton));
    });
}

TEST_F(DetailDialogTest, WithoutAPreviewTheDialogEndsAtOnceWithAMessage)
{
    const auto expectEnd = [this] {
        EXPECT_EQ(Run([](ScriptedDialog&) { FAIL() << "the dialog stayed open"; }), S_FALSE);
        EXPECT_THAT(log, Contains(testing::StartsWith("ShowMessage(Tessara, The dialog needs OpenGL")).Times(1));
        EXPECT_THAT(TakeLog(), Not(Contains("UseTextureDetail(1)")));
        EXPECT_THAT(RecordingGl::Get().log, IsEmpty());
    };
    context->createResult = E_FAIL;
    expectEnd();
    served.reset();
    expectEnd();
}

TEST_F(DetailDialogTest, APreviewThatCannotBeCurrentDrawsNothing)
{
    context->currentResult = E_FAIL;
    EXPECT_EQ(Run([](ScriptedDialog& dialog) {
                  dialog.Pick(kElementList, 0);
                  dialog.Click(IDOK);
              }),
              S_OK);
    EXPECT_THAT(RecordingGl::Get().log, IsEmpty());
}

TEST_F(DetailDialogTest, WithoutDatabasesThereIsNothingToChoose)
{
    host->systemDatabase = nullptr;
    SetDetail("Grass", "");
    Run([this](ScriptedDialog& dialog) {
        EXPECT_EQ(dialog.RowCount(kElementList), 0);
        for (const int control : {kElementList, kApplyButton, kImportButton, kDeleteButton, kNameField})
            EXPECT_FALSE(dialog.IsEnabled(control)) << control;
        dialog.Pick(kDatabaseList, 1);
        for (const int control : {kElementList, kApplyButton, kImportButton, kDeleteButton, kNameField})
            EXPECT_TRUE(dialog.IsEnabled(control)) << control;
        host->userDatabase = nullptr;
        log.clear();
        windows.answers = {IDYES};
        windows.files = {"/pictures/ground.png"};
        dialog.Click(kImportButton);
        EXPECT_THAT(log, Contains("ShowMessage(The image can't be imported: there is no user database.)"));
        dialog.Click(kDeleteButton);
        EXPECT_FALSE(dialog.IsEnabled(kDeleteButton));
        EXPECT_TRUE(dialog.IsEnabled(kTilingXField));
    });
}

TEST_F(DetailDialogTest, AHostThatGivesLessThanItShouldShowsKeysAndAnEmptyPreview)
{
    system->givesNames = false;
    host->previewTexture = 0;
    Run([](ScriptedDialog& dialog) {
        RecordingGl::Get().log.clear();
        dialog.Paint();
        EXPECT_THAT(RecordingGl::Get().log, ElementsAre("glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)"));
        EXPECT_EQ(dialog.RowText(kElementList, 0), "k1");
        EXPECT_EQ(dialog.RowText(kElementList, 1), "k2");
    });
}

}  // namespace

}  // namespace tessara::test

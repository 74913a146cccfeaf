// A project whose detail texture is gone: the load asks the user for another one.

#include "dialog/detail_fixture.h"
#include "support/fake_parser.h"

namespace tessara::test {

namespace {

using namespace testing;

class LoadingTest : public DetailDialogTest {
protected:
    LoadingTest()
    {
        parser->PutText("TEXTURE_DET_NAME", "lost");
        parser->PutText("TEXTURE_DET_TABLE", "TerrainTextureDetail");
        parser->PutText("DATABASE", "USERDB");
        parser->PutText("TEXTURE_DET_NAME_USER", "Moss");
        parser->Put<float>("DETAIL_TILINGX", 0x10, {3.0f});
        parser->Put<LONG>("IS_USING_DETAIL", 2, {0});
        host->loadResult = E_FAIL;
    }

    HRESULT Load(std::function<void(ScriptedDialog&)> act)
    {
        windows.user = std::move(act);
        const HRESULT result = surface->LoadSerializedTextures(parser.Get());
        std::erase_if(log, [](const std::string& call) { return call.find("Node") != std::string::npos; });
        return result;
    }

    std::pair<std::string, std::string> Detail()
    {
        BstrHolder name;
        BstrHolder table;
        surface->GetDBTextureDetailName(name.Out(), table.Out());
        return {name.Narrow(), table.Narrow()};
    }

    ComPtr<FakeParser> parser = MakeObject<FakeParser>(log);
};

TEST_F(LoadingTest, TheUserPicksAnotherElementAndTheLoadGoesOn)
{
    EXPECT_EQ(Load([this](ScriptedDialog& dialog) {
                  EXPECT_EQ(dialog.CurrentRow(kDatabaseList), 1);
                  EXPECT_THAT(dialog.SelectedRows(kElementList), ElementsAre(1));
                  host->loadResult = S_OK;
                  dialog.Pick(kElementList, 2);
                  dialog.Click(kApplyButton);
                  dialog.Type(kTilingYField, "7");
                  dialog.Click(IDOK);
              }),
              S_FALSE);
    EXPECT_THAT(Detail(), testing::Pair("u3", "TerrainTextureDetail"));
    EXPECT_EQ(Tiling(), std::pair(3.0f, 7.0f));  // the saved value comes after the dialog
    LONG shown = 1;
    surface->IsUsingTextureDetail(&shown);
    EXPECT_EQ(shown, 0);
    ASSERT_GE(log.size(), 4u);
    EXPECT_EQ(CallLog(log.begin(), log.begin() + 4),
              (CallLog{"LoadTextureFromDB(lost, TerrainTextureDetail, user)", "UnbindTexture()", "GetProgressWindow()",
                       "SetViewState(0, 8)"}));
}

TEST_F(LoadingTest, WhoCancelsKeepsTheProjectsReference)
{
    EXPECT_EQ(Load([](ScriptedDialog& dialog) { dialog.Click(kApplyButton); }), S_FALSE);
    EXPECT_THAT(Detail(), testing::Pair("lost", "TerrainTextureDetail"));
    EXPECT_EQ(Database(), "USERDB");
    EXPECT_THAT(log, Contains("LoadTextureFromDB(lost, TerrainTextureDetail, user)").Times(2));
}

}  // namespace

}  // namespace tessara::test

#include "persistence/records_fixture.h"
#include "support/allocation_failure.h"

#include <limits>

namespace tessara::test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class TextureRecordsTest : public RecordsTest {
protected:
    /// Puts a texture into the source slot, whose image is the one given.
    void SetSource(LONG width, LONG height, LONG bits)
    {
        surface->CreateTextureSurface3D(2);
        textures->image.width = width;
        textures->image.height = height;
        textures->image.bits = bits;
        textures->image.pixels = Pixels(width, height, bits);
        log.clear();
    }
    static std::vector<BYTE> Pixels(LONG width, LONG height, LONG bits)
    {
        std::vector<BYTE> pixels(static_cast<std::size_t>(width * height * bits / 8));
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = static_cast<BYTE>(17 * i + 1);
        return pixels;
    }
    void PutSource(LONG width, LONG height, LONG bits)
    {
        parser->Put<LONG>("TEXTURE_SRC_WIDTH", 8, {width});
        parser->Put<LONG>("TEXTURE_SRC_HEIGHT", 8, {height});
        parser->Put("TEXTURE_SRC_DATA", 0x280, Pixels(width, height, bits));
    }
    void PutDetail(const char* database)
    {
        parser->PutText("TEXTURE_DET_NAME", "key");
        parser->PutText("TEXTURE_DET_TABLE", "rocks");
        parser->PutText("TEXTURE_DET_NAME_USER", "Granite");
        parser->PutText("DATABASE", database);
    }
    std::string Text(HRESULT (CoTessara::*get)(BSTR*))
    {
        BstrHolder text;
        (surface.Get()->*get)(text.Out());
        return text.Narrow();
    }
    LONG Switch(HRESULT (CoTessara::*get)(LONG*))
    {
        LONG on = -1;
        (surface.Get()->*get)(&on);
        return on;
    }
};

TEST_F(TextureRecordsTest, WritesTheTwelveValuesInOrder)
{
    SetSource(4, 2, 32);
    PutDetail("USERDB");
    surface->LoadSerializedTextures(parser.Get());
    parser->values.clear();
    log.clear();
    float x = 3.5f;
    float y = 4.5f;
    surface->SetTextureDetailTiling(&x, &y);
    surface->SetTextureDetailRGBGamma(4);
    surface->UseTextureSource(0);
    EXPECT_EQ(surface->SerializeTextures(parser.Get()), S_OK);
    EXPECT_THAT(log, ElementsAre("ResetTextureUnit()", "BindTexture(100)", "GetTextureData(100, 0)",
                                 "AddNode(TEXTURE_SRC_WIDTH, 4, 8)", "AddNode(TEXTURE_SRC_HEIGHT, 4, 8)",
                                 "AddNode(TEXTURE_SRC_DATA, 32, 640)", "AddNode(TEXTURE_DET_NAME, 4, 64)",
                                 "AddNode(TEXTURE_DET_TABLE, 6, 64)", "AddNode(DATABASE, 7, 64)",
                                 "AddNode(TEXTURE_DET_NAME_USER, 8, 64)", "AddNode(IS_USING_DETAIL, 4, 2)",
                                 "AddNode(IS_USING_SOURCE, 4, 2)", "AddNode(DETAIL_TILINGX, 4, 16)",
                                 "AddNode(DETAIL_TILINGY, 4, 16)", "AddNode(DETAIL_RGBGAMMA, 4, 2)"));
    EXPECT_THAT(parser->Get<LONG>("TEXTURE_SRC_WIDTH"), ElementsAre(4));
    EXPECT_THAT(parser->Get<LONG>("TEXTURE_SRC_HEIGHT"), ElementsAre(2));
    EXPECT_EQ(parser->Get<BYTE>("TEXTURE_SRC_DATA"), Pixels(4, 2, 32));
    EXPECT_EQ(parser->GetText("TEXTURE_DET_NAME_USER"), "Granite");
    EXPECT_EQ(parser->GetText("DATABASE"), "USERDB");
    EXPECT_THAT(parser->Get<LONG>("IS_USING_DETAIL"), ElementsAre(1));
    EXPECT_THAT(parser->Get<LONG>("IS_USING_SOURCE"), ElementsAre(0));
    EXPECT_THAT(parser->Get<float>("DETAIL_TILINGX"), ElementsAre(3.5f));
    EXPECT_THAT(parser->Get<float>("DETAIL_TILINGY"), ElementsAre(4.5f));
    EXPECT_THAT(parser->Get<LONG>("DETAIL_RGBGAMMA"), ElementsAre(4));
}

TEST_F(TextureRecordsTest, WritesNoSourceForAnEmptySlotOrAFailedReadBack)
{
    textures->image = {8, 8, 32, Pixels(8, 8, 32), S_OK};  // what happens to be bound
    EXPECT_EQ(surface->SerializeTextures(parser.Get()), S_OK);
    EXPECT_EQ(parser->values.size(), 9u);
    EXPECT_FALSE(parser->values.contains("TEXTURE_SRC_WIDTH"));

    SetSource(8, 8, 32);
    textures->image.result = E_FAIL;
    EXPECT_EQ(surface->SerializeTextures(parser.Get()), S_OK);
    EXPECT_EQ(parser->values.size(), 9u);
    EXPECT_EQ(parser->Get<char>("TEXTURE_DET_NAME"), std::vector<char>{0}) << "an empty text is its terminator";
}

TEST_F(TextureRecordsTest, EveryDepthOfTheSourceComesBackAsItWas)
{
    for (const LONG bits : {8, 24, 32}) {
        SetSource(5, 3, bits);
        parser->values.clear();
        EXPECT_EQ(surface->SerializeTextures(parser.Get()), S_OK);
        EXPECT_EQ(parser->Get<BYTE>("TEXTURE_SRC_DATA").size(), static_cast<std::size_t>(5 * 3 * bits / 8));
        EXPECT_EQ(parser->values.size(), bits == 32 ? 12u : 13u);
        log.clear();
        EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_OK);
        EXPECT_THAT(log, Contains("CreateTexture(5, 3, " + std::to_string(bits) + ")"));
        EXPECT_EQ(textures->lastPixels, Pixels(5, 3, bits));
    }
}

TEST_F(TextureRecordsTest, AnUnstoredOrUnknownDepthIs32Bits)
{
    PutSource(5, 3, 24);
    for (const LONG bits : {0, 16, -8}) {
        if (bits != 0)
            parser->Put<LONG>("TEXTURE_SRC_BITS", 2, {bits});
        log.clear();
        EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_OK);
        EXPECT_THAT(log, Contains("CreateTexture(5, 3, 32)"));
        ASSERT_EQ(textures->lastPixels.size(), 60u);
        EXPECT_EQ(textures->lastPixels[45], 0) << "what the stored bytes don't reach";
    }
}

TEST_F(TextureRecordsTest, ReadsInOrderAndReplacesTheOldSource)
{
    SetSource(2, 2, 32);
    PutSource(2, 1, 32);
    PutDetail("USERDB");
    EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_FALSE);
    EXPECT_THAT(log,
                ElementsAre("FindNode(TEXTURE_SRC_WIDTH)", "GetNodeValue(TEXTURE_SRC_WIDTH, 2)",
                            "FindNode(TEXTURE_SRC_HEIGHT)", "GetNodeValue(TEXTURE_SRC_HEIGHT, 2)",
                            "FindNode(TEXTURE_SRC_DATA)", "GetNodeValue(TEXTURE_SRC_DATA, 128)",
                            "FindNode(TEXTURE_SRC_BITS)", "ReleaseTexture(100)", "SetElementName(TESSARA_SURFACE)",
                            "SetTextureName(key1)", "CreateTexture(2, 1, 32)", "UnbindTexture()",
                            "FindNode(TEXTURE_DET_NAME)", "GetNodeValue(TEXTURE_DET_NAME, 64)",
                            "FindNode(TEXTURE_DET_NAME_USER)", "GetNodeValue(TEXTURE_DET_NAME_USER, 64)",
                            "FindNode(TEXTURE_DET_TABLE)", "GetNodeValue(TEXTURE_DET_TABLE, 64)", "FindNode(DATABASE)",
                            "GetNodeValue(DATABASE, 64)", "LoadTextureFromDB(key, rocks, user)", "UnbindTexture()",
                            "FindNode(DETAIL_TILINGX)", "FindNode(DETAIL_TILINGY)", "FindNode(DETAIL_RGBGAMMA)",
                            "FindNode(IS_USING_DETAIL)", "FindNode(IS_USING_SOURCE)"));
    EXPECT_EQ(textures->lastPixels, Pixels(2, 1, 32));
}

TEST_F(TextureRecordsTest, TheProjectTellsWhichDatabaseHasTheDetail)
{
    for (const char* database : {"APPDB", "", "userdb"}) {
        PutDetail(database);
        EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_FALSE);
        EXPECT_THAT(TakeLog(), Contains("LoadTextureFromDB(key, rocks, system)")) << database;
        EXPECT_EQ(Text(&CoTessara::GetDataBaseSource), "APPDB");
    }
}

TEST_F(TextureRecordsTest, ALostDetailOpensTheDialogAndTheLoadGoesOn)
{
    PutDetail("USERDB");
    parser->Put<float>("DETAIL_TILINGY", 0x10, {2.5f});
    host->loadResult = E_FAIL;
    EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_FALSE);
    EXPECT_THAT(log, Contains("TextureDetailDlg()").Times(1));
    EXPECT_EQ(Text(&CoTessara::GetDataBaseSource), "USERDB");
    float x = 0.0f;
    float y = 0.0f;
    surface->GetTextureDetailTiling(&x, &y);
    EXPECT_EQ(x, 16.0f);
    EXPECT_EQ(y, 2.5f);
}

TEST_F(TextureRecordsTest, WithoutKeyOrTableThereIsNoDetailToLoad)
{
    for (const char* empty : {"TEXTURE_DET_NAME", "TEXTURE_DET_TABLE"}) {
        PutDetail("APPDB");
        parser->PutText(empty, "");
        EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_OK);
        EXPECT_THAT(TakeLog(), Not(Contains("LoadTextureFromDB(key, rocks, system)")));
        surface->SetDataBaseSource(nullptr);
    }
}

TEST_F(TextureRecordsTest, SwitchesAreOnWhereAProjectHasNone)
{
    const auto load = [this](LONG before) {
        surface->UseTextureDetail(before);
        surface->UseTextureSource(before);
        surface->LoadSerializedTextures(parser.Get());
        return std::pair(Switch(&CoTessara::IsUsingTextureDetail), Switch(&CoTessara::IsUsingTextureSource));
    };
    EXPECT_EQ(load(0), std::pair(1, 1));
    parser->Put<LONG>("IS_USING_DETAIL", 2, {0});
    parser->Put<LONG>("IS_USING_SOURCE", 2, {-3});
    EXPECT_EQ(load(1), std::pair(0, 1));
    EXPECT_EQ(load(0), std::pair(0, 1));
    parser->unreadable = {"IS_USING_DETAIL", "IS_USING_SOURCE"};
    EXPECT_EQ(load(0), std::pair(0, 0));
    EXPECT_EQ(load(1), std::pair(1, 1));
}

TEST_F(TextureRecordsTest, SettingsWithoutAUsableValueStay)
{
    float x = 5.0f;
    float y = 6.0f;
    surface->SetTextureDetailTiling(&x, &y);
    surface->SetTextureDetailRGBGamma(1);
    parser->Put<float>("DETAIL_TILINGX", 0x10, {std::numeric_limits<float>::quiet_NaN()});
    parser->Put<float>("DETAIL_TILINGY", 0x10, {9.0f});
    parser->Put<LONG>("DETAIL_RGBGAMMA", 2, {4});
    parser->uncounted = {"DETAIL_TILINGY", "DETAIL_RGBGAMMA"};
    surface->LoadSerializedTextures(parser.Get());
    int gamma = 0;
    surface->GetTextureDetailTiling(&x, &y);
    surface->GetTextureDetailRGBGamma(&gamma);
    EXPECT_EQ(x, 5.0f);
    EXPECT_EQ(y, 6.0f);
    EXPECT_EQ(gamma, 1);
}

TEST_F(TextureRecordsTest, ASourceWithoutUsablePixelsLeavesTheSlotAlone)
{
    SetSource(2, 2, 32);
    for (const char* lost : {"TEXTURE_SRC_WIDTH", "TEXTURE_SRC_HEIGHT", "TEXTURE_SRC_DATA"}) {
        for (const bool missing : {true, false}) {
            PutSource(2, 2, 32);
            parser->unreadable.clear();
            if (missing)
                parser->values.erase(lost);
            else
                parser->unreadable.insert(lost);
            EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_OK);
            const CallLog calls = TakeLog();
            EXPECT_THAT(calls, Not(Contains("ReleaseTexture(100)"))) << lost;
            EXPECT_THAT(calls, Contains("FindNode(TEXTURE_SRC_DATA)").Times(std::string(lost) == "TEXTURE_SRC_DATA"))
                << lost;
        }
    }
}

TEST_F(TextureRecordsTest, AFailedCreateEndsTheLoad)
{
    SetSource(2, 2, 32);
    PutSource(2, 2, 32);
    PutDetail("APPDB");
    textures->createResult = E_FAIL;
    EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), E_FAIL);
    EXPECT_THAT(TakeLog(), Not(Contains("FindNode(TEXTURE_DET_NAME)")));
    EXPECT_EQ(surface->ActivateSourceTexture(), E_FAIL) << "the slot is empty";
}

TEST_F(TextureRecordsTest, ImpossibleImageSizesFailWithTheSlotAsItWas)
{
    SetSource(2, 2, 32);
    const std::pair<LONG, LONG> sizes[] = {{-2, 2}, {2, -2}, {65536, 65536}, {INT32_MIN, INT32_MIN}};
    for (const auto& [width, height] : sizes) {
        PutSource(2, 2, 32);
        parser->Put<LONG>("TEXTURE_SRC_WIDTH", 8, {width});
        parser->Put<LONG>("TEXTURE_SRC_HEIGHT", 8, {height});
        EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), E_FAIL);
    }
    PutSource(20, 20, 32);
    {
        const RefusedSize refused(1600);
        EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), E_FAIL);
    }
    EXPECT_THAT(TakeLog(), Not(Contains("ReleaseTexture(100)")));
}

TEST_F(TextureRecordsTest, CutsTextThatNoReaderHasRoomForBetweenCharacters)
{
    const auto saved = [this](const std::string& text) {
        const BstrHolder name(text);
        surface->SetUserTextureName(name.Get());
        surface->SerializeTextures(parser.Get());
        return parser->Get<char>("TEXTURE_DET_NAME_USER");
    };
    EXPECT_EQ(saved(std::string(1023, 'x')).size(), 1024u);
    EXPECT_EQ(saved(std::string(1024, 'x')).size(), 1024u);
    const std::vector<char> cut = saved(std::string(1022, 'x') + "\u00e4");  // two bytes that begin at the last one
    EXPECT_EQ(cut.size(), 1023u);
    EXPECT_EQ(cut[1021], 'x');
    EXPECT_EQ(cut.back(), 0);
}

TEST_F(TextureRecordsTest, ReadsTextThatHasNoEnd)
{
    parser->Put("TEXTURE_DET_NAME_USER", 0x40, std::vector<char>(1024, 'x'));
    surface->LoadSerializedTextures(parser.Get());
    surface->SerializeTextures(parser.Get());
    EXPECT_EQ(parser->Get<char>("TEXTURE_DET_NAME_USER").size(), 1024u);
}

TEST_F(TextureRecordsTest, AHostWithoutTexturesSavesTheSettings)
{
    host->textures = nullptr;
    const auto plain = MakeObject<CoTessara>();
    plain->InitServer();
    plain->SetKVO(host.Get());
    EXPECT_EQ(plain->SerializeTextures(parser.Get()), S_OK);
    EXPECT_EQ(parser->values.size(), 9u);
    EXPECT_EQ(plain->LoadSerializedTextures(parser.Get()), S_OK);
    PutSource(2, 2, 32);
    EXPECT_EQ(plain->LoadSerializedTextures(parser.Get()), E_FAIL);
    plain->StopServer();
}

}  // namespace

}  // namespace tessara::test

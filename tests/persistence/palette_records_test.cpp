#include "persistence/records_fixture.h"

#include <limits>

namespace tessara::test {

namespace {

using testing::Each;
using testing::ElementsAre;

class PaletteRecordsTest : public RecordsTest {
protected:
    /// A palette with a colour of its own in every entry.
    void PutPalette(float low, float high)
    {
        std::vector<BYTE> levels(256);
        for (std::size_t i = 0; i < levels.size(); ++i)
            levels[i] = static_cast<BYTE>(255 - i);
        parser->Put("PALETTE_INFO_RED", 0x80, levels);
        parser->Put("PALETTE_INFO_GREEN", 0x80, std::vector<BYTE>(256, 7));
        parser->Put("PALETTE_INFO_BLUE", 0x80, std::vector<BYTE>(256, 9));
        std::vector<LONG> flags(256, 0);
        flags[3] = 7;
        parser->Put("PALETTE_INFO_ARRAY_NODE", 2, flags);
        parser->Put<float>("PALETTE_INFO_MIN_ELV", 0x10, {low});
        parser->Put<float>("PALETTE_INFO_MAX_ELV", 0x10, {high});
    }
    ElevationPalette& Palette() { return *matrix->palette; }
};

TEST_F(PaletteRecordsTest, WritesTheSixValuesInOrder)
{
    Palette().SetGreen(10, 1);
    Palette().SetBlue(10, 2);
    Palette().minElevation = 5;
    EXPECT_EQ(surface->SerializePalette(parser.Get()), S_OK);
    EXPECT_THAT(TakeParserCalls(),
                ElementsAre("AddNode(PALETTE_INFO_RED, 256, 128)", "AddNode(PALETTE_INFO_GREEN, 256, 128)",
                            "AddNode(PALETTE_INFO_BLUE, 256, 128)", "AddNode(PALETTE_INFO_ARRAY_NODE, 1024, 2)",
                            "AddNode(PALETTE_INFO_MIN_ELV, 4, 16)", "AddNode(PALETTE_INFO_MAX_ELV, 4, 16)"));
    EXPECT_EQ(parser->Get<BYTE>("PALETTE_INFO_RED")[228], 196);
    EXPECT_EQ(parser->Get<BYTE>("PALETTE_INFO_GREEN")[10], 1);
    EXPECT_EQ(parser->Get<BYTE>("PALETTE_INFO_BLUE")[10], 2);
    EXPECT_EQ(parser->Get<LONG>("PALETTE_INFO_ARRAY_NODE")[50], 1);
    EXPECT_EQ(parser->Get<LONG>("PALETTE_INFO_ARRAY_NODE")[51], 0);
    EXPECT_THAT(parser->Get<float>("PALETTE_INFO_MIN_ELV"), ElementsAre(5.0f));
    EXPECT_THAT(parser->Get<float>("PALETTE_INFO_MAX_ELV"), ElementsAre(255.0f));
}

TEST_F(PaletteRecordsTest, ReadsTheColoursAsTheyAreAndLeavesTheNodeList)
{
    PutPalette(10.0f, 100.75f);
    EXPECT_EQ(surface->LoadSerializedPalette(parser.Get()), S_OK);
    EXPECT_THAT(TakeParserCalls(),
                ElementsAre("FindNode(PALETTE_INFO_RED)", "GetNodeValue(PALETTE_INFO_RED, 128)",
                            "FindNode(PALETTE_INFO_GREEN)", "GetNodeValue(PALETTE_INFO_GREEN, 128)",
                            "FindNode(PALETTE_INFO_BLUE)", "GetNodeValue(PALETTE_INFO_BLUE, 128)",
                            "FindNode(PALETTE_INFO_ARRAY_NODE)", "GetNodeValue(PALETTE_INFO_ARRAY_NODE, 2)",
                            "FindNode(PALETTE_INFO_MIN_ELV)", "GetNodeValue(PALETTE_INFO_MIN_ELV, 2)",
                            "FindNode(PALETTE_INFO_MAX_ELV)", "GetNodeValue(PALETTE_INFO_MAX_ELV, 2)"));
    EXPECT_EQ(Palette().red[0], 255);
    EXPECT_EQ(Palette().red[255], 0);
    EXPECT_EQ(Palette().green[128], 7);
    EXPECT_EQ(Palette().blue[128], 9);
    EXPECT_EQ(Palette().nodeFlags[3], 1);
    EXPECT_EQ(Palette().nodeFlags[50], 0);
    EXPECT_THAT(Palette().nodes, ElementsAre(0, 50, 200, 255));
    EXPECT_EQ(Palette().minElevation, 10);
    EXPECT_EQ(Palette().maxElevation, 100);
}

TEST_F(PaletteRecordsTest, AnyValueThatIsntThereLeavesThePaletteAlone)
{
    for (const char* name : {"PALETTE_INFO_RED", "PALETTE_INFO_GREEN", "PALETTE_INFO_BLUE", "PALETTE_INFO_ARRAY_NODE",
                             "PALETTE_INFO_MIN_ELV", "PALETTE_INFO_MAX_ELV"}) {
        for (const int how : {0, 1, 2}) {
            PutPalette(0.0f, 100.0f);
            parser->unreadable.clear();
            parser->uncounted.clear();
            if (how == 0)
                parser->values.erase(name);
            else
                (how == 1 ? parser->unreadable : parser->uncounted).insert(name);
            EXPECT_EQ(surface->LoadSerializedPalette(parser.Get()), S_OK);
            EXPECT_EQ(TakeParserCalls().back().find("PALETTE_INFO_MAX") != std::string::npos,
                      std::string(name) == "PALETTE_INFO_MAX_ELV")
                << "stops at once at " << name;
            EXPECT_EQ(Palette().GetRed(228), 196) << name;
            EXPECT_EQ(Palette().nodeFlags[50], 1) << name;
            EXPECT_EQ(Palette().maxElevation, 255) << name;
        }
    }
}

TEST_F(PaletteRecordsTest, BringsARangeIntoTheTable)
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    const struct {
        float low, high;
        std::int32_t first, last;
    } cases[] = {{0.0f, 255.0f, 0, 255},   {0.9f, 254.9f, 0, 254}, {-7.0f, 1e30f, 0, 255},
                 {none, none, 0, 255},     {3.0f, none, 3, 255},   {-endless, endless, 0, 255},
                 {200.0f, 100.0f, 0, 255}, {77.0f, 77.0f, 77, 77}, {300.0f, 400.0f, 255, 255},
                 {-400.0f, -300.0f, 0, 0}};
    for (const auto& c : cases) {
        PutPalette(c.low, c.high);
        surface->LoadSerializedPalette(parser.Get());
        EXPECT_EQ(Palette().minElevation, c.first) << c.low << " to " << c.high;
        EXPECT_EQ(Palette().maxElevation, c.last) << c.low << " to " << c.high;
    }
}

TEST_F(PaletteRecordsTest, CompletesAPaletteWithFewerEntries)
{
    Palette().maxElevation = 9;
    Palette().ResetRamp();
    ASSERT_EQ(Palette().red.size(), 10u);
    EXPECT_EQ(surface->SerializePalette(parser.Get()), S_OK);
    EXPECT_EQ(parser->Get<BYTE>("PALETTE_INFO_RED")[200], 255);
    EXPECT_EQ(parser->Get<LONG>("PALETTE_INFO_ARRAY_NODE")[200], 0);
    PutPalette(0.0f, 255.0f);
    EXPECT_EQ(surface->LoadSerializedPalette(parser.Get()), S_OK);
    EXPECT_EQ(Palette().GetRed(254), 1);
}

TEST_F(PaletteRecordsTest, TellsAMissingMatrixFromAMissingPalette)
{
    matrix->palette = nullptr;
    EXPECT_EQ(surface->SerializePalette(parser.Get()), E_FAIL);
    EXPECT_EQ(surface->LoadSerializedPalette(parser.Get()), E_FAIL);
    const auto bare = MakeObject<CoTessara>();
    bare->InitServer();
    EXPECT_EQ(bare->SerializePalette(parser.Get()), S_OK);
    EXPECT_EQ(bare->LoadSerializedPalette(parser.Get()), E_FAIL);
    EXPECT_THAT(TakeParserCalls(), ElementsAre());
    bare->StopServer();
}

}  // namespace

}  // namespace tessara::test

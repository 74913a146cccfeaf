#include "persistence/saved_matrix.h"
#include "persistence/saved_palette.h"
#include "persistence/saved_properties.h"
#include "persistence/saved_textures.h"
#include "support/saved_project.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
constexpr float kEndless = std::numeric_limits<float>::infinity();

class SavedStructsTest : public testing::Test {
protected:
    SavedStructsTest() { PutProject(*parser); }

    SavedTextures Textures(SavedTexturesReader& reader)
    {
        SavedTextures saved;
        SavedImage image;
        if (reader.FindSource(image) && reader.ReadSource(image))
            saved.source = image;
        saved.detail = reader.ReadDetail();
        saved.settings = reader.ReadSettings();
        return saved;
    }
    /// Loads all groups and saves them into another place.
    FakeParser::Values Copied()
    {
        const auto copy = MakeObject<FakeParser>(log);
        SavedProperties::Read(*parser).Write(*copy);
        if (SavedMatrix matrix; matrix.Read(*parser))
            matrix.Write(*copy);
        if (SavedPalette palette; palette.Read(*parser))
            palette.Write(*copy);
        SavedTexturesReader reader(*parser);
        Textures(reader).Write(*copy);
        return copy->values;
    }

    CallLog log;
    ComPtr<FakeParser> parser = MakeObject<FakeParser>(log);
};

TEST_F(SavedStructsTest, EveryValueIsReadAndWrittenInItsOrderUnderItsCodes)
{
    EXPECT_TRUE(Copied() == parser->values);
    const auto calls = [this](const char* kind) {
        CallLog found;
        std::copy_if(log.begin(), log.end(), std::back_inserter(found),
                     [kind](const std::string& call) { return call.starts_with(kind); });
        return found;
    };
    EXPECT_THAT(calls("GetNodeValue"),
                ElementsAreArray({"GetNodeValue(KVOxml_LOD, 16)",          "GetNodeValue(TRANSLATION, 16)",
                                  "GetNodeValue(ELEVATION_SCALE, 16)",     "GetNodeValue(MATRIX_WIDTH, 8)",
                                  "GetNodeValue(MATRIX_HEIGHT, 8)",        "GetNodeValue(MAX_ELEVATION, 16)",
                                  "GetNodeValue(MIN_ELEVATION, 16)",       "GetNodeValue(MATRIX_DATA, 16)",
                                  "GetNodeValue(PALETTE_INFO_RED, 128)",   "GetNodeValue(PALETTE_INFO_GREEN, 128)",
                                  "GetNodeValue(PALETTE_INFO_BLUE, 128)",  "GetNodeValue(PALETTE_INFO_ARRAY_NODE, 2)",
                                  "GetNodeValue(PALETTE_INFO_MIN_ELV, 2)", "GetNodeValue(PALETTE_INFO_MAX_ELV, 2)",
                                  "GetNodeValue(TEXTURE_SRC_WIDTH, 2)",    "GetNodeValue(TEXTURE_SRC_HEIGHT, 2)",
                                  "GetNodeValue(TEXTURE_SRC_DATA, 128)",   "GetNodeValue(TEXTURE_SRC_BITS, 2)",
                                  "GetNodeValue(TEXTURE_DET_NAME, 64)",    "GetNodeValue(TEXTURE_DET_NAME_USER, 64)",
                                  "GetNodeValue(TEXTURE_DET_TABLE, 64)",   "GetNodeValue(DATABASE, 64)",
                                  "GetNodeValue(DETAIL_TILINGX, 16)",      "GetNodeValue(DETAIL_TILINGY, 16)",
                                  "GetNodeValue(DETAIL_RGBGAMMA, 2)",      "GetNodeValue(IS_USING_DETAIL, 2)",
                                  "GetNodeValue(IS_USING_SOURCE, 2)"}));
    EXPECT_EQ(calls("FindNode").size(), parser->values.size());
    EXPECT_THAT(calls("AddNode"), ElementsAreArray({"AddNode(KVOxml_LOD, 4, 16)",
                                                    "AddNode(TRANSLATION, 12, 16)",
                                                    "AddNode(ELEVATION_SCALE, 4, 16)",
                                                    "AddNode(MIN_ELEVATION, 4, 16)",
                                                    "AddNode(MAX_ELEVATION, 4, 16)",
                                                    "AddNode(MATRIX_WIDTH, 4, 8)",
                                                    "AddNode(MATRIX_HEIGHT, 4, 8)",
                                                    "AddNode(MATRIX_DATA, 24, 16)",
                                                    "AddNode(PALETTE_INFO_RED, 256, 128)",
                                                    "AddNode(PALETTE_INFO_GREEN, 256, 128)",
                                                    "AddNode(PALETTE_INFO_BLUE, 256, 128)",
                                                    "AddNode(PALETTE_INFO_ARRAY_NODE, 1024, 2)",
                                                    "AddNode(PALETTE_INFO_MIN_ELV, 4, 16)",
                                                    "AddNode(PALETTE_INFO_MAX_ELV, 4, 16)",
                                                    "AddNode(TEXTURE_SRC_WIDTH, 4, 8)",
                                                    "AddNode(TEXTURE_SRC_HEIGHT, 4, 8)",
                                                    "AddNode(TEXTURE_SRC_DATA, 4, 640)",
                                                    "AddNode(TEXTURE_DET_NAME, 42, 64)",
                                                    "AddNode(TEXTURE_DET_TABLE, 44, 64)",
                                                    "AddNode(DATABASE, 7, 64)",
                                                    "AddNode(TEXTURE_DET_NAME_USER, 51, 64)",
                                                    "AddNode(IS_USING_DETAIL, 4, 2)",
                                                    "AddNode(IS_USING_SOURCE, 4, 2)",
                                                    "AddNode(DETAIL_TILINGX, 4, 16)",
                                                    "AddNode(DETAIL_TILINGY, 4, 16)",
                                                    "AddNode(DETAIL_RGBGAMMA, 4, 2)",
                                                    "AddNode(TEXTURE_SRC_BITS, 4, 2)"}));
}

TEST_F(SavedStructsTest, AnyValueThatCantBeReadIsLeftOutOrHasItsDefault)
{
    const auto floats = [](std::initializer_list<float> numbers) { return FakeParser::BytesOf(numbers); };
    const std::vector<BYTE> on = {1, 0, 0, 0};
    const struct {
        const char* name;
        std::vector<BYTE> missing;     // what stands in for one that is missing; nothing: it is left out
        std::vector<BYTE> unreadable;  // likewise
        const char* group = "none";    // values that are left out with it begin so
    } cases[] = {
        {"KVOxml_LOD", floats({300.0f}), floats({300.0f})},
        {"TRANSLATION", floats({0.0f, 0.0f, 0.0f}), floats({0.0f, 0.0f, 0.0f})},
        {"ELEVATION_SCALE", floats({3.0f}), floats({30.0f})},
        {"MIN_ELEVATION", floats({0.0f}), floats({0.0f})},  // not set
        {"MAX_ELEVATION", floats({0.0f}), floats({0.0f})},
        {"MATRIX_WIDTH", {}, {}, "M"},
        {"MATRIX_HEIGHT", {}, {}, "M"},
        {"MATRIX_DATA", {}, {}, "M"},
        {"PALETTE_INFO_RED", {}, {}, "PALETTE"},
        {"PALETTE_INFO_GREEN", {}, {}, "PALETTE"},
        {"PALETTE_INFO_BLUE", {}, {}, "PALETTE"},
        {"PALETTE_INFO_ARRAY_NODE", {}, {}, "PALETTE"},
        {"PALETTE_INFO_MIN_ELV", {}, {}, "PALETTE"},
        {"PALETTE_INFO_MAX_ELV", {}, {}, "PALETTE"},
        {"TEXTURE_SRC_WIDTH", {}, {}, "TEXTURE_SRC"},
        {"TEXTURE_SRC_HEIGHT", {}, {}, "TEXTURE_SRC"},
        {"TEXTURE_SRC_DATA", {}, {}, "TEXTURE_SRC"},
        {"TEXTURE_DET_NAME", {}, {}},
        {"TEXTURE_DET_TABLE", {}, {}},
        {"DATABASE", {}, {}},
        {"TEXTURE_DET_NAME_USER", {}, {}},
        {"IS_USING_DETAIL", on, {}},
        {"IS_USING_SOURCE", on, {}},
        {"DETAIL_TILINGX", {}, {}},
        {"DETAIL_TILINGY", {}, {}},
        {"DETAIL_RGBGAMMA", {}, {}},
    };
    const auto whole = parser->values;
    for (const auto& c : cases) {
        for (const int how : {0, 1, 2}) {
            parser->values = whole;
            parser->unreadable.clear();
            parser->uncounted.clear();
            if (how == 0)
                parser->values.erase(c.name);
            else
                (how == 1 ? parser->unreadable : parser->uncounted).insert(c.name);
            auto expected = whole;
            std::erase_if(expected, [&c](const auto& value) {
                return value.first == c.name || value.first.starts_with(c.group) ||
                       (c.group[0] == 'M' && value.first.find("_ELEVATION") != std::string::npos);
            });
            const std::vector<BYTE>& instead = how == 0 ? c.missing : c.unreadable;
            if (!instead.empty())
                expected[c.name] = {whole.at(c.name).typeCode, instead};
            EXPECT_TRUE(Copied() == expected) << c.name << ' ' << how;
        }
    }
}

TEST_F(SavedStructsTest, NumbersThatNobodyCanWorkWithBecomeUsableOnes)
{
    const struct {
        const char* name;
        float holds, becomes;
    } cases[] = {{"KVOxml_LOD", kNone, 300.0f},          {"KVOxml_LOD", -3e38f, -1e18f},
                 {"TRANSLATION", kEndless, 0.0f},        {"TRANSLATION", 3e38f, 1e18f},
                 {"ELEVATION_SCALE", -kEndless, 30.0f},  {"ELEVATION_SCALE", 3e38f, 1e18f},
                 {"DETAIL_TILINGY", 3e38f, 1e18f},       {"MATRIX_DATA", kNone, 0.0f},
                 {"MATRIX_DATA", kEndless, 0.0f},        {"MATRIX_DATA", -3e38f, -1e9f},
                 {"MATRIX_DATA", 8848.86f, 8848.86f},    {"MATRIX_DATA", -1e-40f, -1e-40f},
                 {"PALETTE_INFO_MIN_ELV", -7.9f, -7.9f}, {"MAX_ELEVATION", -3e38f, -1e18f}};
    const auto whole = parser->values;
    for (const auto& c : cases) {
        parser->values = whole;
        std::memcpy(parser->values[c.name].bytes.data(), &c.holds, sizeof c.holds);
        float found = 0.0f;
        std::memcpy(&found, Copied()[c.name].bytes.data(), sizeof found);
        EXPECT_EQ(found, c.becomes) << c.name;
    }
    std::memcpy(parser->values["DETAIL_TILINGX"].bytes.data(), &kNone, sizeof kNone);
    EXPECT_FALSE(Copied().contains("DETAIL_TILINGX"));
}

TEST_F(SavedStructsTest, SizesThatNoBlockHasAreNone)
{
    const std::pair<LONG, LONG> sizes[] = {
        {0, 2}, {2, 0}, {-2, 2}, {-2, -2}, {65536, 65537}, {INT32_MAX, INT32_MAX}, {INT32_MIN, INT32_MIN}};
    for (const auto& [width, height] : sizes) {
        parser->Put<LONG>("MATRIX_WIDTH", 8, {width});
        parser->Put<LONG>("MATRIX_HEIGHT", 8, {height});
        SavedMatrix matrix;
        EXPECT_FALSE(matrix.Read(*parser));
        EXPECT_FALSE(matrix.ReadFrame(*parser));
        EXPECT_EQ(matrix.width, 0);
        parser->Put<LONG>("TEXTURE_SRC_WIDTH", 8, {width});
        parser->Put<LONG>("TEXTURE_SRC_HEIGHT", 8, {height});
        SavedTexturesReader reader(*parser);
        SavedImage image;
        if (reader.FindSource(image)) {
            EXPECT_THROW(reader.ReadSource(image), std::length_error);
        } else {
            EXPECT_TRUE(width == 0 || height == 0);
        }
    }
}

TEST_F(SavedStructsTest, AnImageWithoutAKnownDepthHas32Bits)
{
    for (const LONG bits : {8, 24, 32, 0, 16, -8}) {
        if (bits == 0)
            parser->values.erase("TEXTURE_SRC_BITS");
        else
            parser->Put<LONG>("TEXTURE_SRC_BITS", 2, {bits});
        SavedTexturesReader reader(*parser);
        SavedImage image;
        ASSERT_TRUE(reader.FindSource(image) && reader.ReadSource(image));
        EXPECT_EQ(image.bits, bits == 8 || bits == 24 ? bits : 32);
        ASSERT_EQ(image.pixels.size(), static_cast<std::size_t>(image.bits / 2));
        EXPECT_EQ(image.pixels[3], 203);
        EXPECT_TRUE(image.bits == 8 || image.pixels[4] == 0) << "what the stored bytes don't reach";
    }
}

TEST_F(SavedStructsTest, TextsAreCutBetweenCharactersAndEndWithTheirBuffer)
{
    const auto saved = [this](const std::string& text) {
        SavedTextures textures;
        textures.detail.displayName = text;
        textures.Write(*parser);
        return parser->Get<char>("TEXTURE_DET_NAME_USER");
    };
    EXPECT_EQ(saved(std::string(1023, 'x')).size(), 1024u);
    EXPECT_EQ(saved(std::string(1024, 'x')).size(), 1024u);
    EXPECT_THAT(saved(""), ElementsAre(0)) << "an empty text is its terminator";
    const std::vector<char> cut = saved(std::string(1022, 'x') + "\u00e4");  // two bytes that begin at the last one
    EXPECT_EQ(cut.size(), 1023u);
    EXPECT_EQ(cut[1021], 'x');
    EXPECT_EQ(cut.back(), 0);
    parser->Put("TEXTURE_DET_NAME_USER", 0x40, std::vector<char>(1024, 'y'));
    SavedTexturesReader reader(*parser);
    EXPECT_EQ(reader.ReadDetail().displayName, std::string(1023, 'y')) << "a text without an end";
}

}  // namespace

}  // namespace tessara::test

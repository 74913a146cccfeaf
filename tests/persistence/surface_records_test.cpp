#include "persistence/records_fixture.h"

#include <limits>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::FloatEq;

class SurfaceRecordsTest : public RecordsTest {};

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();

TEST_F(SurfaceRecordsTest, WritesItsThreePropertiesInOrder)
{
    surface->SetLOD(7.5f);
    surface->SetTranslation3D(1.0f, -2.0f, 3.0f);
    surface->SetElevationScale(0.25f);
    EXPECT_EQ(surface->SerializeSurfaceProperties(parser.Get()), S_OK);
    EXPECT_THAT(TakeParserCalls(), ElementsAre("AddNode(KVOxml_LOD, 4, 16)", "AddNode(TRANSLATION, 12, 16)",
                                               "AddNode(ELEVATION_SCALE, 4, 16)"));
    EXPECT_THAT(parser->Get<float>("KVOxml_LOD"), ElementsAre(7.5f));
    EXPECT_THAT(parser->Get<float>("TRANSLATION"), ElementsAre(1.0f, -2.0f, 3.0f));
    EXPECT_THAT(parser->Get<float>("ELEVATION_SCALE"), ElementsAre(0.25f));
}

TEST_F(SurfaceRecordsTest, SavesTheLastScaleThatWasSetNotTheTerrainsOwn)
{
    surface->SerializeSurfaceProperties(parser.Get());
    EXPECT_THAT(parser->Get<float>("ELEVATION_SCALE"), ElementsAre(0.0f));
}

TEST_F(SurfaceRecordsTest, ReadsThemInOrderUnderTheSameTypeCodes)
{
    parser->Put<float>("KVOxml_LOD", 0x10, {12.0f});
    parser->Put<float>("TRANSLATION", 0x10, {4.0f, 5.0f, 6.0f});
    parser->Put<float>("ELEVATION_SCALE", 0x10, {0.5f});
    EXPECT_EQ(surface->LoadSerializedSurfaceProperties(parser.Get()), S_OK);
    EXPECT_THAT(TakeParserCalls(), ElementsAre("FindNode(KVOxml_LOD)", "GetNodeValue(KVOxml_LOD, 16)",
                                               "FindNode(TRANSLATION)", "GetNodeValue(TRANSLATION, 16)",
                                               "FindNode(ELEVATION_SCALE)", "GetNodeValue(ELEVATION_SCALE, 16)"));
    EXPECT_EQ(Lod(), 12.0f);
    EXPECT_THAT(Translation(), ElementsAre(4.0f, 5.0f, 6.0f));
    EXPECT_EQ(SavedScale(), 0.5f);
}

/// One property that is missing, unreadable or bad, and what the three are after the load.
struct Fallback {
    const char* name;
    enum { Missing, Unreadable, Uncounted, Holds } how;
    float holds;
    float lod;
    float x;
    float scale;
};

class SurfaceFallbackTest : public SurfaceRecordsTest, public testing::WithParamInterface<Fallback> {};

TEST_P(SurfaceFallbackTest, TakesTheValueThatStandsInForABadOne)
{
    const Fallback& bad = GetParam();
    surface->SetLOD(1.0f);
    surface->SetTranslation3D(8.0f, 8.0f, 8.0f);
    surface->SetElevationScale(1.0f);
    parser->Put<float>("KVOxml_LOD", 0x10, {12.0f});
    parser->Put<float>("TRANSLATION", 0x10, {4.0f, 4.0f, 4.0f});
    parser->Put<float>("ELEVATION_SCALE", 0x10, {0.5f});
    if (bad.how == Fallback::Missing)
        parser->values.erase(bad.name);
    else if (bad.how == Fallback::Unreadable)
        parser->unreadable.insert(bad.name);
    else if (bad.how == Fallback::Uncounted)
        parser->uncounted.insert(bad.name);
    else
        std::memcpy(parser->values[bad.name].bytes.data(), &bad.holds, sizeof bad.holds);
    EXPECT_EQ(surface->LoadSerializedSurfaceProperties(parser.Get()), S_OK);
    EXPECT_EQ(Lod(), bad.lod);
    EXPECT_EQ(Translation()[0], bad.x);
    EXPECT_EQ(SavedScale(), bad.scale);
}

INSTANTIATE_TEST_SUITE_P(Properties, SurfaceFallbackTest,
                         testing::Values(Fallback{"KVOxml_LOD", Fallback::Missing, 0.0f, 300.0f, 4.0f, 0.5f},
                                         Fallback{"KVOxml_LOD", Fallback::Unreadable, 0.0f, 300.0f, 4.0f, 0.5f},
                                         Fallback{"KVOxml_LOD", Fallback::Uncounted, 0.0f, 300.0f, 4.0f, 0.5f},
                                         Fallback{"KVOxml_LOD", Fallback::Holds, kNoNumber, 300.0f, 4.0f, 0.5f},
                                         Fallback{"KVOxml_LOD", Fallback::Holds, -3e38f, -1e18f, 4.0f, 0.5f},
                                         Fallback{"TRANSLATION", Fallback::Missing, 0.0f, 12.0f, 0.0f, 0.5f},
                                         Fallback{"TRANSLATION", Fallback::Unreadable, 0.0f, 12.0f, 0.0f, 0.5f},
                                         Fallback{"TRANSLATION", Fallback::Holds, kInfinity, 12.0f, 0.0f, 0.5f},
                                         Fallback{"ELEVATION_SCALE", Fallback::Missing, 0.0f, 12.0f, 4.0f, 3.0f},
                                         Fallback{"ELEVATION_SCALE", Fallback::Unreadable, 0.0f, 12.0f, 4.0f, 30.0f},
                                         Fallback{"ELEVATION_SCALE", Fallback::Uncounted, 0.0f, 12.0f, 4.0f, 30.0f},
                                         Fallback{"ELEVATION_SCALE", Fallback::Holds, kInfinity, 12.0f, 4.0f, 30.0f},
                                         Fallback{"ELEVATION_SCALE", Fallback::Holds, 3e38f, 12.0f, 4.0f, 1e18f}));

TEST_F(SurfaceRecordsTest, EveryMethodWantsAParser)
{
    EXPECT_EQ(surface->SerializeSurfaceProperties(nullptr), E_FAIL);
    EXPECT_EQ(surface->SerializeMatrix(nullptr), E_FAIL);
    EXPECT_EQ(surface->SerializePalette(nullptr), E_FAIL);
    EXPECT_EQ(surface->SerializeTextures(nullptr), E_FAIL);
    EXPECT_EQ(surface->LoadSerializedSurfaceProperties(nullptr), E_FAIL);
    EXPECT_EQ(surface->LoadSerializedMatrix(nullptr), E_FAIL);
    EXPECT_EQ(surface->LoadSerializedPalette(nullptr), E_FAIL);
    EXPECT_EQ(surface->LoadSerializedTextures(nullptr), E_FAIL);
    EXPECT_THAT(TakeLog(), ElementsAre());
}

}  // namespace

}  // namespace tessara::test

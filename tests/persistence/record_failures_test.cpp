// What goes wrong in the middle of a save or a load.

#include "host/elevation_matrix.h"
#include "persistence/records_fixture.h"
#include "support/allocation_failure.h"

namespace tessara::test {

namespace {

using testing::Contains;
using testing::Not;
using Method = HRESULT (ITessara::*)(IUnknown*);
using Values = decltype(FakeParser::values);

constexpr Method kSaves[] = {&ITessara::SerializeSurfaceProperties, &ITessara::SerializeMatrix,
                             &ITessara::SerializePalette, &ITessara::SerializeTextures};
constexpr Method kLoads[] = {&ITessara::LoadSerializedSurfaceProperties, &ITessara::LoadSerializedMatrix,
                             &ITessara::LoadSerializedPalette, &ITessara::LoadSerializedTextures};

class RecordFailuresTest : public RecordsTest {
protected:
    RecordFailuresTest() { PutProject(); }

    /// A project that differs from the surface in every value.
    void PutProject()
    {
        parser->Put<float>("KVOxml_LOD", 0x10, {7.0f});
        parser->Put<float>("TRANSLATION", 0x10, {1.0f, 2.0f, 3.0f});
        parser->Put<float>("ELEVATION_SCALE", 0x10, {4.0f});
        parser->Put<float>("MIN_ELEVATION", 0x10, {10.0f});
        parser->Put<float>("MAX_ELEVATION", 0x10, {20.0f});
        parser->Put<LONG>("MATRIX_WIDTH", 8, {3});
        parser->Put<LONG>("MATRIX_HEIGHT", 8, {2});
        parser->Put<float>("MATRIX_DATA", 0x10, {0.0f, 0.1f, 0.2f, 0.3f, 0.4f, 0.6f});
        for (const char* table : {"PALETTE_INFO_RED", "PALETTE_INFO_GREEN", "PALETTE_INFO_BLUE"})
            parser->Put(table, 0x80, std::vector<BYTE>(256, 77));
        parser->Put("PALETTE_INFO_ARRAY_NODE", 2, std::vector<LONG>(256, 1));
        parser->Put<float>("PALETTE_INFO_MIN_ELV", 0x10, {5.0f});
        parser->Put<float>("PALETTE_INFO_MAX_ELV", 0x10, {250.0f});
        parser->Put<LONG>("TEXTURE_SRC_WIDTH", 8, {2});
        parser->Put<LONG>("TEXTURE_SRC_HEIGHT", 8, {2});
        parser->Put("TEXTURE_SRC_DATA", 0x280, std::vector<BYTE>(16, 200));
        parser->Put<LONG>("TEXTURE_SRC_BITS", 2, {8});
        parser->PutText("TEXTURE_DET_NAME", "a key that is longer than a short string");
        parser->PutText("TEXTURE_DET_TABLE", "a table that is longer than a short string");
        parser->PutText("TEXTURE_DET_NAME_USER", "a display name that is longer than a short string");
        parser->PutText("DATABASE", "USERDB");
        parser->Put<LONG>("IS_USING_DETAIL", 2, {1});
        parser->Put<LONG>("IS_USING_SOURCE", 2, {1});
        parser->Put<float>("DETAIL_TILINGX", 0x10, {2.5f});
        parser->Put<float>("DETAIL_TILINGY", 0x10, {3.5f});
        parser->Put<LONG>("DETAIL_RGBGAMMA", 2, {4});
    }

    /// A surface as a load finds it.
    void StartOver()
    {
        surface->StopServer();
        matrix = MakeObject<FakeMatrix>(log, 4, 4);
        surface = ComPtr<CoTessara>(MakeObject<SurfaceWithDialog>(log).Get());
        Wire();
    }

    Values State()
    {
        const auto place = MakeObject<FakeParser>(log);
        for (const Method save : kSaves)
            (surface.Get()->*save)(place.Get());
        return place->values;
    }
    std::size_t CallsOf(Method method)
    {
        StartOver();
        (surface.Get()->*method)(parser.Get());
        return TakeParserCalls().size();
    }
};

TEST_F(RecordFailuresTest, AFailedAddNodeLosesThatValueAlone)
{
    for (const Method save : kSaves) {
        parser->values.clear();
        const int calls = static_cast<int>(CallsOf(save));
        const Values all = parser->values;
        for (int n = 1; n <= calls; ++n) {
            parser->values.clear();
            parser->failingCall = n;
            EXPECT_EQ((surface.Get()->*save)(parser.Get()), S_OK);
            EXPECT_EQ(parser->values.size(), all.size() - 1);
            for (const auto& [name, value] : parser->values)
                EXPECT_TRUE(value == all.at(name)) << name;
        }
    }
}

TEST_F(RecordFailuresTest, AFailedFindIsAMissingValueAndAFailedGetAnUnreadableOne)
{
    for (const Method load : kLoads) {
        StartOver();
        (surface.Get()->*load)(parser.Get());
        const CallLog calls = TakeParserCalls();
        for (std::size_t n = 1; n <= calls.size(); ++n) {
            StartOver();
            parser->failingCall = static_cast<int>(n);
            const HRESULT result = (surface.Get()->*load)(parser.Get());
            parser->failingCall = 0;
            const Values state = State();

            const std::string& call = calls[n - 1];
            const std::size_t from = call.find('(') + 1;
            const std::string name = call.substr(from, call.find_first_of(",)") - from);
            const Values saved = parser->values;
            if (call.starts_with("FindNode"))
                parser->values.erase(name);
            else
                parser->unreadable.insert(name);
            StartOver();
            EXPECT_EQ((surface.Get()->*load)(parser.Get()), result) << call;
            EXPECT_TRUE(State() == state) << call;
            parser->values = saved;
            parser->unreadable.clear();
        }
    }
}

TEST_F(RecordFailuresTest, AnySubsetOfTheMatrixLoadsOrLeavesTheMatrix)
{
    const char* const names[] = {"MATRIX_WIDTH", "MATRIX_HEIGHT", "MATRIX_DATA", "MIN_ELEVATION", "MAX_ELEVATION"};
    for (unsigned missing = 0; missing < 32; ++missing) {
        StartOver();
        PutProject();
        for (unsigned i = 0; i < 5; ++i) {
            if (missing & 1u << i)
                parser->values.erase(names[i]);
        }
        const bool complete = (missing & 7) == 0;
        EXPECT_EQ(surface->LoadSerializedMatrix(parser.Get()), complete ? S_OK : E_FAIL) << missing;
        EXPECT_EQ(matrix->width, complete ? 3 : 4) << missing;
        surface->SerializeMatrix(parser.Get());
        if (complete) {
            EXPECT_THAT(parser->Get<float>("MIN_ELEVATION"), testing::ElementsAre(missing & 8 ? 0.0f : 10.0f));
            EXPECT_THAT(parser->Get<float>("MAX_ELEVATION"), testing::ElementsAre(missing & 16 ? 255.0f : 20.0f));
        }
    }
}

TEST_F(RecordFailuresTest, AnySubsetOfTheTexturesLoadsWhatIsThere)
{
    const char* const names[] = {"TEXTURE_SRC_WIDTH", "TEXTURE_SRC_HEIGHT", "TEXTURE_SRC_DATA",      "TEXTURE_DET_NAME",
                                 "TEXTURE_DET_TABLE", "DATABASE",           "TEXTURE_DET_NAME_USER", "IS_USING_DETAIL",
                                 "IS_USING_SOURCE",   "DETAIL_TILINGX",     "DETAIL_TILINGY",        "DETAIL_RGBGAMMA"};
    for (unsigned missing = 0; missing < 1u << 12; ++missing) {
        StartOver();
        PutProject();
        for (unsigned i = 0; i < 12; ++i) {
            if (missing & 1u << i)
                parser->values.erase(names[i]);
        }
        const bool source = (missing & 7) == 0;
        const bool detail = (missing & 0x18) == 0;
        ASSERT_EQ(surface->LoadSerializedTextures(parser.Get()), detail ? S_FALSE : S_OK) << missing;
        ASSERT_EQ(surface->ActivateSourceTexture(), source ? S_OK : E_FAIL) << missing;
        const Values state = State();
        for (unsigned i = 3; i < 12; ++i) {
            const char* const name = names[i];
            const bool missed = missing & 1u << i;
            const FakeParser::Value on = {2, {1, 0, 0, 0}};
            if (i == 5 && detail) {
                ASSERT_EQ(state.at(name).bytes.size(), missed ? 6u : 7u) << missing;  // where it was found
            } else if (i == 7 || i == 8) {
                ASSERT_TRUE(state.at(name) == (missed ? on : parser->values.at(name))) << name << ' ' << missing;
            } else if (!missed) {
                ASSERT_TRUE(state.at(name) == parser->values.at(name)) << name << ' ' << missing;
            }
        }
    }
}

TEST_F(RecordFailuresTest, AShortageOfMemoryFailsASaveBeforeAnythingIsWritten)
{
    for (const Method save : kSaves) {
        for (std::size_t n = 1;; ++n) {
            parser->values.clear();
            bool struck = false;
            HRESULT result = S_OK;
            {
                const MemoryShortage shortage(n);
                result = (surface.Get()->*save)(parser.Get());
                struck = shortage.Struck();
            }
            EXPECT_TRUE(result == S_OK || (struck && result == E_FAIL && parser->values.empty()));
            if (!struck)
                break;
        }
    }
}

TEST_F(RecordFailuresTest, AShortageOfMemoryFailsALoadWithTheSurfaceAsItWas)
{
    // Services that need no memory of their own, so that each failure is the surface's.
    const auto real = MakeObject<ElevationMatrix>();
    const auto prepare = [&] {
        surface->StopServer();
        surface = ComPtr<CoTessara>(MakeObject<SurfaceWithDialog>(log).Get());
        surface->InitServer();
        surface->SetKVO(host.Get());
        surface->SetMatrix(real.Get());
        surface->SetSize(5, 5);
        surface->InitMatrix();
        textures->lastPixels.reserve(64);
        log.clear();
        log.reserve(1000);
    };
    for (const Method load : kLoads) {
        for (std::size_t n = 1;; ++n) {
            prepare();
            const Values before = State();
            log.clear();
            bool struck = false;
            HRESULT result = S_OK;
            {
                const MemoryShortage shortage(n);
                result = (surface.Get()->*load)(parser.Get());
                struck = shortage.Struck();
            }
            if (!struck)
                break;
            if (result == E_FAIL) {
                LONG width = 0;
                real->GetWidth(&width);
                if (width != 0) {  // else the matrix couldn't allocate its cells
                    EXPECT_TRUE(State() == before) << "allocation " << n;
                    EXPECT_THAT(log, Not(Contains(testing::StartsWith("CreateTexture"))));
                }
            }
        }
        EXPECT_FALSE(FAILED((surface.Get()->*load)(parser.Get())));
    }
}

}  // namespace

}  // namespace tessara::test

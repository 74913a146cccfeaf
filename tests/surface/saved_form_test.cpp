// What a surface makes of its saved form, and what it leaves alone when something is missing.

#include "host/elevation_matrix.h"
#include "host/host_classes.h"
#include "support/allocation_failure.h"
#include "support/saved_project.h"
#include "support/scratch_folder.h"
#include "support/test_grid.h"
#include "surface/surface_fixture.h"

#include <cmath>
#include <fstream>
#include <random>
#include <sstream>

namespace tessara::test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;
using Method = HRESULT (ITessara::*)(IUnknown*);
using Values = FakeParser::Values;

constexpr Method kSaves[] = {&ITessara::SerializeSurfaceProperties, &ITessara::SerializeMatrix,
                             &ITessara::SerializePalette, &ITessara::SerializeTextures};
constexpr Method kLoads[] = {&ITessara::LoadSerializedSurfaceProperties, &ITessara::LoadSerializedMatrix,
                             &ITessara::LoadSerializedPalette, &ITessara::LoadSerializedTextures};

/// A surface whose dialog only tells that it was opened.
class SurfaceWithDialog final : public CoTessara {
public:
    explicit SurfaceWithDialog(CallLog& log) : log_(log) {}
    HRESULT STDMETHODCALLTYPE TextureDetailDlg() override
    {
        return Guard(
            [this] {
                log_.push_back("TextureDetailDlg()");
                return S_FALSE;
            },
            S_FALSE);
    }

private:
    CallLog& log_;
};

/// A wired surface, and a project that differs from it in every value.
class SavedFormTest : public SurfaceTest {
protected:
    SavedFormTest()
    {
        PutProject(*parser);
        Replace();
        Wire();
    }

    void Replace() { surface = ComPtr<CoTessara>(MakeObject<SurfaceWithDialog>(log).Get()); }

    /// A surface as a load finds it: with a picture of 2 x 2 pixels of 24 bits, and the rest as it was made.
    void StartOver()
    {
        surface->StopServer();
        matrix = MakeObject<FakeMatrix>(log, 4, 4);
        Replace();
        Wire();
        SetSource(2, 2, 24);
    }
    void SetSource(LONG width, LONG height, LONG bits)
    {
        std::vector<BYTE> pixels(static_cast<std::size_t>(width * height * bits / 8));
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = static_cast<BYTE>(17 * i + 1);
        surface->CreateTextureSurface3D(2);
        textures->image = {width, height, bits, pixels, S_OK};
        log.clear();
    }

    /// All that a surface saves.
    Values StateOf(CoTessara& of)
    {
        const auto place = MakeObject<FakeParser>(log);
        for (const Method save : kSaves)
            (of.*save)(place.Get());
        return place->values;
    }
    Values State() { return StateOf(*surface); }

    HRESULT Load(Method load) { return (surface.Get()->*load)(parser.Get()); }
    std::vector<HRESULT> LoadAll()
    {
        std::vector<HRESULT> results;
        for (const Method load : kLoads)
            results.push_back(Load(load));
        return results;
    }
    CallLog TakeParserCalls()
    {
        CallLog calls;
        for (std::string& call : TakeLog()) {
            if (call.find("Node") != std::string::npos)
                calls.push_back(std::move(call));
        }
        return calls;
    }

    ComPtr<FakeParser> parser = MakeObject<FakeParser>(log);
};

TEST_F(SavedFormTest, SavingReadsTheServicesOnceAndLoadingKeepsTheirOrder)
{
    matrix->Resize(2, 1);
    SetSource(4, 2, 32);
    surface->SerializeMatrix(parser.Get());
    surface->SerializeTextures(parser.Get());
    std::erase_if(log, [](const std::string& call) { return call.starts_with("AddNode"); });
    EXPECT_THAT(TakeLog(), ElementsAre("GetWidth()", "GetHeight()", "GetCell(0, 0)", "GetCell(1, 0)",
                                       "ResetTextureUnit()", "BindTexture(100)", "GetTextureData(100, 0)"));
    EXPECT_EQ(parser->Get<BYTE>("TEXTURE_SRC_DATA"), textures->image.pixels);

    PutProject(*parser);
    parser->Put<LONG>("MATRIX_WIDTH", 8, {2});
    parser->Put<LONG>("MATRIX_HEIGHT", 8, {1});
    parser->Put<float>("MATRIX_DATA", 0x10, {0.25f, 0.75f});
    const ElevationPalette* before = matrix->palette;
    EXPECT_EQ(surface->LoadSerializedMatrix(parser.Get()), S_OK);
    EXPECT_NE(matrix->palette, before) << "a new matrix gets a new palette";
    EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_FALSE);
    std::erase_if(log, [](const std::string& call) { return call.starts_with("GetNodeValue"); });
    EXPECT_THAT(TakeLog(),
                ElementsAre("FindNode(MATRIX_WIDTH)", "FindNode(MATRIX_HEIGHT)", "FindNode(MAX_ELEVATION)",
                            "FindNode(MIN_ELEVATION)", "FindNode(MATRIX_DATA)", "ResetMatrix()",
                            "SetElevationRange(10.000000, 20.000000)", "SetPalette()", "BeginUpdate(0)", "SetWidth(2)",
                            "SetHeight(1)", "AllocateCells()", "EndUpdate(0)", "BeginUpdate(0)", "GetCell(0, 0)",
                            "GetCell(1, 0)", "EndUpdate(0)", "FindNode(TEXTURE_SRC_WIDTH)",
                            "FindNode(TEXTURE_SRC_HEIGHT)", "FindNode(TEXTURE_SRC_DATA)", "FindNode(TEXTURE_SRC_BITS)",
                            "ReleaseTexture(100)", "SetElementName(TESSARA_SURFACE)", "SetTextureName(key1)",
                            "CreateTexture(2, 2, 8)", "UnbindTexture()", "FindNode(TEXTURE_DET_NAME)",
                            "FindNode(TEXTURE_DET_NAME_USER)", "FindNode(TEXTURE_DET_TABLE)", "FindNode(DATABASE)",
                            "LoadTextureFromDB(a key that is longer than a short string., a table that is longer than "
                            "a short string., user)",
                            "UnbindTexture()", "FindNode(DETAIL_TILINGX)", "FindNode(DETAIL_TILINGY)",
                            "FindNode(DETAIL_RGBGAMMA)", "FindNode(IS_USING_DETAIL)", "FindNode(IS_USING_SOURCE)"));
    EXPECT_THAT(textures->lastPixels, ElementsAre(200, 201, 202, 203));
}

TEST_F(SavedFormTest, AValueThatFailsIsMissingOrUnreadableAndLeavesItsFieldsAlone)
{
    StartOver();
    const Values fresh = State();
    const Values whole = parser->values;
    const std::vector<HRESULT> fine = {S_OK, S_OK, S_OK, S_FALSE};
    ASSERT_EQ(LoadAll(), fine);
    textures->image = {2, 2, 8, textures->lastPixels, S_OK};
    for (const auto& [name, value] : State())
        EXPECT_TRUE(value == whole.at(name)) << name;
    for (const auto& [name, value] : whole) {
        for (const bool missing : {true, false}) {
            StartOver();
            parser->values = whole;
            parser->unreadable.clear();
            if (missing)
                parser->values.erase(name);
            else
                parser->unreadable.insert(name);
            const std::vector<HRESULT> results = LoadAll();
            const Values state = State();
            const bool isMatrix = name.starts_with("MATRIX");
            const bool isDetail = name == "TEXTURE_DET_NAME" || name == "TEXTURE_DET_TABLE";
            EXPECT_EQ(results, (std::vector<HRESULT>{S_OK, isMatrix ? E_FAIL : S_OK, S_OK, isDetail ? S_OK : S_FALSE}))
                << name;
            EXPECT_EQ(state.at("MATRIX_WIDTH").bytes[0], isMatrix ? 4 : 3) << name << ": the matrix isn't touched";
            // What the structs stand in with reaches the surface; everything else keeps what the surface had.
            for (const char* kept : {"MIN_ELEVATION", "MAX_ELEVATION", "TEXTURE_DET_NAME", "TEXTURE_DET_TABLE",
                                     "TEXTURE_DET_NAME_USER", "DETAIL_TILINGX", "DETAIL_TILINGY", "DETAIL_RGBGAMMA"}) {
                const bool lost = name == kept || (isMatrix && std::string(kept).ends_with("_ELEVATION") &&
                                                   name != std::string("MATRIX_DATA"));
                EXPECT_TRUE(state.at(kept) == (lost ? fresh : whole).at(kept)) << kept << " without " << name;
            }
            EXPECT_EQ(state.at("PALETTE_INFO_RED") == fresh.at("PALETTE_INFO_RED"), name.starts_with("PALETTE"));
            const bool keepsSource = name.starts_with("TEXTURE_SRC") && name != "TEXTURE_SRC_BITS";
            EXPECT_THAT(log, Contains(StartsWith("CreateTexture(")).Times(keepsSource ? 0 : 1)) << name;
        }
    }
}

TEST_F(SavedFormTest, SwitchesAreOnWhereAProjectHasNoneAndStayWhereTheyCantBeRead)
{
    const auto load = [this](LONG before) {
        surface->UseTextureDetail(before);
        surface->UseTextureSource(before);
        surface->LoadSerializedTextures(parser.Get());
        LONG detail = -1;
        LONG source = -1;
        surface->IsUsingTextureDetail(&detail);
        surface->IsUsingTextureSource(&source);
        return std::pair<int, int>(detail, source);
    };
    EXPECT_EQ(load(1), std::pair(0, 0));
    parser->Put<LONG>("IS_USING_SOURCE", 2, {-3});
    EXPECT_EQ(load(0), std::pair(0, 1));
    parser->unreadable = {"IS_USING_DETAIL", "IS_USING_SOURCE"};
    EXPECT_EQ(load(0), std::pair(0, 0));
    EXPECT_EQ(load(1), std::pair(1, 1));
    parser->values.erase("IS_USING_DETAIL");
    parser->values.erase("IS_USING_SOURCE");
    EXPECT_EQ(load(0), std::pair(1, 1));
}

TEST_F(SavedFormTest, TheLevelOfDetailGoesByTheScaleFromBeforeTheLoad)
{
    surface->SetElevationScale(2.0f);
    surface->SerializeSurfaceProperties(parser.Get());
    EXPECT_THAT(parser->Get<float>("ELEVATION_SCALE"), ElementsAre(2.0f));
    const auto bare = MakeObject<CoTessara>();
    bare->InitServer();
    bare->SerializeSurfaceProperties(parser.Get());
    EXPECT_THAT(parser->Get<float>("ELEVATION_SCALE"), ElementsAre(0.0f)) << "the last one set, not the terrain's own";
    bare->StopServer();
}

TEST_F(SavedFormTest, WithoutCellsPaletteMatrixOrParserThereIsNothingToSave)
{
    for (const auto methods : {kSaves, kLoads}) {
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ((surface.Get()->*methods[i])(nullptr), E_FAIL);
    }
    EXPECT_THAT(TakeLog(), ElementsAre());
    for (const auto& [width, height] : {std::pair(0, 5), std::pair(5, 0), std::pair(40000, 40000)}) {
        matrix->width = width;
        matrix->height = height;
        EXPECT_EQ(surface->SerializeMatrix(parser.Get()), E_FAIL) << width;
    }
    matrix->palette = nullptr;
    EXPECT_EQ(surface->SerializePalette(parser.Get()), E_FAIL);
    EXPECT_EQ(surface->LoadSerializedPalette(parser.Get()), E_FAIL);
    const auto bare = MakeObject<CoTessara>();
    bare->InitServer();
    EXPECT_EQ(bare->SerializeMatrix(parser.Get()), E_FAIL);
    EXPECT_EQ(bare->SerializePalette(parser.Get()), S_OK);
    EXPECT_EQ(bare->LoadSerializedPalette(parser.Get()), E_FAIL);
    EXPECT_THAT(TakeParserCalls(), ElementsAre());
    EXPECT_EQ(bare->LoadSerializedMatrix(parser.Get()), S_OK) << "the matrix's class is registered by nobody";
    IUnknown* made = nullptr;
    bare->GetMatrix(&made);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(bare->SerializeTextures(parser.Get()), S_OK) << "the settings, of a host without textures";
    EXPECT_EQ(bare->LoadSerializedTextures(parser.Get()), E_FAIL) << "it can't hold the source";
    bare->StopServer();
}

TEST_F(SavedFormTest, PalettesOfAnyRangeAndLengthGoThrough)
{
    ElevationPalette& palette = *matrix->palette;
    palette.maxElevation = 9;
    for (auto* table : {&palette.red, &palette.green, &palette.blue, &palette.nodeFlags})
        table->resize(10);
    EXPECT_EQ(surface->SerializePalette(parser.Get()), S_OK);
    EXPECT_EQ(parser->Get<BYTE>("PALETTE_INFO_RED")[200], palette.red[9]);
    EXPECT_EQ(parser->Get<LONG>("PALETTE_INFO_ARRAY_NODE")[200], 0);
    const float none = std::numeric_limits<float>::quiet_NaN();
    const struct {
        float low, high;
        std::int32_t first, last;
    } cases[] = {{0.0f, 255.0f, 0, 255},       {0.9f, 254.9f, 0, 254},     {-7.9f, 1e30f, -7, INT32_MAX},
                 {-1e30f, none, INT32_MIN, 0}, {200.0f, 100.0f, 200, 100}, {300.0f, 400.0f, 300, 400}};
    for (const auto& c : cases) {
        PutProject(*parser);
        parser->Put<LONG>("PALETTE_INFO_ARRAY_NODE", 2, std::vector<LONG>(256, 7));
        parser->Put<float>("PALETTE_INFO_MIN_ELV", 0x10, {c.low});
        parser->Put<float>("PALETTE_INFO_MAX_ELV", 0x10, {c.high});
        EXPECT_EQ(surface->LoadSerializedPalette(parser.Get()), S_OK);
        EXPECT_EQ(palette.minElevation, c.first) << c.low << " to " << c.high;
        EXPECT_EQ(palette.maxElevation, c.last) << c.low << " to " << c.high;
        EXPECT_THAT(palette.red, testing::ElementsAreArray(parser->Get<BYTE>("PALETTE_INFO_RED")));
        EXPECT_THAT(palette.nodes, ElementsAre(0, 50, 200, 255)) << "the lines aren't drawn anew";
        for (const float height : {-1e30f, -1.0f, 0.0f, 0.5f, 1.0f, 1e30f, none}) {
            const std::int16_t index = palette.IndexOf(height);
            EXPECT_THAT(palette.red, Contains(palette.GetRed(index))) << "nothing reads past the tables";
        }
    }
}

TEST_F(SavedFormTest, AnEmptySlotAFailedReadBackAndOddDepthsSaveNoSource)
{
    const auto sourceSaved = [this] {
        parser->values.clear();
        EXPECT_EQ(surface->SerializeTextures(parser.Get()), S_OK);
        return parser->values.size() - 9;
    };
    textures->image = {8, 8, 32, std::vector<BYTE>(256), S_OK};  // what happens to be bound
    EXPECT_EQ(sourceSaved(), 0u);
    for (const LONG bits : {8, 16, 24, 32}) {
        SetSource(5, 3, bits);
        EXPECT_EQ(sourceSaved(), bits == 16 ? 0u : bits == 32 ? 3u : 4u) << bits;
    }
    textures->image.result = E_FAIL;
    EXPECT_EQ(sourceSaved(), 0u);
}

TEST_F(SavedFormTest, TheProjectTellsWhichDatabaseHasTheDetailAndALostOneOpensTheDialog)
{
    for (const char* database : {"APPDB", "", "userdb", "USERDB"}) {
        parser->PutText("DATABASE", database);
        EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_FALSE);
        const bool ofUser = std::string(database) == "USERDB";
        EXPECT_THAT(TakeLog(), Contains(testing::EndsWith(ofUser ? ", user)" : ", system)"))) << database;
        BstrHolder found;
        surface->GetDataBaseSource(found.Out());
        EXPECT_EQ(found.Narrow(), ofUser ? "USERDB" : "APPDB");
    }
    host->loadResult = E_FAIL;
    surface->SetDataBaseSource(nullptr);
    EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), S_FALSE);
    const CallLog calls = TakeLog();
    EXPECT_THAT(calls, Contains("TextureDetailDlg()").Times(1));
    EXPECT_THAT(calls, Contains("FindNode(IS_USING_SOURCE)")) << "the load goes on";
    EXPECT_EQ(State().at("DATABASE"), parser->values.at("DATABASE"));
}

TEST_F(SavedFormTest, AFailedCreateEndsTheLoadAndAnImpossibleImageLeavesTheSlot)
{
    SetSource(2, 2, 32);
    for (const auto& [width, height] : {std::pair(-2, 2), std::pair(65536, 65536)}) {
        parser->Put<LONG>("TEXTURE_SRC_WIDTH", 8, {width});
        parser->Put<LONG>("TEXTURE_SRC_HEIGHT", 8, {height});
        EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), E_FAIL);
        EXPECT_THAT(TakeLog(), Not(Contains("ReleaseTexture(100)")));
    }
    PutProject(*parser);
    textures->createResult = E_FAIL;
    EXPECT_EQ(surface->LoadSerializedTextures(parser.Get()), E_FAIL);
    EXPECT_THAT(TakeLog(), Not(Contains("FindNode(TEXTURE_DET_NAME)")));
    EXPECT_EQ(surface->ActivateSourceTexture(), E_FAIL) << "the slot is empty";
}

TEST_F(SavedFormTest, CellsThatCantBeAllocatedLeaveNothingToDraw)
{
    const auto real = MakeObject<ElevationMatrix>();
    const auto bare = MakeObject<CoTessara>();
    bare->InitServer();
    bare->SetKVO(host.Get());
    bare->SetMatrix(real.Get());
    bare->SetSize(8, 8);
    bare->InitMatrix();
    ASSERT_EQ(bare->InitQuadTree(), S_OK);
    parser->Put<LONG>("MATRIX_WIDTH", 8, {30});
    parser->Put<LONG>("MATRIX_HEIGHT", 8, {20});
    parser->Put("MATRIX_DATA", 0x10, std::vector<float>(600, 0.5f));
    {
        const RefusedSize refused(600 * sizeof(ElevationElement) + sizeof(std::size_t));
        EXPECT_EQ(bare->LoadSerializedMatrix(parser.Get()), S_OK);
    }
    LONG width = -1;
    real->GetWidth(&width);
    EXPECT_EQ(width, 0);
    RecordingGl::Reset();
    bare->Draw3D(camera.Get());
    EXPECT_EQ(RecordingGl::Get().Count("glDrawElements"), 0u) << "the old tree points at cells that are gone";
    bare->StopServer();
}

TEST_F(SavedFormTest, AFailedAddNodeLosesThatValueAlone)
{
    StartOver();
    const Values all = State();
    for (const Method save : kSaves) {
        int failing = 0;
        do {
            parser->values.clear();
            parser->failingCall = ++failing;
            EXPECT_EQ(Load(save), S_OK);
            for (const auto& [name, value] : parser->values)
                EXPECT_TRUE(value == all.at(name)) << name;
        } while (std::exchange(parser->failingCall, 0) == 0);
        EXPECT_GE(failing, 4);
    }
}

TEST_F(SavedFormTest, AShortageOfMemoryFailsASaveBeforeAnythingIsWritten)
{
    for (const Method save : kSaves) {
        for (std::size_t n = 1;; ++n) {
            parser->values.clear();
            bool struck = false;
            HRESULT result = S_OK;
            {
                const MemoryShortage shortage(n);
                result = Load(save);
                struck = shortage.Struck();
            }
            EXPECT_TRUE(result == S_OK || (struck && result == E_FAIL && parser->values.empty()));
            if (!struck)
                break;
        }
    }
}

TEST_F(SavedFormTest, AShortageOfMemoryFailsALoadWithTheSurfaceAsItWas)
{
    // Services that need no memory of their own, so that each failure is the surface's.
    const auto real = MakeObject<ElevationMatrix>();
    for (const Method load : kLoads) {
        for (std::size_t n = 1;; ++n) {
            surface->StopServer();
            Replace();
            surface->InitServer();
            surface->SetKVO(host.Get());
            surface->SetMatrix(real.Get());
            surface->SetSize(5, 5);
            surface->InitMatrix();
            textures->lastPixels.reserve(64);
            const Values before = State();
            log.clear();
            log.reserve(1000);
            bool struck = false;
            HRESULT result = S_OK;
            {
                const MemoryShortage shortage(n);
                result = Load(load);
                struck = shortage.Struck();
            }
            if (!struck)
                break;
            LONG width = 0;
            real->GetWidth(&width);
            if (result == E_FAIL && width != 0) {  // else the matrix couldn't allocate its cells
                EXPECT_TRUE(State() == before) << "allocation " << n;
                EXPECT_THAT(log, Not(Contains(StartsWith("CreateTexture"))));
            }
        }
        EXPECT_FALSE(FAILED(Load(load)));
    }
}

/// Surfaces over real matrices that come back from a place.
class RoundTripTest : public SavedFormTest {
protected:
    ComPtr<CoTessara> NewSurface()
    {
        auto made = MakeObject<CoTessara>();
        made->InitServer();
        made->SetKVO(host.Get());
        return made;
    }
    ComPtr<CoTessara> LoadedFrom(FakeParser& place)
    {
        auto made = NewSurface();
        for (const Method load : kLoads)
            (made.Get()->*load)(&place);
        return made;
    }

    /// A surface with random values everywhere.
    ComPtr<CoTessara> Random()
    {
        auto target = NewSurface();
        const auto terrain = MakeObject<ElevationMatrix>();
        const auto columns = static_cast<LONG>(1 + random_() % 40);
        const auto rows = static_cast<LONG>(1 + random_() % 40);
        target->SetSize(columns, rows);
        target->SetMatrix(terrain.Get());
        target->InitMatrix();
        const FractalHeights heights(64, static_cast<std::uint32_t>(random_()));
        for (LONG y = 0; y < rows; ++y) {
            for (LONG x = 0; x < columns; ++x)
                terrain->ElementAt(x, y)->value = random_() % 4 == 0 ? Number(-2.0f, 2.0f) : heights(x, y);
        }
        ElevationPalette* palette = nullptr;
        terrain->GetPalette(&palette);
        for (std::int16_t i = 0; i < 256; ++i) {
            palette->SetRed(i, static_cast<BYTE>(random_()));
            palette->SetNode(i, static_cast<BYTE>(random_() & 1));
        }
        palette->minElevation = static_cast<LONG>(random_() % 100);
        palette->maxElevation = static_cast<LONG>(100 + random_() % 156);
        target->SetElevationScale(Number(0.1f, 50.0f));
        target->SetLOD(Number(1.0f, 200.0f));
        target->SetTranslation3D(Number(-9.0f, 9.0f), Number(-9.0f, 9.0f), Number(-9.0f, 9.0f));
        float tiling[2] = {Number(0.1f, 99.0f), Number(0.1f, 99.0f)};
        target->SetTextureDetailTiling(&tiling[0], &tiling[1]);
        const BstrHolder name("Ger\u00f6ll " + std::to_string(random_()));
        target->SetUserTextureName(name.Get());
        return target;
    }

    /// The triangles of a few frames of a new tree.
    std::string Mesh(CoTessara& of)
    {
        float lod = 0.0f;
        of.GetLOD(&lod);
        of.SetLOD(lod);  // with the scale that is in force now
        EXPECT_EQ(of.InitQuadTree(), S_OK);
        const std::string path = folder_ / "mesh.txt";
        const BstrHolder name(path);
        for (int frame = 0; frame < 4; ++frame)
            of.GetRenderedPolygons(name.Get(), camera.Get());
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
    float Number(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random_); }

    ScratchFolder folder_;
    std::mt19937 random_{20260704};
    const HostClasses classes_ = RegisterHostClasses();
};

TEST_F(RoundTripTest, RandomSurfacesComeBackValueByValueAndDrawTheSameMesh)
{
    for (int round = 0; round < 40; ++round) {
        const auto saved = Random();
        parser->values = StateOf(*saved);
        const auto loaded = LoadedFrom(*parser);
        EXPECT_TRUE(StateOf(*loaded) == parser->values) << "round " << round;
        for (float& coordinate : camera->position)
            coordinate = Number(-10.0f, 50.0f);
        const std::string mesh = Mesh(*saved);
        EXPECT_FALSE(mesh.empty());
        EXPECT_TRUE(mesh == Mesh(*loaded)) << "round " << round;
        saved->StopServer();
        loaded->StopServer();
        log.clear();
    }
}

TEST_F(RoundTripTest, NoBytesOfASavedSurfacePoisonItsMesh)
{
    const auto saved = Random();
    const Values whole = StateOf(*saved);
    saved->StopServer();
    for (int round = 0; round < 150; ++round) {
        parser->values = whole;
        for (auto& [name, value] : parser->values) {
            if (name == "MATRIX_WIDTH" || name == "MATRIX_HEIGHT" || random_() % 3 == 0)
                continue;
            for (BYTE& byte : value.bytes) {
                if (random_() % 8 == 0)
                    byte = static_cast<BYTE>(random_() % 4 == 0 ? 0xFF : random_());
            }
        }
        const auto loaded = LoadedFrom(*parser);
        RecordingGl::Reset();
        EXPECT_EQ(Mesh(*loaded).find_first_not_of("-.0123456789\t\n"), std::string::npos) << "round " << round;
        loaded->Draw3D(camera.Get());
        for (const DrawnElements& patch : RecordingGl::Get().drawn) {
            for (const auto& normal : patch.normals)
                ASSERT_TRUE(std::isfinite(normal[0]) && std::isfinite(normal[1]) && std::isfinite(normal[2]));
        }
        loaded->StopServer();
        log.clear();
    }
}

}  // namespace

}  // namespace tessara::test

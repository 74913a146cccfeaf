// Surfaces that come back from their saved form.

#include "host/elevation_matrix.h"
#include "host/host_classes.h"
#include "persistence/records_fixture.h"
#include "support/test_grid.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace tessara::test {

namespace {

class RoundTripTest : public RecordsTest {
protected:
    /// A surface of its own, wired to the fakes but without a matrix.
    ComPtr<CoTessara> NewSurface()
    {
        auto made = MakeObject<CoTessara>();
        made->InitServer();
        made->SetKVO(host.Get());
        return made;
    }

    void Randomise(CoTessara& target, ElevationMatrix& terrain)
    {
        const auto columns = static_cast<LONG>(1 + random_() % 40);
        const auto rows = static_cast<LONG>(1 + random_() % 40);
        target.SetSize(columns, rows);
        target.SetMatrix(&terrain);
        target.InitMatrix();
        const FractalHeights heights(64, static_cast<std::uint32_t>(random_()));
        for (LONG y = 0; y < rows; ++y) {
            for (LONG x = 0; x < columns; ++x)
                terrain.ElementAt(x, y)->value = random_() % 4 == 0 ? Number(-2.0f, 2.0f) : heights(x, y);
        }
        ElevationPalette* palette = nullptr;
        terrain.GetPalette(&palette);
        for (std::int16_t i = 0; i < 256; ++i) {
            palette->SetRed(i, static_cast<BYTE>(random_()));
            palette->SetGreen(i, static_cast<BYTE>(random_()));
            palette->SetNode(i, static_cast<BYTE>(random_() & 1));
        }
        palette->minElevation = static_cast<LONG>(random_() % 100);
        palette->maxElevation = static_cast<LONG>(100 + random_() % 156);
        target.SetElevationScale(Number(0.1f, 50.0f));
        target.SetLOD(Number(1.0f, 200.0f));
        target.SetTranslation3D(Number(-9.0f, 9.0f), Number(-9.0f, 9.0f), Number(-9.0f, 9.0f));
        target.UseTextureSource(static_cast<LONG>(random_() & 1));
        target.UseTextureDetail(static_cast<LONG>(random_() & 1));
        float tiling[2] = {Number(0.1f, 99.0f), Number(0.1f, 99.0f)};
        target.SetTextureDetailTiling(&tiling[0], &tiling[1]);
        target.SetTextureDetailRGBGamma(static_cast<int>(random_() % 5));
        const BstrHolder name("Ger\u00f6ll " + std::to_string(random_()));
        target.SetUserTextureName(name.Get());
    }

    static void Save(CoTessara& from, FakeParser& to)
    {
        EXPECT_EQ(from.SerializeSurfaceProperties(&to), S_OK);
        EXPECT_EQ(from.SerializeMatrix(&to), S_OK);
        EXPECT_EQ(from.SerializePalette(&to), S_OK);
        EXPECT_EQ(from.SerializeTextures(&to), S_OK);
    }
    static void Load(CoTessara& to, FakeParser& from)
    {
        EXPECT_EQ(to.LoadSerializedSurfaceProperties(&from), S_OK);
        EXPECT_EQ(to.LoadSerializedMatrix(&from), S_OK);
        EXPECT_EQ(to.LoadSerializedPalette(&from), S_OK);
        EXPECT_EQ(to.LoadSerializedTextures(&from), S_OK);
    }

    /// The triangles of a few frames of a new tree.
    std::string Mesh(CoTessara& of)
    {
        float lod = 0.0f;
        of.GetLOD(&lod);
        of.SetLOD(lod);  // with the scale that is in force now
        EXPECT_EQ(of.InitQuadTree(), S_OK);
        const auto path = std::filesystem::temp_directory_path() /
                          ("tessara-mesh-" + std::to_string(std::random_device()()) + ".txt");
        const BstrHolder name(path.string());
        for (int frame = 0; frame < 4; ++frame)
            of.GetRenderedPolygons(name.Get(), camera.Get());
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        std::filesystem::remove(path);
        return text.str();
    }

    float Number(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random_); }

    std::mt19937 random_{20260704};
    const HostClasses classes_ = RegisterHostClasses();
};

TEST_F(RoundTripTest, RandomSurfacesComeBackValueByValueAndDrawTheSameMesh)
{
    for (int round = 0; round < 40; ++round) {
        const auto terrain = MakeObject<ElevationMatrix>();
        const auto saved = NewSurface();
        Randomise(*saved, *terrain);
        const auto place = MakeObject<FakeParser>(log);
        Save(*saved, *place);

        const auto loaded = NewSurface();
        Load(*loaded, *place);
        const auto again = MakeObject<FakeParser>(log);
        Save(*loaded, *again);
        EXPECT_TRUE(place->values == again->values) << "round " << round;

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
    const auto terrain = MakeObject<ElevationMatrix>();
    const auto saved = NewSurface();
    Randomise(*saved, *terrain);
    const auto place = MakeObject<FakeParser>(log);
    Save(*saved, *place);
    saved->StopServer();
    const auto whole = place->values;
    for (int round = 0; round < 150; ++round) {
        place->values = whole;
        for (auto& [name, value] : place->values) {
            if (name == "MATRIX_WIDTH" || name == "MATRIX_HEIGHT" || random_() % 3 == 0)
                continue;
            for (BYTE& byte : value.bytes) {
                if (random_() % 8 == 0)
                    byte = static_cast<BYTE>(random_() % 4 == 0 ? 0xFF : random_());
            }
        }
        const auto loaded = NewSurface();
        loaded->LoadSerializedSurfaceProperties(place.Get());
        loaded->LoadSerializedMatrix(place.Get());
        loaded->LoadSerializedPalette(place.Get());
        loaded->LoadSerializedTextures(place.Get());
        RecordingGl::Reset();
        const std::string mesh = Mesh(*loaded);
        EXPECT_EQ(mesh.find_first_not_of("-.0123456789\t\n"), std::string::npos) << "no number in round " << round;
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

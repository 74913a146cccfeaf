// Random grids, viewers, settings and shortages of memory: whatever happens, the tree keeps its rules, the mesh has no
// crack, and an update that skips what can't change has the results of one that walks everything.

#include "support/test_grid.h"
#include "terrain/mesh.h"
#include "terrain/terrain_lod.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <random>

namespace {

/// Rounds of the random tests. TESSARA_FUZZ_ROUNDS asks for more.
int Rounds(int usual)
{
    const char* asked = std::getenv("TESSARA_FUZZ_ROUNDS");
    return asked ? std::atoi(asked) : usual;
}

class RandomTerrain {
public:
    explicit RandomTerrain(std::uint32_t seed)
        : random_(seed),
          width(Size()),
          height(random_() % 3 ? Size() : width),
          grid(width, height, HeightsOfKind(static_cast<std::uint32_t>(random_() % 6), seed))
    {
        terrain.InitQuadTree(grid.Source());
    }

    std::int32_t Size()
    {
        const std::int32_t sizes[] = {1, 2, 3, 4, 5, 8, 9, 16, 17, 31, 33, 48, 64, 65};
        return random_() % 2 ? sizes[random_() % std::size(sizes)] : static_cast<std::int32_t>(1 + random_() % 70);
    }

    std::function<float(std::int32_t, std::int32_t)> HeightsOfKind(std::uint32_t kind, std::uint32_t seed) const
    {
        const std::int32_t w = width;
        switch (kind) {
        case 0:
            return [seed](int x, int y) { return HashNoise(x, y, seed); };
        case 1:
            return FractalHeights(64, seed);
        case 2:
            return [](int, int) { return 0.0f; };
        case 3:
            return [w](int x, int) { return static_cast<float>(x) / static_cast<float>(w); };
        case 4:  // islands in a sea of exact zeros
            return [seed](int x, int y) { return HashNoise(x / 7, y / 7, seed) < 0.7f ? 0.0f : HashNoise(x, y, seed); };
        default:  // spikes, also below zero
            return
                [seed](int x, int y) { return HashNoise(x, y, seed) < 0.98f ? 0.5f : HashNoise(y, x, seed) * 8 - 4; };
        }
    }

    void Step()
    {
        switch (random_() % 8) {
        case 0:
            terrain.SetElevationScale(Uniform(0.0f, 80.0f));
            break;
        case 1:
            terrain.SetLOD(Uniform(0.0f, 10.0f) * Uniform(0.0f, 30.0f));
            break;
        case 2:
            terrain.SetRenderMode(static_cast<std::int32_t>(random_() % 2));
            break;
        case 3:
            grid.At(static_cast<std::int32_t>(random_() % static_cast<std::uint32_t>(width)),
                    static_cast<std::int32_t>(random_() % static_cast<std::uint32_t>(height)))
                .value = Uniform(-1.0f, 2.0f);
            break;
        case 4:
            if (random_() % 10 == 0)
                terrain.Build3D();
            break;
        default:
            break;
        }
        Move();
        terrain.Nodes.BlockLimit = random_() % 6 ? SIZE_MAX : terrain.Nodes.BlocksUsed() + random_() % 12;
        try {
            terrain.Update(viewer_);
        } catch (const std::bad_alloc&) {
            ++failures;
        }
        terrain.Nodes.BlockLimit = SIZE_MAX;
    }

    /// Stands still, goes on a little or jumps.
    void Move()
    {
        const auto reach = static_cast<float>(std::max(width, height));
        switch (random_() % 6) {
        case 0:
            viewer_ = {Uniform(-reach, 2 * reach), Uniform(-2.0f, 60.0f), Uniform(-reach, 2 * reach)};
            break;
        case 1:
        case 2:
            viewer_ = {viewer_.x + Uniform(-2.0f, 2.0f), viewer_.y, viewer_.z + Uniform(-2.0f, 2.0f)};
            break;
        default:
            break;
        }
    }

    float Uniform(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random_); }

private:
    std::mt19937 random_;

public:
    std::int32_t width;
    std::int32_t height;
    TestGrid grid;
    TerrainLod terrain;
    int failures = 0;  // of updates that were short of memory

private:
    Viewer viewer_{0.0f, 10.0f, 0.0f};
};

TEST(Mesh, HasNoCrackAndKeepsItsRulesWhateverHappens)
{
    int failures = 0;
    for (int round = 0; round < Rounds(150); ++round) {
        RandomTerrain random(static_cast<std::uint32_t>(round));
        RandomTerrain plain(static_cast<std::uint32_t>(round));
        plain.terrain.WalkEverything = true;
        for (int frame = 0; frame < 30; ++frame) {
            random.Step();
            plain.Step();
            ASSERT_EQ(ReadTree(random.terrain), ReadTree(plain.terrain)) << "round " << round << " frame " << frame;
            ASSERT_EQ(FindBrokenRule(random.terrain), "") << "round " << round << " frame " << frame;
            ASSERT_EQ(FindCrack(ReadMesh(random.terrain)), "") << "round " << round << " frame " << frame;
        }
        failures += random.failures;
    }
    EXPECT_GT(failures, Rounds(150) / 3);
}

}  // namespace

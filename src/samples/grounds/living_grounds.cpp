#include "samples/grounds/brush.h"
#include "samples/grounds/detail_textures.h"
#include "samples/noise/lattice_noise.h"
#include "samples/noise/tile_noise.h"

#include <cmath>

namespace tessara::detail {

namespace {

constexpr float kTurn = 6.2831853f;

/// Blades over blades, the later ones higher and lighter. They lean with a slow breeze.
void SowBlades(Field& tone, Field& mixture, int count, float length, std::uint32_t seed)
{
    Dice dice(seed);
    for (int i = 0; i < count; ++i) {
        const float x = dice.Next() * kSide;
        const float y = dice.Next() * kSide;
        const float height = static_cast<float>(i) / static_cast<float>(count);
        const float breeze = Clouds(x / kSide, y / kSide, 3, 2, 0.5f, seed + 9);
        const float angle = kTurn * (0.62f + 0.35f * breeze + dice.Between(-0.16f, 0.16f));
        const float patch = 0.12f * Clouds(x / kSide, y / kSide, 4, 3, 0.6f, seed + 5);
        const float root = 0.08f + 0.22f * height + patch;
        const float tip = 0.30f + 0.5f * height + patch + dice.Between(-0.15f, 0.2f);
        const float size = length * dice.Between(0.6f, 1.3f);
        const float width = dice.Between(1.8f, 3.4f);
        const float bend = dice.Between(-0.4f, 0.4f) * size;
        DrawBlade(tone, x, y, angle, size, width, bend, root, tip);
        const float colour = dice.Next() * dice.Next() + 0.8f * patch;
        DrawBlade(mixture, x, y, angle, size, width, bend, colour, colour);
    }
}

}  // namespace

Ground Grass()
{
    Ground ground{Field(0.05f), Field(0.2f)};
    SowBlades(ground.tone, ground.mixture, 9000, 34.0f, 101);
    return ground;
}

Ground Meadow()
{
    Ground ground{Field(0.05f), Field(0.2f)};
    SowBlades(ground.tone, ground.mixture, 8000, 26.0f, 202);
    Dice dice(203);
    for (int i = 0; i < 260; ++i) {
        const float x = dice.Next() * kSide;
        const float y = dice.Next() * kSide;
        // Flowers and clover stand together.
        if (Clouds(x / kSide, y / kSide, 3, 2, 0.5f, 204) < dice.Between(-0.35f, 0.5f))
            continue;
        const bool flower = i % 3 == 0;
        const float petals = flower ? dice.Between(2.2f, 3.6f) : dice.Between(2.8f, 4.4f);
        const float start = dice.Next() * kTurn;
        const int leaves = flower ? 5 : 3;
        for (int leaf = 0; leaf < leaves; ++leaf) {
            const float angle = start + kTurn * static_cast<float>(leaf) / static_cast<float>(leaves);
            const float px = x + petals * std::cos(angle);
            const float py = y + petals * std::sin(angle);
            DrawSpot(ground.tone, px, py, petals, flower ? 1.05f : 0.42f, flower ? 0.85f : 0.62f);
            DrawSpot(ground.mixture, px, py, petals, flower ? 1.0f : 0.0f, flower ? 1.0f : 0.0f);
        }
        if (flower)
            DrawSpot(ground.tone, x, y, petals * 0.6f, 0.5f, 0.6f);
    }
    return ground;
}

Ground ForestFloor()
{
    Ground ground{Field(0.12f), Field(0.5f)};
    Dice dice(303);
    constexpr int kLeaves = 2600;
    for (int i = 0; i < kLeaves; ++i) {
        const float height = static_cast<float>(i) / kLeaves;
        const float x = dice.Next() * kSide;
        const float y = dice.Next() * kSide;
        const float angle = dice.Next() * kTurn;
        const float length = dice.Between(16.0f, 40.0f);
        const float width = length * dice.Between(0.32f, 0.55f);
        const float value = 0.12f + 0.42f * height + dice.Between(-0.13f, 0.18f);
        const float colour = dice.Next() * dice.Next();
        DrawLeaf(ground.tone, x + 2.0f, y + 2.5f, angle, length, width, value * 0.35f, 0.0f);  // its shadow
        DrawLeaf(ground.tone, x, y, angle, length, width, value, 0.14f);
        DrawLeaf(ground.mixture, x, y, angle, length, width, colour, 0.0f);
        if (i % 45 == 0) {  // a twig
            const float way = dice.Next() * kTurn;
            const float twig = dice.Between(50.0f, 110.0f);
            const float bend = dice.Between(-14.0f, 14.0f);
            DrawBlade(ground.tone, x + 2.0f, y + 2.5f, way, twig, 4.5f, bend, 0.08f, 0.1f);
            DrawBlade(ground.tone, x, y, way, twig, 4.0f, bend, 0.5f, 0.7f);
        }
    }
    return ground;
}

Ground Mud()
{
    Field height;
    Ground ground;
    ground.mixture.Fill([](float u, float v) { return 0.5f + 0.8f * Clouds(u, v, 4, 4, 0.6f, 404); });
    Field groove;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float u = static_cast<float>(x) / kSide;
            const float v = static_cast<float>(y) / kSide;
            const float warpU = u + 0.018f * Clouds(u, v, 6, 3, 0.5f, 405);
            const float warpV = v + 0.018f * Clouds(u, v, 6, 3, 0.5f, 406);
            const CellPlace plate = Cells(warpU, warpV, 7, 0.9f, 407);
            const CellPlace chip = Cells(warpU, warpV, 19, 0.95f, 408);
            const float width = 0.030f + 0.022f * Clouds(u, v, 8, 2, 0.5f, 409);
            const float crack = SmoothStep(width * 0.4f, width * 1.5f, plate.edge);
            const float fine = SmoothStep(0.0f, 0.05f, chip.edge);
            // Plates dry with their rims curled up.
            const float curl = SmoothStep(0.40f, 0.06f, plate.edge);
            const float level = static_cast<float>(plate.id & 255) / 255.0f;
            height.At(x, y) =
                crack * (4.0f + 2.2f * curl + 1.5f * level) + 0.8f * fine + 1.3f * Clouds(u, v, 16, 5, 0.6f, 410);
            groove.At(x, y) = crack * (0.75f + 0.25f * fine) + 0.12f * level;
        }
    }
    const Field relief = height.Relief(0.55f);
    ground.tone.Fill([](float u, float v) { return 0.18f * Clouds(u, v, 5, 5, 0.55f, 411); });
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x)
            ground.tone.At(x, y) += 1.1f * groove.At(x, y) + 0.9f * relief.At(x, y);
    }
    return ground;
}

}  // namespace tessara::detail

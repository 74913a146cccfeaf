#include "samples/grounds/brush.h"
#include "samples/grounds/detail_textures.h"
#include "samples/noise/lattice_noise.h"
#include "samples/noise/tile_noise.h"

#include <algorithm>
#include <cmath>

namespace tessara::detail {

namespace {

/// A number of its own for each pixel, about -1 to 1.
float Grain(int x, int y, std::uint32_t seed)
{
    const std::uint32_t hash = Hash(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), seed);
    return (static_cast<float>(hash & 0xFFFF) + static_cast<float>(hash >> 16)) / 65536.0f - 1.0f;
}

/// A crest of wind-blown sand: a long slope up to 1 and a steep one down.
float Ripple(float phase)
{
    const float part = phase - std::floor(phase);
    return part < 0.72f ? SmoothStep(0.0f, 0.72f, part) : 1.0f - SmoothStep(0.72f, 1.0f, part);
}

void Add(Field& field, const Field& other, float share)
{
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x)
            field.At(x, y) += share * other.At(x, y);
    }
}

}  // namespace

Ground Sand()
{
    Ground ground;
    Field height;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float u = static_cast<float>(x) / kSide;
            const float v = static_cast<float>(y) / kSide;
            height.At(x, y) = 20.0f * Clouds(u, v, 3, 4, 0.5f, 901) + 2.2f * Clouds(u, v, 40, 3, 0.7f, 902) +
                              0.75f * Grain(x, y, 903);
            ground.tone.At(x, y) = 0.11f * Grain(x, y, 904) + 0.14f * Clouds(u, v, 4, 4, 0.6f, 905);
            ground.mixture.At(x, y) = 0.5f + 0.7f * Clouds(u, v, 5, 4, 0.6f, 906);
        }
    }
    Dice dice(907);
    for (int i = 0; i < 420; ++i) {  // coarse grains and bits of shell
        const float value = dice.Next() < 0.6f ? -0.55f : 0.55f;
        DrawSpot(ground.tone, dice.Next() * kSide, dice.Next() * kSide, dice.Between(0.6f, 1.5f), value, value * 0.6f);
    }
    Add(ground.tone, height.Relief(0.5f), 0.9f);
    return ground;
}

Ground Dunes()
{
    Ground ground;
    Field height;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float u = static_cast<float>(x) / kSide;
            const float v = static_cast<float>(y) / kSide;
            const float bend =
                0.85f * Noise(u, v, 2, 2, 1001) + 0.45f * Noise(u, v, 5, 4, 1002) + 0.14f * Noise(u, v, 13, 11, 1003);
            const float crest = Ripple(v * 15.0f + u * 2.0f + bend);
            const float strong = 0.72f + 0.45f * Clouds(u, v, 4, 2, 0.5f, 1004);
            height.At(x, y) =
                9.0f * crest * strong + 10.0f * Clouds(u, v, 3, 2, 0.5f, 1005) + 0.55f * Grain(x, y, 1006);
            ground.tone.At(x, y) = 0.10f * crest + 0.05f * Grain(x, y, 1007);
            ground.mixture.At(x, y) = crest;
        }
    }
    Add(ground.tone, height.Relief(0.8f), 0.9f);
    return ground;
}

Ground Snow()
{
    Ground ground;
    Field height;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float u = static_cast<float>(x) / kSide;
            const float v = static_cast<float>(y) / kSide;
            const float wu = u + 0.05f * Clouds(u, v, 3, 3, 0.5f, 1101);
            const float wv = v + 0.05f * Clouds(u, v, 3, 3, 0.5f, 1102);
            // Drifts with long tails along the wind, and a fine crust.
            height.At(x, y) = 26.0f * Noise(wu, wv, 2, 5, 1103) + 12.0f * Noise(wu, wv, 4, 11, 1104) +
                              4.0f * Noise(wu, wv, 9, 25, 1105) + 1.0f * Clouds(u, v, 40, 3, 0.7f, 1106);
            ground.tone.At(x, y) = 0.03f * Grain(x, y, 1107);
            ground.mixture.At(x, y) = 0.5f + 0.9f * Noise(wu, wv, 2, 5, 1103);
        }
    }
    Add(ground.tone, height.Relief(0.35f), 1.0f);
    Dice dice(1108);
    for (int i = 0; i < 500; ++i) {  // crystals that glint
        const float x = dice.Next() * kSide;
        const float y = dice.Next() * kSide;
        const float value = ground.tone.At(static_cast<int>(x), static_cast<int>(y)) + dice.Between(0.1f, 0.3f);
        DrawSpot(ground.tone, x, y, dice.Between(0.5f, 0.9f), value, value);
    }
    return ground;
}

Ground Ice()
{
    Ground ground;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float u = static_cast<float>(x) / kSide;
            const float v = static_cast<float>(y) / kSide;
            const float wu = u + 0.035f * Clouds(u, v, 4, 4, 0.55f, 1201);
            const float wv = v + 0.035f * Clouds(u, v, 4, 4, 0.55f, 1202);
            const CellPlace floe = Cells(wu, wv, 4, 1.0f, 1203);
            const CellPlace pane = Cells(wu, wv, 9, 1.0f, 1204);
            const CellPlace deep = Cells(wu + 0.013f, wv + 0.017f, 6, 1.0f, 1205);
            const float broad = 0.5f + 0.5f * Clouds(u, v, 5, 2, 0.5f, 1206);
            // A crack is white where it is open, a mere line elsewhere, and shines into the ice beside it.
            const float open = SmoothStep(0.25f, 0.75f, broad + 0.35f * Clouds(u, v, 9, 3, 0.6f, 1210));
            const float crack = SmoothStep(0.006f + 0.026f * open, 0.0f, floe.edge) * (0.35f + 0.65f * open);
            const float halo = SmoothStep(0.02f + 0.22f * open, 0.0f, floe.edge) * open;
            const float fine = SmoothStep(0.018f, 0.0f, pane.edge) * SmoothStep(0.4f, 0.7f, 1.0f - broad);
            const float under = SmoothStep(0.10f, 0.0f, deep.edge);
            const float milk = SmoothStep(-0.1f, 0.6f, Clouds(wu, wv, 3, 5, 0.6f, 1207));
            ground.tone.At(x, y) = 0.70f * crack + 0.26f * halo + 0.30f * fine + 0.10f * under + 0.50f * milk +
                                   0.07f * Clouds(u, v, 30, 3, 0.6f, 1208);
            ground.mixture.At(x, y) = milk + crack + 0.5f * halo;
        }
    }
    Dice dice(1209);
    for (int i = 0; i < 260; ++i) {  // bubbles in the clear parts
        const float x = dice.Next() * kSide;
        const float y = dice.Next() * kSide;
        const float value = ground.tone.At(static_cast<int>(x), static_cast<int>(y));
        const float radius = dice.Between(0.8f, 2.6f);
        DrawSpot(ground.tone, x, y, radius, value + 0.05f, value + 0.3f);
    }
    return ground;
}

}  // namespace tessara::detail

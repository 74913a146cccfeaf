#include "samples/grounds/detail_textures.h"
#include "samples/noise/lattice_noise.h"
#include "samples/noise/tile_noise.h"

#include <algorithm>
#include <cmath>

namespace tessara::detail {

namespace {

float Fraction(std::uint32_t id, int shift)
{
    return static_cast<float>(id >> shift & 255) / 255.0f;
}

/// Height on the face of a cell, which is tilted its own way.
float Tilt(const CellPlace& cell)
{
    return (Fraction(cell.id, 0) - 0.5f) * cell.dx + (Fraction(cell.id, 8) - 0.5f) * cell.dy;
}

/// Heights in light, over a colour of their own.
Field Lit(const Field& height, float steepness, const Field& colour, float light)
{
    Field tone = height.Relief(steepness);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x)
            tone.At(x, y) = tone.At(x, y) * light + colour.At(x, y);
    }
    return tone;
}

/// One layer of stones.
struct Layer {
    int cells;
    float roundness;  // 0: flat facets with sharp edges, 1: round
    std::uint32_t seed;
};

/// Height above the ground and shade of the stones of one layer at a place; 0 between them.
struct Stone {
    float height;
    float shade;
    float colour;
};

/// Height of a broken stone: the lowest of planes that fall away from an apex beside its middle.
float Facets(const CellPlace& place)
{
    float height = 1.0f;
    for (int i = 0; i < 4; ++i) {
        const float angle = 1.5707963f * (static_cast<float>(i) + 0.8f * Fraction(place.id, 5 * i));
        const float slope = 0.35f + 1.1f * Fraction(place.id, 4 + 5 * i);
        const float away = place.dx * std::cos(angle) + place.dy * std::sin(angle);
        height = std::min(height, 0.85f - slope * (away - 0.25f * Fraction(place.id, 8 + 4 * i)));
    }
    return std::max(height, 0.1f);
}

Stone StoneAt(float u, float v, const Layer& layer)
{
    const auto fineness = static_cast<float>(layer.cells);
    const float warp = (0.08f + 0.04f * layer.roundness) / fineness;
    const float wu = u + warp * Clouds(u, v, layer.cells * 2, 2, 0.5f, layer.seed + 1);
    const float wv = v + warp * Clouds(u, v, layer.cells * 2, 2, 0.5f, layer.seed + 2);
    const CellPlace place = Cells(wu, wv, layer.cells, 0.85f, layer.seed);
    if (place.edge < 0.05f)
        return {0.0f, 0.0f, 0.0f};
    const float inside = std::min((place.edge - 0.05f) / 0.4f, 1.0f);
    const float dome = std::sqrt(std::max(0.0f, 1.0f - (1.0f - inside) * (1.0f - inside)));
    const float broken = SmoothStep(0.0f, 0.12f, inside) * Facets(place);
    const float size = (0.55f + 0.45f * Fraction(place.id, 16)) * kSide / fineness;
    const float height = size * (dome * layer.roundness + broken * (1.0f - layer.roundness)) * 0.45f;
    return {height + 0.01f, Fraction(place.id, 24), Fraction(place.id, 12)};
}

/// A stone of a coarse layer lies there as a whole or not at all.
bool IsThere(const Stone& stone, float share)
{
    const float lot = stone.shade * 1.37f;
    return stone.height > 0.0f && (lot - std::floor(lot) < share || stone.colour < share);
}

/// The topmost stone at a place; behind it, in `floor`, how high its layer lies.
Stone TopStone(float u, float v, std::span<const Layer> layers, float coarseShare, float& floor)
{
    for (std::size_t i = 0; i + 1 < layers.size(); ++i) {
        const Stone stone = StoneAt(u, v, layers[i]);
        floor = 4.0f * static_cast<float>(layers.size() - 1 - i);
        if (IsThere(stone, coarseShare))
            return stone;
    }
    floor = 0.0f;
    return StoneAt(u, v, layers.back());
}

/// Layers of stones, the coarsest first: they lie on the finer ones where there are any.
Ground Stones(std::span<const Layer> layers, float coarseShare, float steepness, float shades)
{
    Field height;
    Field colour;
    Ground ground;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float u = static_cast<float>(x) / kSide;
            const float v = static_cast<float>(y) / kSide;
            float floor = 0.0f;
            const Stone top = TopStone(u, v, layers, coarseShare, floor);
            const float grain = Clouds(u, v, 48, 3, 0.6f, layers[0].seed + 7);
            height.At(x, y) = floor + top.height + 0.7f * grain;
            const float pit = top.height > 0.0f ? 0.0f : -0.45f;
            colour.At(x, y) = shades * (top.shade - 0.5f) + pit + 0.08f * grain;
            ground.mixture.At(x, y) = top.colour;
        }
    }
    const Field hollow = height.Blurred(9);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float below = hollow.At(x, y) - height.At(x, y);
            colour.At(x, y) -= 0.05f * std::clamp(below, -2.0f, 6.0f);
        }
    }
    ground.tone = Lit(height.Blurred(1), steepness, colour.Blurred(1), 1.0f);
    return ground;
}

}  // namespace

Ground Scree()
{
    constexpr Layer kLayers[] = {{9, 0.0f, 701}, {17, 0.05f, 702}, {34, 0.1f, 703}};
    return Stones(kLayers, 0.28f, 0.7f, 0.30f);
}

Ground Gravel()
{
    constexpr Layer kLayers[] = {{18, 0.9f, 801}, {30, 0.9f, 802}, {46, 0.9f, 803}};
    return Stones(kLayers, 0.36f, 0.65f, 0.45f);
}

Ground Rock()
{
    Field height;
    Field colour;
    Ground ground;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float u = static_cast<float>(x) / kSide;
            const float v = static_cast<float>(y) / kSide;
            const float wu = u + 0.055f * Clouds(u, v, 4, 6, 0.6f, 501);
            const float wv = v + 0.055f * Clouds(u, v, 4, 6, 0.6f, 502);
            // Broken faces of several sizes, each tilted its own way, and few open joints between them.
            const CellPlace block = Cells(wu, wv, 3, 1.0f, 503);
            const CellPlace piece = Cells(wu, wv, 8, 1.0f, 504);
            const CellPlace chip = Cells(wu, wv, 21, 1.0f, 510);
            const float open = SmoothStep(-0.1f, 0.5f, Clouds(u, v, 4, 3, 0.5f, 511));
            const float joint = SmoothStep(0.0f, 0.012f + 0.03f * open, block.edge);
            const float vein = 1.0f - (1.0f - SmoothStep(0.0f, 0.05f, piece.edge)) * open;
            height.At(x, y) = 75.0f * Tilt(block) + 30.0f * Tilt(piece) + 10.0f * Tilt(chip) + 7.0f * joint +
                              3.0f * vein + 22.0f * Crests(wu, wv, 5, 6, 505) + 5.0f * Clouds(u, v, 24, 4, 0.65f, 506);
            const float lichen = SmoothStep(0.14f, 0.42f, Clouds(u, v, 5, 5, 0.6f, 507));
            colour.At(x, y) = 0.22f * (joint - 1.0f) + 0.12f * (vein - 1.0f) + 0.22f * (Fraction(piece.id, 16) - 0.5f) +
                              0.14f * Clouds(u, v, 7, 5, 0.6f, 508) + 0.14f * lichen;
            ground.mixture.At(x, y) = lichen + 0.3f * Clouds(u, v, 4, 3, 0.5f, 509);
        }
    }
    ground.tone = Lit(height, 0.32f, colour, 1.0f);
    return ground;
}

Ground Cliff()
{
    constexpr float kBeds = 8.0f;
    Field height;
    Field colour;
    Ground ground;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float u = static_cast<float>(x) / kSide;
            const float v = static_cast<float>(y) / kSide;
            // Beds of uneven thickness that wave and are thrown at faults, one over the other.
            const CellPlace shift = Cells(u + 0.03f * Clouds(u, v, 4, 3, 0.5f, 610), v, 3, 0.9f, 611);
            const float thrown = 0.035f * (Fraction(shift.id, 4) - 0.5f);
            const float wave = v + thrown + 0.05f * Noise(u, v, 2, 2, 601) + 0.02f * Clouds(u, v, 5, 5, 0.6f, 602);
            const float bed = (wave + 0.035f * Noise(0.5f, wave, 1, 9, 612)) * kBeds;
            const float below = std::floor(bed);
            const float part = bed - below;
            const auto number = static_cast<std::uint32_t>(static_cast<int>(below) + 100 * static_cast<int>(kBeds)) %
                                static_cast<std::uint32_t>(kBeds);
            const std::uint32_t id = Hash(number, 3, 603);
            const float layers = Noise(u, wave, 3, 46, 604) + 0.7f * Noise(u, wave, 5, 90, 613);
            const float crumbled = SmoothStep(-0.25f, 0.35f, Clouds(u, v, 6, 4, 0.6f, 614));
            const float ledge = 1.0f - (1.0f - SmoothStep(0.0f, 0.05f + 0.1f * crumbled, part)) * crumbled;
            const CellPlace block = Cells(u + 0.02f * Clouds(u, v, 9, 4, 0.6f, 615), v, 6, 1.0f, 605);
            const CellPlace chip = Cells(u, wave, 17, 1.0f, 616);
            const float split = 1.0f - (1.0f - SmoothStep(0.0f, 0.03f, block.edge)) * crumbled;
            height.At(x, y) = 9.0f * ledge + 18.0f * part * Fraction(id, 0) + 3.0f * split + 3.0f * layers +
                              40.0f * Tilt(block) + 13.0f * Tilt(chip) + 20.0f * Crests(u, v, 5, 6, 606) +
                              4.0f * Clouds(u, v, 26, 4, 0.6f, 607);
            colour.At(x, y) = 0.30f * (Fraction(id, 8) - 0.5f) + 0.28f * (ledge - 1.0f) + 0.12f * (split - 1.0f) +
                              0.09f * layers + 0.14f * (Fraction(block.id, 16) - 0.5f) +
                              0.12f * Clouds(u, v, 6, 5, 0.6f, 608);
            ground.mixture.At(x, y) = Fraction(id, 4) + 0.4f * Clouds(u, v, 5, 4, 0.6f, 609);
        }
    }
    ground.tone = Lit(height, 0.32f, colour, 1.0f);
    return ground;
}

}  // namespace tessara::detail

#include "samples/noise/tile_noise.h"

#include "samples/noise/lattice_noise.h"

#include <algorithm>
#include <cmath>

namespace tessara::detail {

namespace {

/// Whole and fractional part of a coordinate in cells.
struct Split {
    int cell;
    float part;
};

Split SplitUp(float place)
{
    const float whole = std::floor(place);
    return {static_cast<int>(whole), place - whole};
}

int Wrapped(int cell, int cells)
{
    const int rest = cell % cells;
    return rest < 0 ? rest + cells : rest;
}

/// One of eight directions by (x, y): the slope at a corner of a cell.
float Slope(std::uint32_t hash, float x, float y)
{
    constexpr float kDiagonal = 0.70710678f;
    const float a = (hash & 1) != 0 ? x : -x;
    const float b = (hash & 2) != 0 ? y : -y;
    switch (hash >> 2 & 3) {
    case 0:
        return a;
    case 1:
        return b;
    default:
        return (a + b) * kDiagonal;
    }
}

float Fraction(std::uint32_t hash)
{
    return static_cast<float>(hash & 0xFFFF) / 65536.0f;
}

}  // namespace

std::uint32_t Hash(std::uint32_t x, std::uint32_t y, std::uint32_t seed)
{
    // One round more than a lattice needs: dice count along one axis alone.
    std::uint32_t h = MixBits(JoinCell(x, y, seed) + 0x27D4EB2Fu) + x;
    h = (h ^ h >> 15) * 0x2C1B3C6Du;
    return h ^ h >> 16;
}

float Noise(float u, float v, int cellsU, int cellsV, std::uint32_t seed)
{
    const auto gradient = [&](std::int32_t column, std::int32_t row, float dx, float dy) {
        const auto hash = Hash(static_cast<std::uint32_t>(Wrapped(column, cellsU)),
                               static_cast<std::uint32_t>(Wrapped(row, cellsV)), seed);
        return Slope(hash, dx, dy);
    };
    return 1.5f * LatticeNoise(u * static_cast<float>(cellsU), v * static_cast<float>(cellsV), gradient);
}

float Clouds(float u, float v, int cells, int octaves, float gain, std::uint32_t seed)
{
    float sum = 0.0f;
    float strength = 1.0f;
    float total = 0.0f;
    for (int i = 0; i < octaves; ++i) {
        sum += strength * Noise(u, v, cells << i, cells << i, seed + static_cast<std::uint32_t>(i));
        total += strength;
        strength *= gain;
    }
    return sum / total;
}

float Crests(float u, float v, int cells, int octaves, std::uint32_t seed)
{
    float sum = 0.0f;
    float strength = 0.5f;
    float before = 1.0f;
    for (int i = 0; i < octaves; ++i) {
        float crest = 1.0f - std::abs(Noise(u, v, cells << i, cells << i, seed + static_cast<std::uint32_t>(i)));
        crest *= crest;
        sum += crest * strength * before;
        before = crest;
        strength *= 0.55f;
    }
    return sum;
}

CellPlace Cells(float u, float v, int cells, float disorder, std::uint32_t seed)
{
    const Split x = SplitUp(u * static_cast<float>(cells));
    const Split y = SplitUp(v * static_cast<float>(cells));
    struct Point {
        float dx = 0.0f;
        float dy = 0.0f;
        float square = 1e9f;
        std::uint32_t id = 0;
    } points[25];
    Point* nearest = points;
    for (int n = 0; n < 25; ++n) {
        const int i = n % 5 - 2;
        const int j = n / 5 - 2;
        Point& point = points[n];
        point.id = Hash(static_cast<std::uint32_t>(Wrapped(x.cell + i, cells)),
                        static_cast<std::uint32_t>(Wrapped(y.cell + j, cells)), seed);
        point.dx = static_cast<float>(i) + 0.5f + (Fraction(point.id) - 0.5f) * disorder - x.part;
        point.dy = static_cast<float>(j) + 0.5f + (Fraction(point.id >> 16) - 0.5f) * disorder - y.part;
        point.square = point.dx * point.dx + point.dy * point.dy;
        if (point.square < nearest->square)
            nearest = &point;
    }
    float edge = 1e9f;
    for (const Point& point : points) {
        const float gapX = point.dx - nearest->dx;
        const float gapY = point.dy - nearest->dy;
        const float gap = std::sqrt(gapX * gapX + gapY * gapY);
        if (&point != nearest && gap > 1e-6f)
            edge = std::min(edge, (point.square - nearest->square) / (2.0f * gap));
    }
    return {std::sqrt(nearest->square), edge, nearest->dx, nearest->dy, nearest->id};
}

}  // namespace tessara::detail

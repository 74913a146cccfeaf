#pragma once

#include "terrain/height_source.h"
#include "textures/elevation_element.h"
#include "textures/elevation_palette.h"

#include <cstdint>
#include <functional>
#include <vector>

/// A grid of elevations with its palette, as a matrix service would hold them.
class TestGrid {
public:
    TestGrid(std::int32_t width, std::int32_t height, const std::function<float(std::int32_t, std::int32_t)>& at)
        : width_(width), height_(height), elements_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {
        Fill(at);
    }

    void Fill(const std::function<float(std::int32_t, std::int32_t)>& at)
    {
        for (std::int32_t y = 0; y < height_; ++y) {
            for (std::int32_t x = 0; x < width_; ++x)
                At(x, y).value = at(x, y);
        }
    }

    ElevationElement& At(std::int32_t x, std::int32_t y)
    {
        return elements_[static_cast<std::size_t>(x) + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_)];
    }

    HeightSource Source() const
    {
        HeightSource source;
        source.Grid = elements_.data();
        source.Width = width_;
        source.Height = height_;
        source.Stride = width_;
        source.Palette = &palette;
        return source;
    }

    ElevationPalette palette;

private:
    std::int32_t width_;
    std::int32_t height_;
    std::vector<ElevationElement> elements_;
};

/// Deterministic noise: a hash of the position in 0.0 to 1.0.
inline float HashNoise(std::int32_t x, std::int32_t y, std::uint32_t seed)
{
    std::uint32_t h =
        static_cast<std::uint32_t>(x) * 0x9E3779B1u ^ static_cast<std::uint32_t>(y) * 0x85EBCA77u ^ seed * 0xC2B2AE3Du;
    h = (h ^ h >> 15) * 0x2C1B3C6Du;
    h = (h ^ h >> 12) * 0x297A2D39u;
    h ^= h >> 15;
    return static_cast<float>(h >> 8) / 16777216.0f;
}

/// Fractal heights in 0.0 to 1.0: octaves of value noise, each half as wide and half as high as the one before.
class FractalHeights {
public:
    explicit FractalHeights(std::int32_t size, std::uint32_t seed = 1) : size_(size), seed_(seed) {}

    float operator()(std::int32_t x, std::int32_t y) const
    {
        float sum = 0.0f;
        float weight = 0.5f;
        std::uint32_t octave = seed_;
        for (std::int32_t cell = size_ / 2; cell >= 1; cell /= 2, weight *= 0.5f)
            sum += weight * Value(x, y, cell, octave++);
        return sum;
    }

private:
    static float Value(std::int32_t x, std::int32_t y, std::int32_t cell, std::uint32_t seed)
    {
        const std::int32_t cx = x / cell;
        const std::int32_t cy = y / cell;
        const float fx = static_cast<float>(x % cell) / static_cast<float>(cell);
        const float fy = static_cast<float>(y % cell) / static_cast<float>(cell);
        const float north = HashNoise(cx, cy, seed) * (1.0f - fx) + HashNoise(cx + 1, cy, seed) * fx;
        const float south = HashNoise(cx, cy + 1, seed) * (1.0f - fx) + HashNoise(cx + 1, cy + 1, seed) * fx;
        return north * (1.0f - fy) + south * fy;
    }

    std::int32_t size_;
    std::uint32_t seed_;
};

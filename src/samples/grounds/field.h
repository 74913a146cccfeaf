#pragma once

#include <cstddef>
#include <vector>

namespace tessara::detail {

/// Side of the generated textures in pixels. A power of two: no upload rescales it.
inline constexpr int kSide = 512;

/// A square of numbers that continues with itself past each edge. (0, 0) is the top left corner, y runs down.
class Field {
public:
    explicit Field(float value = 0.0f) : values_(std::size_t{kSide} * kSide, value) {}

    /// Any x and y, also negative ones.
    float& At(int x, int y) { return values_[Index(x, y)]; }
    float At(int x, int y) const { return values_[Index(x, y)]; }

    /// Sets each place to function(u, v), u and v from 0 up to 1.
    template <class Function>
    Field& Fill(Function&& function)
    {
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x)
                At(x, y) = function(static_cast<float>(x) / kSide, static_cast<float>(y) / kSide);
        }
        return *this;
    }

    /// Average over squares of 2 x radius + 1 pixels.
    Field Blurred(int radius) const;

    /// Moves and stretches the values to an average and a standard deviation.
    Field& Normalize(float mean, float deviation);

    /// How bright a surface of these heights looks in light from the top left: 0 where it is level, about -1 to 1.
    /// \param steepness factor on the heights, in pixels
    Field Relief(float steepness) const;

private:
    static std::size_t Index(int x, int y)
    {
        constexpr int kMask = kSide - 1;
        return static_cast<std::size_t>(y & kMask) * kSide + static_cast<std::size_t>(x & kMask);
    }

    std::vector<float> values_;
};

}  // namespace tessara::detail

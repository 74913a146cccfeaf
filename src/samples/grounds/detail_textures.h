#pragma once

#include "samples/grounds/field.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tessara::detail {

/// Lightness of a ground, about 0 to 1, and which of its two colours it has where, 0 to 1.
struct Ground {
    Field tone;
    Field mixture;
};

struct Tint {
    float red, green, blue;
};

/// One detail texture of the system database. Drawn over a terrain it is added to what is there, less a half: its
/// average is the middle grey, which changes nothing, and its tints are weak.
struct DetailTexture {
    const char* key;
    const char* displayName;
    Ground (*make)();
    float contrast;  ///< standard deviation of the lightness
    Tint first;      ///< added where the mixture is 0; red, green and blue make no difference to the lightness together
    Tint second;     ///< added where the mixture is 1
};

/// The textures in the order of the list.
std::span<const DetailTexture> DetailTextures();

/// Paints kSide x kSide pixels of three bytes blue, green, red, which continue past each edge; the top row first.
/// The same on every run.
std::vector<std::uint8_t> Paint(const DetailTexture& texture);

// The grounds.
Ground Grass();
Ground Meadow();
Ground ForestFloor();
Ground Mud();
Ground Rock();
Ground Cliff();
Ground Scree();
Ground Gravel();
Ground Sand();
Ground Dunes();
Ground Snow();
Ground Ice();

}  // namespace tessara::detail

#include "samples/grounds/detail_textures.h"

#include <algorithm>

namespace tessara::detail {

namespace {

constexpr DetailTexture kTextures[] = {
    {"grass", "Grass", &Grass, 0.13f, {-0.03f, 0.035f, -0.06f}, {0.03f, 0.01f, -0.06f}},
    {"meadow", "Meadow", &Meadow, 0.13f, {-0.03f, 0.035f, -0.05f}, {0.06f, 0.01f, -0.09f}},
    {"rock", "Rock", &Rock, 0.13f, {0.0f, 0.0f, 0.01f}, {0.03f, 0.005f, -0.03f}},
    {"cliff", "Cliff", &Cliff, 0.13f, {0.035f, 0.0f, -0.03f}, {-0.01f, 0.0f, 0.015f}},
    {"scree", "Scree", &Scree, 0.14f, {0.01f, 0.0f, -0.01f}, {-0.01f, 0.0f, 0.02f}},
    {"gravel", "Gravel", &Gravel, 0.14f, {0.03f, 0.0f, -0.025f}, {-0.015f, 0.0f, 0.02f}},
    {"sand", "Sand", &Sand, 0.08f, {0.04f, 0.005f, -0.05f}, {0.03f, 0.0f, -0.03f}},
    {"dunes", "Dunes", &Dunes, 0.10f, {0.045f, 0.005f, -0.06f}, {0.035f, 0.0f, -0.04f}},
    {"snow", "Snow", &Snow, 0.06f, {-0.015f, 0.0f, 0.03f}, {0.0f, 0.0f, 0.01f}},
    {"ice", "Ice", &Ice, 0.10f, {-0.05f, 0.01f, 0.05f}, {-0.02f, 0.005f, 0.02f}},
    {"forest-floor", "Forest floor", &ForestFloor, 0.13f, {0.05f, -0.005f, -0.06f}, {0.00f, 0.02f, -0.05f}},
    {"mud", "Mud", &Mud, 0.12f, {0.035f, 0.0f, -0.045f}, {0.02f, 0.0f, -0.02f}},
};

constexpr float kMiddle = 127.5f / 255.0f;

std::uint8_t Byte(float value)
{
    return static_cast<std::uint8_t>(std::clamp(value, 0.0f, 1.0f) * 255.0f + 0.5f);
}

float Blend(float a, float b, float t)
{
    return a + (b - a) * std::clamp(t, 0.0f, 1.0f);
}

/// Pulls far values in, so that none is cut off at black or white.
float Soft(float value)
{
    const float away = value - kMiddle;
    return kMiddle + away / (1.0f + 0.55f * (away < 0.0f ? -away : away));
}

}  // namespace

std::span<const DetailTexture> DetailTextures()
{
    return kTextures;
}

std::vector<std::uint8_t> Paint(const DetailTexture& texture)
{
    Ground ground = texture.make();
    ground.tone.Normalize(kMiddle, texture.contrast);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x)
            ground.tone.At(x, y) = Soft(ground.tone.At(x, y));
    }
    ground.tone.Normalize(kMiddle, texture.contrast);

    std::vector<std::uint8_t> pixels;
    pixels.reserve(std::size_t{kSide} * kSide * 3);
    for (int y = kSide - 1; y >= 0; --y) {
        for (int x = 0; x < kSide; ++x) {
            const float tone = ground.tone.At(x, y);
            const float t = ground.mixture.At(x, y);
            pixels.push_back(Byte(tone + Blend(texture.first.blue, texture.second.blue, t)));
            pixels.push_back(Byte(tone + Blend(texture.first.green, texture.second.green, t)));
            pixels.push_back(Byte(tone + Blend(texture.first.red, texture.second.red, t)));
        }
    }
    return pixels;
}

}  // namespace tessara::detail

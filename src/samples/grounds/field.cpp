#include "samples/grounds/field.h"

#include <cmath>

namespace tessara::detail {

Field Field::Blurred(int radius) const
{
    const float share = 1.0f / static_cast<float>(2 * radius + 1);
    Field across;
    Field result;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            for (int i = -radius; i <= radius; ++i)
                across.At(x, y) += At(x + i, y) * share;
        }
    }
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            for (int i = -radius; i <= radius; ++i)
                result.At(x, y) += across.At(x, y + i) * share;
        }
    }
    return result;
}

Field& Field::Normalize(float mean, float deviation)
{
    double sum = 0.0;
    double squares = 0.0;
    for (const float value : values_) {
        sum += static_cast<double>(value);
        squares += static_cast<double>(value) * static_cast<double>(value);
    }
    const double count = static_cast<double>(values_.size());
    const double average = sum / count;
    const double variance = squares / count - average * average;
    const float scale = variance > 1e-12 ? deviation / static_cast<float>(std::sqrt(variance)) : 0.0f;
    for (float& value : values_)
        value = (value - static_cast<float>(average)) * scale + mean;
    return *this;
}

Field Field::Relief(float steepness) const
{
    Field result;
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const float dx = (At(x + 1, y) - At(x - 1, y)) * 0.5f * steepness;
            const float dy = (At(x, y + 1) - At(x, y - 1)) * 0.5f * steepness;
            // Normal (-dx, -dy, 1) with the light at (-1, -1, 1.4), which is 1 / 1.99 on level ground 0.7.
            const float light = (dx + dy + 1.4f) / (std::sqrt(dx * dx + dy * dy + 1.0f) * 1.99f);
            result.At(x, y) = (light > 0.0f ? light : 0.0f) - 0.7035f;
        }
    }
    return result;
}

}  // namespace tessara::detail

#include "samples/grounds/brush.h"

#include <algorithm>
#include <cmath>

namespace tessara::detail {

namespace {

void Blend(float& place, float value, float cover)
{
    place += (value - place) * cover;
}

/// Calls paint(place, along, across) for each pixel of a box: along and across are the way from (x, y) in pixels,
/// turned by the angle.
template <class Paint>
void ForEachAround(Field& field, float x, float y, float angle, float reach, Paint&& paint)
{
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    const int left = static_cast<int>(std::floor(x - reach));
    const int right = static_cast<int>(std::ceil(x + reach));
    const int top = static_cast<int>(std::floor(y - reach));
    const int bottom = static_cast<int>(std::ceil(y + reach));
    for (int py = top; py <= bottom; ++py) {
        for (int px = left; px <= right; ++px) {
            const float dx = static_cast<float>(px) - x;
            const float dy = static_cast<float>(py) - y;
            paint(field.At(px, py), dx * c + dy * s, dy * c - dx * s);
        }
    }
}

/// How much of a pixel lies inside an edge that is `inside` pixels away.
float Cover(float inside)
{
    return std::clamp(inside + 0.5f, 0.0f, 1.0f);
}

}  // namespace

void DrawBlade(Field& field, float x, float y, float angle, float length, float width, float bend, float rootValue,
               float tipValue)
{
    ForEachAround(field, x, y, angle, length + std::abs(bend) + 1.0f, [&](float& place, float along, float across) {
        if (along < 0.0f || along > length)
            return;
        const float t = along / length;
        const float half = 0.5f * width * (1.0f - t * t);
        const float off = std::abs(across - bend * t * t);
        const float shade = 1.0f - 0.25f * std::min(off / (half + 0.1f), 1.0f);
        Blend(place, (rootValue + (tipValue - rootValue) * t) * shade, Cover(half - off));
    });
}

void DrawSpot(Field& field, float x, float y, float radius, float middle, float rim)
{
    ForEachAround(field, x, y, 0.0f, radius + 1.0f, [&](float& place, float dx, float dy) {
        const float far = std::sqrt(dx * dx + dy * dy);
        const float t = std::min(far / radius, 1.0f);
        Blend(place, middle + (rim - middle) * t * t, Cover(radius - far));
    });
}

void DrawLeaf(Field& field, float x, float y, float angle, float length, float width, float value, float rib)
{
    ForEachAround(field, x, y, angle, 0.5f * length + 1.0f, [&](float& place, float along, float across) {
        const float t = 2.0f * along / length;
        if (t < -1.0f || t > 1.0f)
            return;
        const float half = 0.5f * width * (1.0f - t * t) * (1.0f - 0.3f * t);
        const float off = std::abs(across);
        const float fold = rib * (1.0f - std::min(off / 1.5f, 1.0f));
        Blend(place, value + fold - 0.15f * off / (half + 1.0f), Cover(half - off));
    });
}

}  // namespace tessara::detail

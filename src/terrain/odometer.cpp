#include "terrain/odometer.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kLongestWay = 0x1p20;              // in one update, in tree units
constexpr Odometer::Reading kLastCount = 1u << 31;  // leaves room for the longest slack

double Way(float from, float to)
{
    return std::fabs(static_cast<double>(to) - static_cast<double>(from));
}

}  // namespace

void Odometer::Advance(const Viewer& viewer, float factor)
{
    double longest = 0.0;
    isNew_ = !valid_ || factor != factor_ || now_ >= kLastCount;
    for (const double way : {Way(at_.x, viewer.x), Way(at_.y, viewer.y), Way(at_.z, viewer.z)}) {
        isNew_ = isNew_ || !(way <= kLongestWay);
        longest = std::max(longest, way);
    }
    now_ = isNew_ ? 1 : now_ + static_cast<Reading>(std::ceil(longest * 256.0));
    at_ = viewer;
    factor_ = factor;
    valid_ = true;
}

#pragma once

#include <cmath>

namespace tessara {

/// A point or a direction in a right-handed space of three axes.
struct Vector3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    bool operator==(const Vector3&) const = default;
};

inline constexpr Vector3 operator+(const Vector3& a, const Vector3& b) noexcept
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline constexpr Vector3 operator-(const Vector3& a, const Vector3& b) noexcept
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline constexpr Vector3 operator*(const Vector3& a, double factor) noexcept
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

inline constexpr double Dot(const Vector3& a, const Vector3& b) noexcept
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline constexpr Vector3 Cross(const Vector3& a, const Vector3& b) noexcept
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double Length(const Vector3& a) noexcept
{
    return std::sqrt(Dot(a, a));
}

/// The direction of `a` with length 1, or the zero vector where `a` has none.
inline Vector3 Normalised(const Vector3& a) noexcept
{
    const double length = Length(a);
    return length > 0.0 ? a * (1.0 / length) : Vector3{};
}

}  // namespace tessara

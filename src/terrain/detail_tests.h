#pragma once

#include "terrain/viewer.h"

#include <cmath>
#include <limits>

/// How far a viewer may move along any axis before the first of some answers may change. Doubt makes it smaller.
class Slack {
public:
    /// Takes an answer into account that compares `needed` with `distance`. \param reach the longest distance that went
    /// into the comparison: it bounds the roundings, here and wherever the viewer may go
    void Take(float needed, float distance, float reach)
    {
        // Two roundings of the distance at each end of the way are up to 2^-22 of the reach. What is no number here
        // comes from figures that outweigh any place of the viewer.
        const float slack = std::fabs(needed - distance) - reach * 0x1p-20f;
        if (slack < least_)
            least_ = slack;
    }
    float Least() const { return least_; }

private:
    float least_ = std::numeric_limits<float>::infinity();
};

/// Weighs errors against the largest axis distance to the viewer of one update: an error is worth its detail when its
/// product with the factor is above the distance.
class DetailTests {
public:
    DetailTests(const Viewer& viewer, float factor) : viewer_(viewer), factor_(factor) {}

    /// Whether a vertex with this error is worth its place.
    bool Vertex(float x, float y, float z, float error, Slack& slack) const
    {
        const float distance = Largest(std::fabs(x - viewer_.x), std::fabs(y - viewer_.y), std::fabs(z - viewer_.z));
        return Compare(error, distance, distance, slack);
    }

    /// The same for a box from (x, low, z) to (x + side, high, z + side); always true for a viewer inside it.
    bool Box(float x, float z, float side, float low, float high, float error, Slack& slack) const
    {
        const float half = side * 0.5f;
        const float dx = std::fabs(x + half - viewer_.x);
        const float dy = std::fabs((low + high) * 0.5f - viewer_.y);
        const float dz = std::fabs(z + half - viewer_.z);
        return Compare(error, Largest(dx - half, dy - (high - low) * 0.5f, dz - half), Largest(dx, dy, dz), slack);
    }

private:
    static float Largest(float a, float b, float c)
    {
        float largest = a;
        if (b > largest)
            largest = b;
        if (c > largest)
            largest = c;
        return largest;
    }
    bool Compare(float error, float distance, float reach, Slack& slack) const
    {
        const float needed = error * factor_;
        slack.Take(needed, distance, reach);
        return needed > distance;
    }

    Viewer viewer_;
    float factor_;
};

#pragma once

#include "samples/noise/plane_noise.h"

#include <cstdint>

namespace tessara {

/// What the country of the sample terrain is made of, by place: x to the east and y to the south, 0 to 1 inside its
/// edges.
class SampleCountry {
public:
    explicit SampleCountry(std::uint32_t seed);

    /// Above 0 on land, rising inland. The land lies between a sea in the south-west and one in the far north-east.
    double Inland(double x, double y) const;

    /// How fast the ground rises, 0 to about 1: ranges of mountains away from the shores.
    /// \param inland Inland of the place
    double Uplift(double x, double y, double inland) const;

    /// Around 1.
    double Hardness(double x, double y) const;

    /// Around 0, about 1 high.
    double Roughness(double x, double y) const;

    /// Moves a place by about the length `reach`, neighbours alike.
    void Bend(double& x, double& y, double reach) const;

private:
    PlaneNoise coast_;
    PlaneNoise detail_;
    PlaneNoise ranges_;
    PlaneNoise rock_;
};

}  // namespace tessara

#pragma once

#include "host/vector3.h"

namespace tessara {

/// Light and air of a picture. Colours are linear, red, green and blue in x, y and z.
struct Atmosphere {
    Vector3 sunDirection;                   ///< unit vector of true space towards the sun
    Vector3 sunColor;                       ///< light on what is turned towards the sun
    Vector3 skyColor{0.16, 0.21, 0.30};     ///< light from above, in the shade
    Vector3 groundColor{0.10, 0.09, 0.07};  ///< light from below
    Vector3 hazeColor;                      ///< what far things fade into

    Vector3 glowColor;  ///< what the air around the sun adds to the sky

    /// Colour of the sky, brighter and warmer towards the sun. \param direction unit vector of true space
    Vector3 Sky(const Vector3& direction) const;
};

/// Level ground in the open gets a light of 1 from sun and sky together, but for less in that of a low sun, which is
/// warmer: a colour is seen as what it is.
/// \param azimuth compass direction of the sun in degrees, 90 for east \param height of the sun above the horizon in
///        degrees
Atmosphere SunlitAtmosphere(double azimuth, double height);

/// From linear light to what a picture holds: the square root of light up to one half, and of what is brighter less
/// and less, so that nothing burns out. The terrain's shader does the same.
double EncodeLight(double linear);

}  // namespace tessara

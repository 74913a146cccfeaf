#pragma once

#include "host/vector3.h"

namespace tessara {

/// Light and air of a picture. Colours are linear, red, green and blue in x, y and z.
struct Atmosphere {
    Vector3 sunDirection;  ///< unit vector of true space towards the sun
    Vector3 sunColor{3.9, 3.45, 2.7};
    Vector3 skyColor{0.27, 0.38, 0.62};     ///< light from above, in the shade
    Vector3 groundColor{0.16, 0.14, 0.11};  ///< light from below
    Vector3 hazeColor{0.62, 0.76, 0.92};    ///< what far things fade into

    /// Colour of the sky in a direction. \param height sine of the angle above the horizon, -1 to 1
    Vector3 Sky(double height) const;
};

/// \param azimuth compass direction of the sun in degrees, 90 for east \param height of the sun above the horizon in
///        degrees
Atmosphere SunlitAtmosphere(double azimuth, double height);

/// From linear light, which may be above 1, to what a picture holds, 0 to 1. The terrain's shader does the same.
double EncodeLight(double linear);

}  // namespace tessara

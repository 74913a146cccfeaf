#pragma once

#include "host/camera.h"

#include <optional>
#include <vector>

namespace CLI {
class App;
}

namespace tessara {

class GroundFrame;

/// From where a terrain is seen, and in how much detail.
struct ViewOptions {
    int width = 1600;
    int height = 900;
    std::optional<Vector3> camera;  ///< east, north, height on the map; without it the whole terrain is shown
    std::optional<Vector3> target;  ///< the same for the point in the middle of the picture
    double fieldOfView = 36.0;
    double azimuth = 24.0;  ///< compass direction that the camera looks in, where no position says otherwise
    double tilt = 30.0;     ///< degrees that it looks down, likewise
    std::optional<double> levelOfDetail;
    int frames = 0;  ///< to draw before the result; 0: until the triangles stay the same
};

/// Adds the options to a command. \param view outlives the command
void AddViewOptions(CLI::App& command, ViewOptions& view);

/// The camera of the options. \param outline points that bound the terrain
ComPtr<Camera> MakeCamera(const ViewOptions& view, const GroundFrame& ground, const std::vector<Vector3>& outline);

/// The level of detail asked for, or one that keeps errors of height below so many pixels.
double LevelOfDetailOf(const ViewOptions& view, double pixels = 0.7);

}  // namespace tessara

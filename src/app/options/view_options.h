#pragma once

#include "host/camera.h"

#include <optional>
#include <vector>

namespace CLI {
class App;
}

namespace tessara {

class GroundFrame;
struct ProjectView;

/// From where a terrain is seen, and in how much detail.
struct ViewOptions {
    int width = 1600;
    int height = 900;
    std::optional<Vector3> camera;      ///< east, north, height on the map; without it the whole terrain is shown
    std::optional<Vector3> target;      ///< the same for the point in the middle of the picture
    std::optional<double> fieldOfView;  ///< degrees across the picture
    std::optional<double> azimuth;  ///< compass direction that the camera looks in, where no position says otherwise
    std::optional<double> tilt;     ///< degrees that it looks down, likewise
    std::optional<double> levelOfDetail;
    int frames = 0;  ///< to draw before the result; 0: until the triangles stay the same
};

/// Adds the options to a command. \param view outlives the command
void AddViewOptions(CLI::App& command, ViewOptions& view);

/// What was asked for, to be remembered in a project.
ProjectView ToRemember(const ViewOptions& view);

/// Takes what nobody asked for from what a project remembers. Who asks for any place or direction of the camera gets
/// none of the project's places.
void FillIn(ViewOptions& view, const ProjectView& remembered);

/// The camera of the options. \param outline points that bound the terrain
ComPtr<Camera> MakeCamera(const ViewOptions& view, const GroundFrame& ground, const std::vector<Vector3>& outline);

/// The level of detail asked for, or one that keeps errors of height below so many pixels.
double LevelOfDetailOf(const ViewOptions& view, double pixels = 0.7);

}  // namespace tessara

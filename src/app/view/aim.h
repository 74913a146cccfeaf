#pragma once

#include "host/camera.h"

#include <optional>
#include <utility>

namespace tessara {

class GroundFrame;
struct Outline;
struct ProjectView;

/// From where a terrain is to be seen, as a command line asks for it and as a project remembers it. Points are map
/// points: metres east and north of the south-west grid point, and the height in metres. Angles are degrees.
struct Aim {
    std::optional<Vector3> camera;        ///< without it the whole terrain is shown
    std::optional<Vector3> target;        ///< the point in the middle of the picture
    std::optional<double> azimuth;        ///< compass direction of the view, where no target says otherwise
    std::optional<double> tilt;           ///< how far it looks down, likewise
    std::optional<double> fieldOfView;    ///< across the picture
    std::optional<double> levelOfDetail;  ///< metres out to which a drawn height error of 1 m counts

    bool operator==(const Aim&) const = default;
};

Aim AimOf(const ProjectView& view);

/// Remembers what is set of an aim.
void Remember(const Aim& aim, ProjectView& view);

/// The defaults.
inline constexpr double kAzimuth = 24.0;
inline constexpr double kTilt = 30.0;
inline constexpr double kFieldOfView = 36.0;

/// How a camera stands: its place in true space, and where it looks in degrees.
struct Pose {
    Vector3 position;
    double azimuth = kAzimuth;
    double tilt = kTilt;
    double fieldOfView = kFieldOfView;
};

/// Direction of true space, of length 1.
Vector3 DirectionOf(double azimuth, double tilt);

/// The pose of an aim. What it says no place for sees all of the terrain.
/// \param width,height of the picture in pixels
Pose PoseOf(const Aim& aim, const GroundFrame& ground, const Outline& outline, int width, int height);

/// The aim of a pose. \param focus what the middle of its picture shows, in true space
Aim AimOf(const Pose& pose, const Vector3& focus, const GroundFrame& ground);

/// Puts a camera where a pose says, with a lens that reaches from the nearest to the farthest point of the terrain.
/// \param above height of the eye above the ground below it, in true space
void Place(Camera& camera, const Pose& pose, const Outline& outline, double above);

/// The level of detail at which errors of height stay below so many pixels.
double LevelOfDetailFor(double fieldOfView, int width, double pixels);

/// Compass direction that a camera looks in, in degrees.
double AzimuthOf(const Camera& camera);

/// Default compass direction and height of the sun for a camera: on its left.
std::pair<double, double> SunBeside(double azimuth);

}  // namespace tessara

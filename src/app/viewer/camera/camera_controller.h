#pragma once

#include "app/view/aim.h"
#include "app/view/framing.h"
#include "app/viewer/terrain/ground_model.h"
#include "host/camera.h"

#include <functional>
#include <optional>
#include <utility>

namespace tessara {

/// A place in the picture, in pixels from its left and top edge.
struct PicturePoint {
    double x = 0.0;
    double y = 0.0;
};

/// Which ways a flying camera is steered, each -1, 0 or 1.
struct FlyInput {
    int forward = 0;
    int right = 0;
    int up = 0;
    bool fast = false;
};

/// Moves a camera over a terrain as a person wants it: by grabbing points of the ground, by zooming towards them, by
/// flying. The camera never gets below the ground. Angles are degrees: the azimuth is the compass direction that it
/// looks in, the tilt how far it looks down.
class CameraController {
public:
    /// \param camera,ground,frame outlive this object and belong to one terrain
    CameraController(Camera& camera, const GroundModel& ground, const GroundFrame& frame);

    /// Hears of every movement from now on. \param moved may be empty
    void OnMove(std::function<void()> moved) { onMove_ = std::move(moved); }

    /// What bounds the terrain: what "all" means, and how near and far the lens reaches.
    void SetOutline(Outline outline);

    /// The ground was changed: it may have risen above the camera.
    void GroundChanged();

    /// A camera that nobody has moved keeps to its aim: one that shows all of the terrain goes on doing so. \param
    /// width,height of the picture in pixels, positive
    void Resize(int width, int height);

    /// The factor on heights changed by this much: the camera stays over the same point of the ground at the same
    /// height above it.
    void ScaleHeights(double factor);

    double Azimuth() const noexcept { return pose_.azimuth; }
    double Tilt() const noexcept { return pose_.tilt; }
    const Vector3& Position() const noexcept { return pose_.position; }
    double FieldOfView() const noexcept { return pose_.fieldOfView; }

    /// Width of the picture for a height of 1.
    double Aspect() const noexcept { return static_cast<double>(width_) / height_; }

    /// Height of the eye above the ground below it, in metres of true space.
    double HeightAboveGround() const;

    /// Direction of true space, of length 1, in which a point of the picture lies.
    Vector3 RayThrough(const PicturePoint& point) const;

    /// The point of the ground that the picture shows there. \return nothing for the sky
    std::optional<Vector3> PointAt(const PicturePoint& point) const;

    /// What the middle of the picture shows: a point of the ground, or one above its edge.
    Vector3 Focus() const;

    // Grabbing. The grabbed point stays under the mouse.
    void Grab(const PicturePoint& point);
    void OrbitTo(const PicturePoint& point);
    void PanTo(const PicturePoint& point);

    /// Comes nearer to what the picture shows at a point. \param steps of a wheel, positive towards it
    void Zoom(const PicturePoint& point, double steps);

    /// Moves over the ground by shares of the distance to the focus.
    void Step(double right, double forward, double up);

    /// Turns by degrees where it stands.
    void Look(double right, double down);

    /// Flies on for a time. Its speed grows with the height above the ground.
    void Fly(const FlyInput& input, double seconds);

    void ShowAll();  ///< all of the terrain, from the south-west and above
    void NorthUp();  ///< turns around the focus until north is at the top
    void FromTop();  ///< turns around the focus until it looks straight down

    /// Takes an aim as it is, below the ground too, and keeps to it until somebody moves the camera.
    void Follow(const Aim& aim);

    /// Whether somebody has moved the camera since it took an aim.
    bool HasMoved() const noexcept { return moved_; }

    /// The aim of what the picture shows now.
    Aim CurrentAim() const { return AimOf(pose_, Focus(), frame_); }

    /// Moves until the focus stands at a place, at the same distance.
    void GoTo(double x, double z);

    /// Puts the camera somewhere; what isn't finite leaves it where it is.
    void Place(const Vector3& position, double azimuth, double tilt);

private:
    void TurnAround(const Vector3& pivot, double azimuth, double tilt);
    void MoveTo(const Vector3& place, double reach);
    void MoveHolding(const Vector3& place, const PicturePoint& point, const Vector3& target);
    void AimAt(const PicturePoint& point, const Vector3& target);
    void Moved();
    void TakePose();
    void KeepAboveGround();
    void Apply();
    double Size() const;
    double Clearance() const;

    Camera& camera_;
    const GroundModel& ground_;
    const GroundFrame& frame_;
    std::function<void()> onMove_;
    Outline outline_;
    Pose pose_;
    std::optional<Aim> aim_;  // what the camera keeps to
    bool moved_ = false;
    int width_ = 1;
    int height_ = 1;
    Vector3 grabbed_;         // the point under the mouse
    PicturePoint grabbedAt_;  // where the mouse was last
};

}  // namespace tessara

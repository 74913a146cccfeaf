#pragma once

#include "app/viewer/camera/camera_controller.h"
#include "host/vector3.h"

#include <array>

namespace tessara {

/// How a terrain lies in a pane that shows it as a map, north up and as large as it fits.
class MapView {
public:
    /// \param width,height of the pane in pixels \param across,down extent of the terrain in metres, half a cell beyond
    /// its outermost points included \param margin pixels that stay free
    MapView(int width, int height, double across, double down, int margin);

    double MetresPerPixel() const noexcept { return scale_; }

    /// Pixels from the left and the top edge of the pane.
    PicturePoint ToPane(double x, double z) const noexcept;

    /// Metres east and south of the terrain's corner.
    Vector3 ToGround(const PicturePoint& point) const noexcept;

    /// The rectangle of the map in the pane: left, top, right, bottom.
    std::array<double, 4> Frame() const noexcept;

private:
    double scale_;
    double left_;
    double top_;
    double across_;
    double down_;
};

/// What a camera sees, on a map: where it stands, and the two far corners of its view, as points of the ground.
std::array<Vector3, 3> ViewCone(const CameraController& camera);

}  // namespace tessara

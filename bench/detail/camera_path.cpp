#include "camera_path.h"

#include "host/elevation/elevation_data.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tessara {

namespace {

constexpr double kAbove = 100.0;  // metres over the highest point
constexpr int kSteps = 12;        // of a flight

/// A map point over a cell.
Vector3 Over(const ElevationData& data, std::size_t cell, double above)
{
    const auto width = static_cast<std::size_t>(data.width);
    return {static_cast<double>(cell % width) * data.spacingX,
            (data.height - 1 - static_cast<double>(cell / width)) * data.spacingY,
            static_cast<double>(data.metres[cell]) + above};
}

Aim Looking(const Vector3& camera, double azimuth, double tilt, double fieldOfView = kFieldOfView)
{
    return {.camera = camera,
            .target = {},
            .azimuth = azimuth,
            .tilt = tilt,
            .fieldOfView = fieldOfView,
            .levelOfDetail = {}};
}

Aim Whole(double azimuth, double tilt)
{
    Aim aim;
    aim.azimuth = azimuth;
    aim.tilt = tilt;
    return aim;
}

/// From the south-west corner to the north-east one.
void AddFlight(std::vector<PathPoint>& path, const ElevationData& data, const char* kind, double above, double tilt,
               double fieldOfView)
{
    for (int step = 0; step < kSteps; ++step) {
        const double share = (step + 0.5) / kSteps;
        const auto column = static_cast<std::size_t>(share * (data.width - 1));
        const auto row = static_cast<std::size_t>((1.0 - share) * (data.height - 1));
        const std::size_t cell = column + row * static_cast<std::size_t>(data.width);
        path.push_back({kind, Looking(Over(data, cell, above), 30.0 * step, tilt, fieldOfView)});
    }
}

}  // namespace

std::vector<PathPoint> CameraPath(const ElevationData& data)
{
    std::vector<PathPoint> path;
    for (const double azimuth : {0.0, 24.0, 45.0, 90.0, 200.0, 315.0})
        path.push_back({"overview", Whole(azimuth, 30.0)});
    for (const double tilt : {10.0, 50.0, 70.0})
        path.push_back({"steeper and flatter", Whole(24.0, tilt)});
    path.push_back({"map", Whole(0.0, 90.0)});
    const auto highest =
        static_cast<std::size_t>(std::max_element(data.metres.begin(), data.metres.end()) - data.metres.begin());
    for (const double azimuth : {0.0, 50.0, 120.0, 240.0})
        path.push_back({"over the ridge", Looking(Over(data, highest, kAbove), azimuth, 5.0)});
    for (const double azimuth : {0.0, 50.0, 120.0, 240.0})
        path.push_back({"down from the ridge", Looking(Over(data, highest, kAbove), azimuth, 40.0)});
    path.push_back({"straight down from the ridge", Looking(Over(data, highest, kAbove), 0.0, 90.0)});
    AddFlight(path, data, "flight", 300.0, 10.0, 60.0);
    AddFlight(path, data, "flight close to the ground", 20.0, 3.0, 60.0);
    AddFlight(path, data, "high flight", 3000.0, 25.0, kFieldOfView);
    return path;
}

}  // namespace tessara

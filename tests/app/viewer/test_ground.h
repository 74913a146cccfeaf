#pragma once

#include "app/view/framing.h"
#include "app/view/height_span.h"
#include "app/viewer/camera/camera_controller.h"
#include "host/ground_frame.h"
#include "host/test_elevation.h"

#include <cmath>
#include <random>

namespace tessara::test {

/// Hills, a plateau with a cliff, a pit and some roughness: ground on which a camera can get into trouble.
inline ElevationData RoughElevation(unsigned seed, int width, int height, double spacingX, double spacingY)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> any(0.0, 1.0);
    const double phase = 6.0 * any(random);
    const double relief = (0.05 + 0.3 * any(random)) * width * spacingX;
    const int cliff = static_cast<int>(width * any(random));
    return MakeElevation(width, height, spacingX, spacingY, [&](int x, int y) {
        const double wave = std::sin(phase + 9.0 * x / width) * std::cos(7.0 * y / height);
        return relief * (0.4 * wave + (x > cliff ? 0.4 : 0.0) + 0.06 * any(random)) - 100.0;
    });
}

/// A camera over a terrain whose frame begins below its lowest point, as an open terrain's does.
struct CameraOverGround {
    explicit CameraOverGround(ElevationData elevation, double exaggeration = 1.0)
        : data(std::move(elevation)), frame(Deeper(data), exaggeration)
    {
        controller.SetOutline(OutlineOf(data, SpanOf(data), frame));
        controller.ShowAll();
    }

    static ElevationData Deeper(ElevationData data)
    {
        data.minimum -= 0.1f * (data.maximum - data.minimum) + 1.0f;
        return data;
    }

    double Size() const { return std::max({frame.Width(), frame.Depth(), frame.Relief()}); }

    /// Puts the camera at a random place over the terrain or around it, from close by to far out.
    void PlaceAnywhere(std::mt19937& random)
    {
        std::uniform_real_distribution<double> any(0.0, 1.0);
        const double x = (1.6 * any(random) - 0.3) * frame.Width();
        const double z = (1.6 * any(random) - 0.3) * frame.Depth();
        const double above = Size() * std::pow(10.0, -3.0 + 3.5 * any(random));
        controller.Place({x, model.HeightAt(x, z) + above, z}, 360.0 * any(random), 90.0 * any(random));
    }

    PicturePoint AnyPoint(std::mt19937& random) const
    {
        std::uniform_real_distribution<double> any(0.0, 1.0);
        return {camera->Width() * any(random), camera->Height() * any(random)};
    }

    ElevationData data;
    GroundFrame frame;
    GroundModel model{data, frame};
    ComPtr<Camera> camera = MakeObject<Camera>();
    CameraController controller{*camera, model, frame};
};

}  // namespace tessara::test

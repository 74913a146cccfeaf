#include "app/output/frame_dump.h"
#include "app/view/framing.h"
#include "app/view/height_span.h"
#include "camera_path.h"
#include "host/camera.h"
#include "host/detail_camera.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "host/test_elevation.h"
#include "mesh_error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <utility>

namespace tessara {
namespace {

/// Ridges and valleys of every width down to two cells, and a cliff.
double Rough(int x, int y)
{
    double height = x > 2 * y + 40 ? 150.0 : 0.0;
    for (double width = 64.0; width >= 2.0; width /= 1.7)
        height += 4.0 * width * std::fabs(std::sin(x / width + 0.3 * width) * std::cos((y + 0.4 * x) / width));
    return height;
}

struct Ground {
    int width;
    int height;
    double spacingX;
    double spacingY;
    double exaggeration;
    double pixels;
};

class DetailTest : public testing::Test {
protected:
    void Open(const Ground& ground)
    {
        data = MakeElevation(ground.width, ground.height, ground.spacingX, ground.spacingY, Rough);
        terrain = std::make_unique<TerrainSession>(
            data, TerrainOptions{.exaggeration = ground.exaggeration, .border = kDrawnBorder},
            ComPtr<IKvoHost>(host.Get()));
    }

    ComPtr<Camera> At(const Aim& aim)
    {
        constexpr int kWidth = 640;
        constexpr int kHeight = 480;
        const Outline outline = OutlineOf(data, SpanOf(data), terrain->Ground());
        auto camera = MakeObject<Camera>();
        camera->SetDrawUnits(terrain->Ground().DrawUnits());
        camera->SetViewport(kWidth, kHeight);
        Place(*camera, PoseOf(aim, terrain->Ground(), outline, kWidth, kHeight), outline, 1.0);
        return camera;
    }

    ComPtr<KvoHost> host = MakeObject<KvoHost>(nullptr, nullptr);
    ElevationData data;
    std::unique_ptr<TerrainSession> terrain;
};

TEST_F(DetailTest, NoHeightInAPictureIsOffByMoreThanThePixelsAllowed)
{
    const Ground grounds[] = {{160, 120, 30.0, 30.0, 1.0, 0.7},
                              {129, 129, 90.0, 90.0, 3.0, 2.0},
                              {120, 160, 90.0, 30.0, 1.0, 1.0},
                              {160, 100, 20.0, 70.0, 1.5, 6.0}};
    for (const Ground& ground : grounds) {
        Open(ground);
        double greatest = 0.0;
        for (const PathPoint& point : CameraPath(data)) {
            const auto camera = At(point.aim);
            terrain->SetLevelOfDetail(camera->Width() / (2.0 * camera->HalfWidth()) / ground.pixels);
            const PolygonText polygons = DumpFrame(*terrain, *camera, 0, FrameExtent::Whole);
            const MeshError error = MeasureError(SurfaceHeights(polygons, data, *terrain), data, *terrain, *camera);
            EXPECT_LE(error.greatest, ground.pixels) << point.kind << " of " << ground.width << " x " << ground.height
                                                     << ", at column " << error.column << ", row " << error.row;
            greatest = std::max(greatest, error.greatest);
        }
        EXPECT_GT(greatest, 0.5 * ground.pixels) << "finer than anybody asked for";
    }
}

TEST_F(DetailTest, FollowsHeightsThatChange)
{
    Open({100, 60, 10.0, 10.0, 1.0, 1.0});
    const auto camera = At(Aim());
    camera->SetPosition(terrain->Ground().FromGrid(50, 30, static_cast<double>(data.maximum) + 500.0));
    camera->SetDirection({0.0, -1.0, 0.0});
    const auto follow = [&] {
        const auto detail = MakeObject<DetailCamera>();
        terrain->Follow(*detail, *camera);
        float position[3] = {};
        detail->GetPosition(position);
        return static_cast<double>(position[1]) / detail->Factor();
    };
    ElevationElement& peak = *terrain->Matrix().ElementAt(50 + kDrawnBorder, 30 + kDrawnBorder);
    const double before = follow();
    const float elevation = std::exchange(peak.value, 1.4f);
    terrain->HeightsChanged(50, 30, 51, 31);
    EXPECT_LT(follow(), 0.8 * before);
    peak.value = elevation;
    terrain->HeightsChanged(50, 30, 51, 31);
    EXPECT_EQ(follow(), before);
}

}  // namespace
}  // namespace tessara

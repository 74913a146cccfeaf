#include "host/camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tessara {
namespace {

/// What the camera gives out, for a point of true space.
class CameraTest : public testing::Test {
protected:
    const TerrainFrustum& Frustum()
    {
        TerrainFrustum* frustum = nullptr;
        camera->GetFrustum(&frustum);
        return *frustum;
    }

    /// The least distance to the inside of a plane, in draw space; negative outside.
    double Inside(const Vector3& point)
    {
        double least = 1e30;
        for (const FrustumPlane& plane : Frustum().WorldPlanes) {
            const Vector3 normal{plane.a, plane.b, plane.c};
            least = std::min(least, Dot(normal, {point.x / units.x, point.y / units.y, point.z / units.z}) -
                                        static_cast<double>(plane.d));
        }
        return least;
    }

    void SetUnits(const Vector3& value)
    {
        units = value;
        camera->SetDrawUnits(value);
    }

    ComPtr<Camera> camera = MakeObject<Camera>();
    Vector3 units{1.0, 1.0, 1.0};
};

TEST_F(CameraTest, LooksNorthWithEastToTheRight)
{
    camera->SetViewport(200, 100);
    camera->SetLens(90.0, 1.0, 100.0);
    double x = 0.0;
    double y = 0.0;
    ASSERT_TRUE(camera->Project({0.0, 0.0, -10.0}, x, y));
    EXPECT_NEAR(x, 100.0, 1e-9);
    EXPECT_NEAR(y, 50.0, 1e-9);
    ASSERT_TRUE(camera->Project({10.0, 5.0, -10.0}, x, y));
    EXPECT_NEAR(x, 200.0, 1e-4);
    EXPECT_NEAR(y, 0.0, 1e-4);
    EXPECT_FALSE(camera->Project({0.0, 0.0, 1.0}, x, y));
}

TEST_F(CameraTest, KeepsAUsableViewWhateverItIsGiven)
{
    const Vector3 cases[][2] = {{{0, 0, 0}, {0, 1, 0}},
                                {{1, 0, 0}, {0, 0, 0}},
                                {{0, 1, 0}, {0, 1, 0}},
                                {{0, 0, 5}, {0, 0, 1}},
                                {{0, -3, 0}, {0, 1, 0}}};
    for (const auto& [direction, up] : cases) {
        camera->SetUp(up);
        camera->SetDirection(direction);
        EXPECT_NEAR(Length(camera->Right()), 1.0, 1e-12);
        EXPECT_NEAR(Length(camera->Up()), 1.0, 1e-12);
        EXPECT_NEAR(Dot(Cross(camera->Right(), camera->Up()), camera->Forward()), -1.0, 1e-12);
    }
}

TEST_F(CameraTest, GivesItsPositionInDrawUnits)
{
    SetUnits({30.0, 30.0, 45.0});
    camera->SetPosition({300.0, 60.0, -90.0});
    float position[3] = {};
    EXPECT_EQ(camera->GetPosition(position), S_OK);
    EXPECT_EQ(position[0], 10.0f);
    EXPECT_EQ(position[1], 2.0f);
    EXPECT_EQ(position[2], -2.0f);
    EXPECT_EQ(camera->GetPosition(nullptr), E_POINTER);
    EXPECT_EQ(camera->GetFrustum(nullptr), E_POINTER);
}

TEST_F(CameraTest, APointIsInsideAllPlanesExactlyWhenThePictureShowsIt)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> across(-1.0, 1.0);
    const auto vector = [&](double size) {
        return Vector3{across(random) * size, across(random) * size, across(random) * size};
    };
    int shown = 0;
    int hidden = 0;
    for (int pose = 0; pose < 200; ++pose) {
        SetUnits({1.0 + across(random) * 0.9, 1.0 + across(random) * 0.9, 1.0 + across(random) * 0.9});
        camera->SetViewport(300 + pose, 500 - pose);
        camera->SetLens(70.0 + 60.0 * across(random), 5.0, 150.0);
        camera->SetPosition(vector(40.0));
        camera->SetUp(vector(1.0));
        camera->SetDirection(vector(1.0));
        for (int i = 0; i < 200; ++i) {
            const Vector3 point = camera->Position() + vector(160.0);
            const double depth = Dot(point - camera->Position(), camera->Forward());
            double x = -1.0;
            double y = -1.0;
            const bool visible = camera->Project(point, x, y) && x >= 0.0 && x <= camera->Width() && y >= 0.0 &&
                                 y <= camera->Height() && depth >= 5.0 && depth <= 150.0;
            const double inside = Inside(point);
            if (std::fabs(inside) < 1e-3)
                continue;
            EXPECT_EQ(visible, inside > 0.0);
            ++(visible ? shown : hidden);
        }
    }
    EXPECT_GT(shown, 1000);
    EXPECT_GT(hidden, 1000);
}

}  // namespace
}  // namespace tessara

#include "app/view/plinth.h"

#include "app/view/atmosphere.h"
#include "host/camera.h"
#include "host/elevation/elevation_data.h"
#include "host/ground_frame.h"
#include "platform/gl/gl.h"

#include <algorithm>

namespace tessara {

namespace {

constexpr Vector3 kTopEarth{0.34, 0.245, 0.17};
constexpr Vector3 kDeepEarth{0.15, 0.105, 0.075};

/// Light on the insides.
constexpr double kPlainLight = 0.6;

/// How far up the insides of walls go.
constexpr double kInside = 0.75;

/// One wall, along the outermost grid points of a side.
struct Side {
    bool alongX;      // from west to east, else from north to south
    bool far;         // the south or east side
    Vector3 outward;  // direction that it faces, the same in true and draw space
};

constexpr Side kSides[] = {{true, false, {0.0, 0.0, -1.0}},
                           {true, true, {0.0, 0.0, 1.0}},
                           {false, false, {-1.0, 0.0, 0.0}},
                           {false, true, {1.0, 0.0, 0.0}}};

/// Light on a wall: much alike on all sides, whatever the sun's colour, so that they are seen to be of one material.
Vector3 LightOn(const Vector3& outward, const Atmosphere& atmosphere)
{
    const double light = 0.60 + 0.22 * Dot(outward, atmosphere.sunDirection);
    return {light, light, light};
}

/// Top of a wall in draw space. \param index of the grid point along the side; -1 and the count are the corners, half a
///        cell further out
Vector3 WallTop(const Side& side, int index, const ElevationData& data, const GroundFrame& ground)
{
    const int count = side.alongX ? data.width : data.height;
    const int across = side.far ? (side.alongX ? data.height : data.width) - 1 : 0;
    const int along = std::clamp(index, 0, count - 1);
    const int column = side.alongX ? along : across;
    const int row = side.alongX ? across : along;
    const float metres = data.metres[static_cast<std::size_t>(column) +
                                     static_cast<std::size_t>(row) * static_cast<std::size_t>(data.width)];
    const double place = std::clamp(static_cast<double>(index), -0.5, count - 0.5);
    const double edge = side.far ? across + 0.5 : -0.5;
    const double y = ground.Normalise(static_cast<double>(metres)) * ground.ElevationScale();
    return side.alongX ? Vector3{place, y, edge} : Vector3{edge, y, place};
}

}  // namespace

Plinth::Plinth(const ElevationData& data, const GroundFrame& ground, const Atmosphere& atmosphere, double base)
{
    const Vector3 units = ground.DrawUnits();
    const double bottom = base / units.y;
    const auto add = [&](const Vector3& at, const Vector3& albedo, const Vector3& light) {
        const auto shade = [](double reflected) { return static_cast<float>(EncodeLight(reflected)); };
        faces_.back().strip.push_back(
            {{static_cast<float>(at.x), static_cast<float>(at.y), static_cast<float>(at.z)},
             {shade(albedo.x * light.x), shade(albedo.y * light.y), shade(albedo.z * light.z)}});
        faces_.back().inside.push_back(
            {{static_cast<float>(at.x), static_cast<float>(bottom + (at.y - bottom) * kInside),
              static_cast<float>(at.z)},
             {shade(kTopEarth.x * kPlainLight), shade(kTopEarth.y * kPlainLight), shade(kTopEarth.z * kPlainLight)}});
        faces_.back().point = {at.x * units.x, at.y * units.y, at.z * units.z};
    };
    for (const Side& side : kSides) {
        const Vector3 light = LightOn(side.outward, atmosphere);
        faces_.push_back({side.outward, {}, {}, {}});
        const int count = side.alongX ? data.width : data.height;
        for (int index = -1; index <= count; ++index) {
            const Vector3 top = WallTop(side, index, data, ground);
            add(top, kTopEarth, light);
            add({top.x, bottom, top.z}, kDeepEarth, light);
        }
    }
    faces_.push_back({{0.0, -1.0, 0.0}, {}, {}, {}});
    for (const double x : {-0.5, data.width - 0.5}) {
        for (const double z : {-0.5, data.height - 0.5})
            add({x, bottom, z}, kDeepEarth, LightOn(faces_.back().outward, atmosphere));
    }
}

void Plinth::Draw(const Camera& camera) const
{
    glPushAttrib(GL_ENABLE_BIT);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnable(GL_DEPTH_TEST);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    for (const Face& face : faces_) {
        const bool outside = Dot(face.outward, camera.Position() - face.point) > 0.0;
        const Vertex* vertices = outside ? face.strip.data() : face.inside.data();
        glVertexPointer(3, GL_FLOAT, sizeof(Vertex), vertices->position);
        glColorPointer(3, GL_FLOAT, sizeof(Vertex), vertices->color);
        glDrawArrays(GL_TRIANGLE_STRIP, 0, static_cast<GLsizei>(face.strip.size()));
    }
    glPopClientAttrib();
    glPopAttrib();
}

}  // namespace tessara

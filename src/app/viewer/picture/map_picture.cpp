#include "app/viewer/picture/map_picture.h"

#include "app/viewer/picture/view_overlay.h"
#include "app/viewer/terrain/terrain_document.h"
#include "platform/gl/gl.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace tessara {

namespace {

constexpr double kMargin = 8.0;
constexpr int kMostTexels = 1024;  // along an edge

/// A map that can be renewed in this time is renewed at once; any other when nothing has changed for so long.
constexpr auto kQuick = std::chrono::milliseconds(60);
constexpr auto kPatience = std::chrono::milliseconds(1500);

}  // namespace

MapView MapPicture::Layout(int width, int height, double factor) const
{
    const GroundFrame& ground = document_.Session().Ground();
    const Vector3 units = ground.DrawUnits();
    return MapView(width, height, ground.Width() + units.x, ground.Depth() + units.z,
                   static_cast<int>(std::lround(kMargin * factor)));
}

void MapPicture::MakeStale()
{
    stale_ = true;
    changed_ = Clock::now();
}

int MapPicture::Delay() const
{
    if (!stale_)
        return 0;
    const auto rest = cost_ < kQuick ? Clock::duration::zero() : changed_ + kPatience - Clock::now();
    return std::max(static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(rest).count()), 1);
}

void MapPicture::Renew()
{
    const Clock::time_point start = Clock::now();
    const ElevationData& data = document_.Data();
    const int width = std::min(data.width, kMostTexels);
    const int height = std::min(data.height, kMostTexels);
    heights_ = std::make_unique<Texture>(gl_, GL_RGB8, width, height, GL_RGB, GL_UNSIGNED_BYTE,
                                         MapOfHeights(data, colors_, sea_, width, height).data());
    stale_ = false;
    cost_ = Clock::now() - start;
}

void MapPicture::Clear(int width, int height)
{
    glViewport(0, 0, width, height);
    glClearColor(0.16f, 0.17f, 0.19f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void MapPicture::Draw(int width, int height, double factor, TextPainter& text)
{
    Clear(width, height);
    if (Delay() == 1)
        Renew();
    const MapView map = Layout(width, height, factor);
    DrawHeights(map, width, height);
    DrawCone(map, width, height, factor);
    DrawScaleBar(width, height, map.MetresPerPixel(), factor, text);
}

void MapPicture::DrawHeights(const MapView& map, int width, int height) const
{
    const auto frame = map.Frame();
    const PixelSpace space(width, height);
    glPushAttrib(GL_TEXTURE_BIT);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    heights_->Bind();
    glBegin(GL_QUADS);
    for (const auto& [x, y] : {std::pair{0, 1}, {2, 1}, {2, 3}, {0, 3}}) {
        glTexCoord2i(x == 0 ? 0 : 1, y == 1 ? 0 : 1);
        glVertex2d(frame[static_cast<std::size_t>(x)], frame[static_cast<std::size_t>(y)]);
    }
    glEnd();
    glPopAttrib();
}

void MapPicture::DrawCone(const MapView& map, int width, int height, double factor) const
{
    const GroundFrame& ground = document_.Session().Ground();
    const Vector3 units = ground.DrawUnits();
    const auto cone = ViewCone(camera_);
    const auto place = [&](const Vector3& point) {
        return map.ToPane(point.x + units.x * 0.5, point.z + units.z * 0.5);
    };
    const PicturePoint eye = place(cone[0]);
    const PicturePoint left = place(cone[1]);
    const PicturePoint right = place(cone[2]);
    const PixelSpace space(width, height);
    glColor4f(1.0f, 0.93f, 0.35f, 0.16f);
    glBegin(GL_TRIANGLES);
    glVertex2d(eye.x, eye.y);
    glVertex2d(left.x, left.y);
    glVertex2d(right.x, right.y);
    glEnd();
    glLineWidth(static_cast<GLfloat>(1.5 * factor));
    glColor4f(1.0f, 0.93f, 0.35f, 0.9f);
    glBegin(GL_LINE_STRIP);
    glVertex2d(left.x, left.y);
    glVertex2d(eye.x, eye.y);
    glVertex2d(right.x, right.y);
    glEnd();
    glPointSize(static_cast<GLfloat>(7.0 * factor));
    glColor3f(0.85f, 0.15f, 0.1f);
    glBegin(GL_POINTS);
    glVertex2d(eye.x, eye.y);
    glEnd();
}

void MapPicture::GoTo(const PicturePoint& point, int width, int height, double factor)
{
    const GroundFrame& ground = document_.Session().Ground();
    const Vector3 units = ground.DrawUnits();
    const Vector3 place = Layout(width, height, factor).ToGround(point);
    const double x = std::clamp(place.x - units.x * 0.5, 0.0, ground.Width());
    const double z = std::clamp(place.z - units.z * 0.5, 0.0, ground.Depth());
    camera_.GoTo(x, z);
}

}  // namespace tessara

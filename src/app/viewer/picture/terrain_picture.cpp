#include "app/viewer/picture/terrain_picture.h"

#include "app/output/output_check.h"
#include "app/output/png_file.h"
#include "app/viewer/camera/pointer.h"
#include "app/viewer/picture/view_overlay.h"
#include "app/viewer/terrain/terrain_document.h"
#include "app/viewer/terrain/triangle_export.h"
#include "platform/gl/render_target.h"

#include <utility>

namespace tessara {

namespace {

GLuint BoundFrame()
{
    GLint bound = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &bound);
    return static_cast<GLuint>(bound);
}

/// A frame of another size, which is drawn into and which the camera suits for as long as it lives.
class OtherFrame {
public:
    OtherFrame(const GlFunctions& gl, const Camera& camera, CameraController& controller, int width, int height)
        : gl_(gl),
          controller_(controller),
          bound_(BoundFrame()),
          width_(camera.Width()),
          height_(camera.Height()),
          target_(gl, width, height, true)
    {
        target_.Bind();
        controller.Resize(width, height);
    }
    OtherFrame(const OtherFrame&) = delete;
    OtherFrame& operator=(const OtherFrame&) = delete;
    ~OtherFrame()
    {
        gl_.BindFramebuffer(GL_FRAMEBUFFER, bound_);
        controller_.Resize(width_, height_);
    }

    std::vector<std::uint8_t> ReadPixels() const { return target_.ReadPixels(); }

private:
    const GlFunctions& gl_;
    CameraController& controller_;
    GLuint bound_;
    int width_;
    int height_;
    RenderTarget target_;
};

}  // namespace

TerrainPicture::TerrainPicture(const GlFunctions& gl, GlLookup lookup, TerrainDocument& document, Camera& camera,
                               CameraController& controller, const Pointer& pointer, LightMap light,
                               const ViewSettings& opening, const ViewSettings& settings, const ViewerListener& changed)
    : gl_(gl),
      document_(document),
      camera_(camera),
      controller_(controller),
      pointer_(pointer),
      settings_(settings),
      changed_(changed),
      view_(gl, lookup, document, std::move(light), opening)
{
}

std::optional<GroundRing> TerrainPicture::Ring() const
{
    const auto ground = pointer_.HasBrush() ? pointer_.Ground() : std::nullopt;
    return ground ? std::optional<GroundRing>({ground->x, ground->z, settings_.brush.radius}) : std::nullopt;
}

void TerrainPicture::Clear(int width, int height)
{
    glViewport(0, 0, width, height);
    glClearColor(0.2f, 0.22f, 0.25f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

void TerrainPicture::Draw(int width, int height, double factor, TextPainter& text)
{
    glViewport(0, 0, width, height);
    DrawGround(width, height);
    DrawScales(width, height, factor, text);
    DrawBrush();
}

void TerrainPicture::DrawGround(int width, int height)
{
    controller_.Resize(width, height);
    view_.Draw(camera_);
}

void TerrainPicture::DrawScales(int width, int height, double factor, TextPainter& text)
{
    DrawScaleBar(width, height, MetresPerPixel(controller_, width), factor, text);
    DrawCompass(width, height, controller_.Azimuth(), factor, text);
}

void TerrainPicture::DrawBrush()
{
    if (const auto ring = Ring())
        view_.DrawRing(camera_, *ring);
}

void TerrainPicture::Save(const std::string& path, int width, int height)
{
    CheckedOutput(path, {document_.Path()}, {".png"});
    std::vector<std::uint8_t> pixels;
    {
        const OtherFrame frame(gl_, camera_, controller_, width, height);
        view_.DrawSettled(camera_);
        pixels = frame.ReadPixels();
    }
    WritePng(path, width, height, pixels);
    changed_({.picture = true});
}

std::uint64_t TerrainPicture::ExportTriangles(const std::string& path)
{
    return tessara::ExportTriangles(document_, path, camera_, view_.LevelOfDetail(camera_));
}

}  // namespace tessara

#pragma once

#include "app/viewer/picture/terrain_view.h"
#include "app/viewer/viewer_change.h"

#include <cstdint>
#include <string>

namespace tessara {

class Pointer;
class TextPainter;

/// The terrain as the camera sees it, with what is drawn over it: the outline of the brush, a scale bar and a compass.
/// It can be written into files. Belongs to an OpenGL context, as TerrainView does.
class TerrainPicture {
public:
    /// \param gl,document,camera,controller,pointer,settings,changed outlive this object \param camera the controller's
    /// \param opening settings to begin with, which become those of the viewer
    TerrainPicture(const GlFunctions& gl, GlLookup lookup, TerrainDocument& document, Camera& camera,
                   CameraController& controller, const Pointer& pointer, LightMap light, const ViewSettings& opening,
                   const ViewSettings& settings, const ViewerListener& changed);

    /// The terrain without what is drawn over it.
    TerrainView& View() noexcept { return view_; }

    /// Draws into a viewport of its own over the whole canvas. \param width,height of that in pixels
    /// \param factor pixels for one of the desktop's
    void Draw(int width, int height, double factor, TextPainter& text);

    // The parts of Draw, for a viewport that is set already, and which may have fewer pixels than the canvas: the
    // terrain by itself, scale bar and compass, and the outline of the brush.
    void DrawGround(int width, int height);
    void DrawScales(int width, int height, double factor, TextPainter& text);
    void DrawBrush();

    /// Draws the canvas without a terrain.
    static void Clear(int width, int height);

    /// Whether the picture isn't final yet: another frame shows more.
    bool WantsFrame() const noexcept { return !view_.Figures().settled; }

    /// Takes the figures of the frame that can't be had in passing.
    void Measure() { view_.Measure(camera_); }
    const FrameFigures& Figures() const noexcept { return view_.Figures(); }

    /// Draws a picture of another size and writes it. \throws std::runtime_error for the user
    void Save(const std::string& path, int width, int height);

    /// Writes the triangles of the picture. \return their number \throws std::runtime_error for the user
    std::uint64_t ExportTriangles(const std::string& path);

private:
    std::optional<GroundRing> Ring() const;

    const GlFunctions& gl_;
    TerrainDocument& document_;
    Camera& camera_;
    CameraController& controller_;
    const Pointer& pointer_;
    const ViewSettings& settings_;
    const ViewerListener& changed_;
    TerrainView view_;
};

}  // namespace tessara

#pragma once

#include "app/view/plinth.h"
#include "app/view/sky.h"
#include "app/view/terrain_painter.h"
#include "app/viewer/camera/detail_camera.h"
#include "app/viewer/picture/frame_probe.h"
#include "app/viewer/picture/height_colors.h"
#include "app/viewer/work/view_settings.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace tessara {

class CameraController;
class TerrainDocument;

/// What drawing a frame took. Times in milliseconds.
struct FrameFigures {
    std::uint32_t triangles = 0;
    std::size_t activeNodes = 0;  ///< 0 where it isn't known
    double update = 0.0;          ///< of the detail
    double draw = 0.0;            ///< of everything else
    bool settled = false;         ///< the detail suits the camera: another frame would show the same
};

/// A ring on the ground.
struct GroundRing {
    double x = 0.0;
    double z = 0.0;
    double radius = 0.0;
};

/// Draws a terrain that is open, with everything around it, into the frame that is bound. Belongs to the OpenGL context
/// that was current when it was made, and needs it in every method.
class TerrainView {
public:
    /// \param gl,document outlive this object
    TerrainView(const GlFunctions& gl, GlLookup lookup, TerrainDocument& document, LightMap light,
                const ViewSettings& settings);

    /// Takes other settings; heights are drawn with them from the next frame on.
    void Apply(const ViewSettings& settings);

    void SetLight(LightMap light);

    /// Heights of an area have changed. Outside of the real-time mode the terrain's tree is built anew.
    void HeightsChanged(const GridArea& cells);

    /// Colours heights anew.
    void SetColors(const HeightColors& colors);

    /// Draws the terrain as the camera sees it. \param ring drawn on the ground, if any
    void Draw(Camera& camera, const std::optional<GroundRing>& ring);

    /// Measures what a frame costs beyond its drawing: nodes and the time of the update.
    void Measure(Camera& camera);

    const FrameFigures& Figures() const noexcept { return figures_; }
    const Atmosphere& Air() const noexcept { return atmosphere_; }

    /// Puts the source picture on or off, as far as there is one.
    void UseSource(bool use);

private:
    void SetDetail(Camera& camera);
    void RenewDetail();
    void Unsettle();
    void DrawGround(Camera& camera, ICameraObject& detail);
    void DrawNodes(ICameraObject& detail);
    void DrawRing(const GroundRing& ring) const;
    void Survey(ICameraObject& detail);
    void EnterTreeSpace() const;
    int RootHalf() const;
    double Size() const;
    double NearestDistance(const Camera& camera) const;

    const GlFunctions& gl_;
    TerrainDocument& document_;
    ViewSettings settings_;
    LightMap light_;
    Atmosphere atmosphere_;
    Sky sky_;
    std::unique_ptr<Plinth> plinth_;
    TerrainPainter painter_;
    FrameProbe probe_;
    ComPtr<DetailCamera> detail_;  // for measuring, and what the detail is frozen for
    ComPtr<DetailCamera> frozen_;
    std::vector<DrawnVertex> captured_;
    NodeSurvey survey_;
    FrameFigures figures_;
    Vector3 lastPosition_;
    double levelOfDetail_ = 0.0;
    int steadyFrames_ = 0;
    bool treeIsStale_ = false;  // heights have changed since the tree was built
};

}  // namespace tessara

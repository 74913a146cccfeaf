#pragma once

#include "app/view/height_colors.h"
#include "app/view/light_map.h"
#include "app/view/scene.h"
#include "app/view/settling.h"
#include "app/viewer/picture/frame_probe.h"
#include "app/viewer/work/view_settings.h"
#include "host/detail_camera.h"

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

    /// \param sea as TerrainPainter::SetSea
    void SetSea(const Sea* sea) { scene_.Painter().SetSea(sea); }

    /// Draws the terrain as the camera sees it.
    void Draw(Camera& camera);

    /// Draws a ring over a picture of the terrain.
    void DrawRing(const Camera& camera, const GroundRing& ring) const;

    /// Draws it in the detail in which it comes to rest.
    void DrawSettled(Camera& camera);

    /// Keeps a level of detail, in metres, whatever the camera, until another error is allowed.
    void FixDetail(std::optional<double> metres);

    /// The level of detail for a camera.
    double LevelOfDetail(const Camera& camera) const;

    /// Measures what a frame costs beyond its drawing: nodes and the time of the update.
    void Measure(Camera& camera);

    const FrameFigures& Figures() const noexcept { return figures_; }

    /// Shows or hides the source picture, if there is one.
    void UseSource(bool use);

private:
    DetailCamera& TakeDetail(const Camera& camera);
    void RenewDetail();
    void Unsettle();
    void DrawNodes();
    void Survey();
    void EnterTreeSpace() const;
    int RootHalf() const;

    TerrainDocument& document_;
    ViewSettings settings_;
    LightMap light_;
    Scene scene_;
    FrameProbe probe_;
    ComPtr<DetailCamera> detail_;   // for whom the terrain is drawn
    ComPtr<DetailCamera> probing_;  // for measuring
    bool isHeld_ = false;           // the detail is frozen for the camera of an earlier frame
    std::vector<DrawnVertex> captured_;
    NodeSurvey survey_;
    FrameFigures figures_;
    Vector3 lastPosition_;
    double levelOfDetail_ = 0.0;
    std::optional<double> fixedDetail_;
    Settling settling_;
    bool treeIsStale_ = false;  // heights have changed since the tree was built
};

}  // namespace tessara

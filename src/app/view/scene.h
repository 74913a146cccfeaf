#pragma once

#include "app/view/atmosphere.h"
#include "app/view/look.h"
#include "app/view/plinth.h"
#include "app/view/sky.h"
#include "app/view/terrain_painter.h"
#include "app/view/triangle_counter.h"

#include <cstdint>
#include <memory>

namespace tessara {

struct LightMap;

/// What may change from one picture of a scene to the next.
struct SceneStyle {
    Atmosphere atmosphere;
    FillMode fill = FillMode::Filled;  ///< edges and points are drawn before a dark ground, without plinth and sky
    double fog = 0.3;                  ///< 0 for none to 1
    bool heightColors = true;
    bool mixColors = false;  ///< height colours also where a picture lies on the ground
};

/// A whole picture of a terrain: sky, plinth and terrain, drawn into the frame that is bound. Belongs to the OpenGL
/// context that was current when it was made, and needs it in every method.
class Scene {
public:
    /// \param gl,data,terrain outlive this object; the data's range is exact
    /// \param withShaders false lights the terrain by OpenGL's own light
    Scene(const GlFunctions& gl, const ElevationData& data, const TerrainSession& terrain, const LightMap& light,
          const SceneStyle& style, bool withShaders = true);

    void SetStyle(const SceneStyle& style);
    const SceneStyle& Style() const noexcept { return style_; }

    /// The heights along the terrain's edge, or its exaggeration, have changed.
    void EdgesChanged() { plinth_ = nullptr; }

    TerrainPainter& Painter() noexcept { return painter_; }

    /// Draws one frame over the whole viewport. \param camera whose matrices stay loaded
    /// \param detail for whom the terrain is adapted and culled \return the terrain's triangles
    std::uint32_t Draw(Camera& camera, ICameraObject& detail);

    /// Takes the level of detail towards a camera, without a picture: the frame holds nothing of use afterwards.
    /// \param frames to adapt for; 0 goes on until the triangles stay the same \return the triangles that it sees
    std::uint32_t Settle(Camera& camera, ICameraObject& detail, int frames = 0);

private:
    std::uint32_t Adapt(Camera& camera, ICameraObject& detail);
    double ClearDistance(const Camera& camera) const;
    double HazeLength() const;

    const ElevationData& data_;
    const TerrainSession& terrain_;
    SceneStyle style_;
    Sky sky_;
    std::unique_ptr<Plinth> plinth_;  // null until it is wanted
    TerrainPainter painter_;
    TriangleCounter counter_;
};

}  // namespace tessara

#pragma once

#include "app/view/atmosphere.h"
#include "app/view/framing.h"
#include "app/view/plinth.h"
#include "app/view/sky.h"
#include "app/view/terrain_painter.h"

#include <cstdint>
#include <vector>

namespace tessara {

struct LightMap;

struct SceneOptions {
    Atmosphere atmosphere;
    bool wireframe = false;   ///< the triangles' edges before a dark ground, without plinth and sky
    bool withShaders = true;  ///< false lights the terrain by OpenGL's own light
};

/// A whole picture of a terrain: sky, plinth and terrain, drawn into the frame that is bound. Belongs to the OpenGL
/// context that was current when it was made.
class Scene {
public:
    /// \param gl,terrain outlive this object \param outline points that bound the terrain, as OutlineOf gives them
    Scene(const GlFunctions& gl, const ElevationData& data, const TerrainSession& terrain, const LightMap& light,
          std::vector<Vector3> outline, const SceneOptions& options);

    /// Draws one frame over the whole viewport.
    void Draw(Camera& camera) const;

    /// Takes the level of detail one step towards the camera, without a picture: the frame holds nothing of use
    /// afterwards. \return the triangles that the camera sees
    std::uint32_t Adapt(Camera& camera) const;

private:
    const GlFunctions& gl_;
    const TerrainSession& terrain_;
    SceneOptions options_;
    std::vector<Vector3> outline_;
    Sky sky_;
    Plinth plinth_;
    TerrainPainter painter_;
};

}  // namespace tessara

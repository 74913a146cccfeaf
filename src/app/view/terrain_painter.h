#pragma once

#include "app/view/atmosphere.h"
#include "app/view/light_map.h"
#include "app/view/shader_program.h"
#include "app/view/texture.h"
#include "host/camera.h"

#include <memory>

namespace tessara {

class TerrainSession;

/// Colours and lights what a terrain draws: each pixel by the light map where shaders work, else by OpenGL's own light
/// on the facets. Whatever is drawn outside the terrain's outermost grid points is cut off.
class TerrainPainter {
public:
    /// \param gl outlives this object \param withShaders false uses OpenGL's own light in any case
    TerrainPainter(const GlFunctions& gl, const TerrainSession& terrain, const Atmosphere& atmosphere,
                   const LightMap& light, bool withShaders);

    void SetAtmosphere(const Atmosphere& atmosphere) { atmosphere_ = atmosphere; }

    /// Takes the light of another map of the same terrain.
    void SetLight(const LightMap& light);

    /// Takes a part of the light anew. \param light the map of the last SetLight, changed within \param texels
    void UpdateLight(const LightMap& light, const GridArea& texels);

    bool HasShaders() const noexcept { return program_ != nullptr; }

    /// Draws the terrain as the camera, whose matrices are loaded, sees it. \param detail for whom it is adapted and
    /// culled \param haze distance in metres over which the air takes away about two thirds of a colour \param clear
    /// distance over which it takes away nothing
    void Draw(const Camera& camera, ICameraObject& detail, double clear, double haze) const;

    /// Cuts off whatever is drawn outside the terrain's outermost grid points from here on, by the first four clip
    /// planes. The camera's matrices are loaded.
    void CutEdges() const;

    /// Draws the edges (GL_LINE) or the vertices (GL_POINT) of the triangles, but for hidden ones.
    void DrawUnlit(ICameraObject& camera, GLenum mode) const;

private:
    void BeginShaded(const Camera& camera, double clear, double haze) const;
    void SetTextures() const;
    void BeginFixed() const;

    const GlFunctions& gl_;
    const TerrainSession& terrain_;
    Atmosphere atmosphere_;
    int lightWidth_;
    int lightHeight_;
    bool hasWater_;
    std::unique_ptr<Texture> light_;
    std::unique_ptr<Texture> water_;
    std::unique_ptr<ShaderProgram> program_;  // null without shaders
};

}  // namespace tessara

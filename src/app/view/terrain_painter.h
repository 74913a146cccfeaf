#pragma once

#include "app/view/atmosphere.h"
#include "app/view/height_colors.h"
#include "app/view/height_texture.h"
#include "app/view/light_map.h"
#include "app/view/shader_program.h"
#include "app/view/texture.h"
#include "host/camera.h"

#include <memory>

namespace tessara {

class TerrainSession;
struct ElevationData;
struct Sea;

/// Colours and lights what a terrain draws: each pixel by its height and by the light map where shaders work, else the
/// component's vertex colours by OpenGL's own light on the facets. Whatever is drawn outside the terrain's outermost
/// grid points is cut off.
class TerrainPainter {
public:
    /// \param gl,data,terrain outlive this object \param withShaders false uses OpenGL's own light in any case
    TerrainPainter(const GlFunctions& gl, const ElevationData& data, const TerrainSession& terrain,
                   const Atmosphere& atmosphere, const LightMap& light, bool withShaders);

    /// Takes the colours of heights. Until then there are none.
    void SetColors(const HeightColors& colors);

    /// Takes the water over the ground, or none. \param sea outlives this object, or is replaced before it goes
    void SetSea(const Sea* sea);

    /// \param shown whether they are seen \param mixed whether also where a picture lies on the ground
    void ShowColors(bool shown, bool mixed);

    void SetAtmosphere(const Atmosphere& atmosphere) { atmosphere_ = atmosphere; }

    /// Takes the light of another map of the same terrain.
    void SetLight(const LightMap& light);

    /// Takes a part of the light anew. \param light the map of the last SetLight, changed within \param texels
    void UpdateLight(const LightMap& light, const GridArea& texels);

    /// Heights have changed. \param cells where
    void UpdateHeights(const GridArea& cells);

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
    void SetHeights(bool hasSource) const;
    bool ShowsSource() const;
    void ChooseVertexColors() const;
    bool ShowsColors(bool hasSource) const noexcept { return colorsShown_ && (colorsMixed_ || !hasSource); }
    void BeginFixed() const;

    const GlFunctions& gl_;
    const ElevationData& data_;
    const TerrainSession& terrain_;
    Atmosphere atmosphere_;
    int lightWidth_;
    int lightHeight_;
    bool colorsShown_ = false;
    bool colorsMixed_ = false;
    HeightTable::Span landSpan_{};
    HeightTable::Span waterSpan_{};
    const Sea* sea_ = nullptr;
    std::unique_ptr<HeightTexture> heights_;
    std::unique_ptr<Texture> ramp_;  // null until there are colours
    std::unique_ptr<Texture> light_;
    std::unique_ptr<Texture> water_;
    std::unique_ptr<ShaderProgram> program_;  // null without shaders
};

}  // namespace tessara

#include "app/view/scene.h"

#include "app/view/framing.h"
#include "app/view/height_span.h"
#include "app/view/settling.h"
#include "host/camera.h"
#include "host/terrain_session.h"

#include <algorithm>

namespace tessara {

namespace {

constexpr int kMostFrames = 200;

/// The air takes away two thirds of a colour over this many times the terrain's length at full fog.
constexpr double kFogLengths = 1.8;
constexpr double kNoFog = 1e12;

}  // namespace

Scene::Scene(const GlFunctions& gl, const ElevationData& data, const TerrainSession& terrain, const LightMap& light,
             const SceneStyle& style, bool withShaders)
    : data_(data),
      terrain_(terrain),
      style_(style),
      sky_(gl, withShaders),
      painter_(gl, data, terrain, style.atmosphere, light, withShaders),
      counter_(gl)
{
    painter_.ShowColors(style.heightColors, style.mixColors);
}

void Scene::SetStyle(const SceneStyle& style)
{
    style_ = style;
    painter_.SetAtmosphere(style.atmosphere);
    painter_.ShowColors(style.heightColors, style.mixColors);
    plinth_ = nullptr;  // it is lit
}

std::uint32_t Scene::Draw(Camera& camera, ICameraObject& detail)
{
    glClearColor(0.035f, 0.045f, 0.06f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (style_.fill != FillMode::Filled) {
        camera.LoadMatrices();
        counter_.Begin();
        painter_.DrawUnlit(detail, style_.fill == FillMode::Wireframe ? GL_LINE : GL_POINT);
        return counter_.End() / 2;  // edges and vertices are drawn after what hides them
    }
    if (!plinth_)
        plinth_ = std::make_unique<Plinth>(data_, terrain_.Ground(), style_.atmosphere,
                                           BaseOf(SpanOf(data_), terrain_.Ground()));
    sky_.Draw(style_.atmosphere, camera);
    camera.LoadMatrices();
    plinth_->Draw(camera);
    counter_.Begin();
    painter_.Draw(camera, detail, ClearDistance(camera), HazeLength());
    return counter_.End();
}

std::uint32_t Scene::Settle(Camera& camera, ICameraObject& detail, int frames)
{
    Settling settling;
    std::uint32_t triangles = 0;
    for (int frame = 0; frame < (frames > 0 ? frames : kMostFrames) && !(frames == 0 && settling.IsDone()); ++frame) {
        triangles = Adapt(camera, detail);
        settling.Saw(triangles);
    }
    return triangles;
}

std::uint32_t Scene::Adapt(Camera& camera, ICameraObject& detail)
{
    camera.LoadMatrices();
    glPushAttrib(GL_VIEWPORT_BIT);
    glViewport(0, 0, 1, 1);  // nearly all of the cost of a frame in software is its pixels
    counter_.Begin();
    terrain_.Surface().Draw3D(&detail);
    const std::uint32_t triangles = counter_.End();
    glPopAttrib();
    return triangles;
}

/// How far away the terrain begins, about: the air is clear up to there.
double Scene::ClearDistance(const Camera& camera) const
{
    const GroundFrame& ground = terrain_.Ground();
    std::vector<Vector3> corners;
    for (const double x : {0.0, ground.Width()}) {
        for (const double y : {0.0, ground.Relief()}) {
            for (const double z : {0.0, ground.Depth()})
                corners.push_back({x, y, z});
        }
    }
    return std::max(DepthOf(camera, corners).nearest, 0.0);
}

/// Metres over which the air takes away two thirds of a colour.
double Scene::HazeLength() const
{
    const GroundFrame& ground = terrain_.Ground();
    const double size = std::max({ground.Width(), ground.Depth(), ground.DrawUnits().x});
    return style_.fog > 0.0 ? kFogLengths / style_.fog * size : kNoFog;
}

}  // namespace tessara

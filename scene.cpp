#include "app/scene/scene.h"

#include "app/scene/sky.h"
#include "host/camera.h"
#include "host/terrain_session.h"

#include <algorithm>

namespace tessara {

namespace {

/// Air takes away two thirds of a colour over this many terrains' lengths behind the nearest point.
constexpr double kHazeLengths = 4.0;

}  // namespace

Scene::Scene(const GlFunctions& gl, const ElevationData& data, const TerrainSession& terrain, const LightMap& light,
             std::vector<Vector3> outline, const SceneOptions& options)
    : gl_(gl), terrain_(terrain), options_(options), outline_(std::move(outline)),
      plinth_(data, terrain.Ground(), options.atmosphere),
      painter_(gl, terrain, options.atmosphere, light, options.withShaders)
{
}

void Scene::Draw(Camera& camera) const
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    DrawSky(options_.atmosphere, camera);
    const DepthRange depth = DepthOf(camera, outline_);
    camera.LoadMatrices();
    ITessara& surface = terrain_.Surface();
    if (options_.wireframe) {
        DrawWires(camera);
        return;
    }
    plinth_.Draw();
    painter_.Draw(surface, camera, std::max(depth.nearest, 0.0), kHazeLengths * LengthOf());
}

}  // namespace tessara

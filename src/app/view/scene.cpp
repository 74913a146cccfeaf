#include "app/view/scene.h"

#include "host/camera.h"
#include "host/terrain_session.h"

#include <algorithm>

namespace tessara {

namespace {

/// The air takes away two thirds of a colour over this many times the terrain's length, behind its nearest point.
constexpr double kHazeLengths = 6.0;

}  // namespace

Scene::Scene(const GlFunctions& gl, const ElevationData& data, const TerrainSession& terrain, const LightMap& light,
             std::vector<Vector3> outline, const SceneOptions& options)
    : gl_(gl),
      terrain_(terrain),
      options_(options),
      outline_(std::move(outline)),
      sky_(gl, options.withShaders),
      plinth_(data, terrain.Ground(), options.atmosphere),
      painter_(gl, terrain, options.atmosphere, light, options.withShaders)
{
}

void Scene::Draw(Camera& camera) const
{
    glClearColor(0.035f, 0.045f, 0.06f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (options_.wireframe) {
        camera.LoadMatrices();
        painter_.DrawWires(camera);
        return;
    }
    sky_.Draw(options_.atmosphere, camera);
    camera.LoadMatrices();
    const GroundFrame& ground = terrain_.Ground();
    const DepthRange depth = DepthOf(camera, outline_);
    plinth_.Draw(camera);
    painter_.Draw(camera, std::max(depth.nearest, 0.0),
                  kHazeLengths * std::max({ground.Width(), ground.Depth(), ground.DrawUnits().x}));
}

std::uint32_t Scene::Adapt(Camera& camera) const
{
    GLuint query = 0;
    GLuint triangles = 0;
    gl_.GenQueries(1, &query);
    camera.LoadMatrices();
    glPushAttrib(GL_VIEWPORT_BIT);
    glViewport(0, 0, 1, 1);  // nearly all of the cost of a frame in software is its pixels
    gl_.BeginQuery(GL_PRIMITIVES_GENERATED, query);
    terrain_.Surface().Draw3D(&camera);
    gl_.EndQuery(GL_PRIMITIVES_GENERATED);
    glPopAttrib();
    gl_.GetQueryObjectuiv(query, GL_QUERY_RESULT, &triangles);
    gl_.DeleteQueries(1, &query);
    return triangles;
}

}  // namespace tessara

// A whole frame on the real OpenGL, off-screen, beside its floor: the same triangles in the same number of bare draw
// calls, from arrays that were filled beforehand. The picture is small, so that neither is bound by pixels.

#include "platform/gl/gl_functions.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"
#include "support/test_grid.h"
#include "terrain/patch_writer.h"
#include "terrain/terrain_frustum.h"
#include "terrain/terrain_lod.h"

#include <benchmark/benchmark.h>

#include <iostream>
#include <memory>
#include <vector>

namespace {

constexpr std::int32_t kSide = 1025;
constexpr int kPictureSide = 64;

struct Scene {
    Scene() : grid(kSide, kSide, FractalHeights(kSide))
    {
        for (FrustumPlane& plane : frustum.WorldPlanes)
            plane = {0.0f, 1.0f, 0.0f, -1e9f};
        terrain.SetElevationScale(100.0f);
        terrain.SetLOD(60.0f);
        terrain.InitQuadTree(grid.Source());
        glMatrixMode(GL_PROJECTION);
        gluPerspective(60.0, 1.0, 1.0, 5000.0);
        glMatrixMode(GL_MODELVIEW);
        gluLookAt(500.0, 300.0, 1400.0, 512.0, 0.0, 512.0, 0.0, 1.0, 0.0);
        glEnable(GL_DEPTH_TEST);
        for (int frame = 0; frame < 20; ++frame)
            Draw();
        PatchWriter patch(terrain);
        Collect(*terrain.Root, *terrain.RootCorner, patch);
    }

    void Draw() { terrain.Draw(400.0f, 100.0f, 600.0f, &frustum); }

    void DrawFloor()
    {
        glPushMatrix();
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(3, GL_FLOAT, 0, vertices.data());
        glEnableClientState(GL_NORMAL_ARRAY);
        glNormalPointer(GL_FLOAT, 0, normals.data());
        glEnableClientState(GL_COLOR_ARRAY);
        glColorPointer(4, GL_UNSIGNED_BYTE, 0, colors.data());
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glScalef(1.0f, terrain.ElevationScale, 1.0f);
        std::size_t first = 0;
        for (const GLsizei count : indexCounts) {
            glDrawElements(GL_TRIANGLES, count, GL_UNSIGNED_INT, indices.data() + first);
            first += static_cast<std::size_t>(count);
        }
        glDisable(GL_BLEND);
        glDisableClientState(GL_COLOR_ARRAY);
        glDisableClientState(GL_NORMAL_ARRAY);
        glDisableClientState(GL_VERTEX_ARRAY);
        glPopMatrix();
    }

    /// Keeps the patches of the active tree, in the order in which a frame draws them.
    void Collect(const QuadNode& node, QuadCorner& corner, PatchWriter& patch)
    {
        for (std::uint32_t i = 0; i < 4; ++i) {
            if (!(node.ActiveMask & ChildBit(i)))
                continue;
            QuadCorner child;
            node.MakeChildCorner(child, corner, i);
            Collect(*node.Children[i], child, patch);
        }
        if ((node.ActiveMask & 0xF0) == 0xF0)
            return;
        const std::uint32_t count = patch.WriteShaded(corner, node.Samples, node.ActiveMask);
        const auto base = static_cast<std::uint32_t>(vertices.size() / 3);
        vertices.insert(vertices.end(), terrain.VertexArray[0], terrain.VertexArray[0] + 27);
        normals.insert(normals.end(), terrain.NormalArray[0], terrain.NormalArray[0] + 27);
        colors.insert(colors.end(), terrain.ColorArray[0], terrain.ColorArray[0] + 36);
        for (std::uint32_t i = 0; i < count; ++i)
            indices.push_back(base + terrain.IndexArray[i]);
        indexCounts.push_back(static_cast<GLsizei>(count));
    }

    TestGrid grid;
    TerrainLod terrain;
    TerrainFrustum frustum;
    std::vector<float> vertices;
    std::vector<float> normals;
    std::vector<std::uint8_t> colors;
    std::vector<std::uint32_t> indices;
    std::vector<GLsizei> indexCounts;
};

std::unique_ptr<Scene> g_scene;

template <class DrawOne>
void Measure(benchmark::State& state, const DrawOne& draw)
{
    for (auto _ : state) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        draw();
        glFinish();
    }
    state.counters["draws"] = static_cast<double>(g_scene->indexCounts.size());
}

void WholeFrame(benchmark::State& state)
{
    Measure(state, [] { g_scene->Draw(); });
}
BENCHMARK(WholeFrame)->Unit(benchmark::kMillisecond);

void Floor(benchmark::State& state)
{
    Measure(state, [] { g_scene->DrawFloor(); });
}
BENCHMARK(Floor)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
try {
    const tessara::OffscreenContext context;
    tessara::GlFunctions gl;
    if (!gl.Load(tessara::OffscreenContext::Lookup())) {
        std::cerr << "frame_bench: this OpenGL has no off-screen frames\n";
        return 1;
    }
    std::cerr << context.Describe() << '\n';
    const tessara::RenderTarget target(gl, kPictureSide, kPictureSide, false);
    target.Bind();
    g_scene = std::make_unique<Scene>();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    g_scene.reset();
    return 0;
} catch (const std::exception& error) {
    std::cerr << "frame_bench: " << error.what() << '\n';
    return 1;
}

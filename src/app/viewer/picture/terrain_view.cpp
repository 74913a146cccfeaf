#include "app/viewer/picture/terrain_view.h"

#include "app/viewer/terrain/terrain_document.h"
#include "host/camera.h"
#include "host/tree_size.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace tessara {

namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Colours of the levels from the smallest nodes up, from warm to cold.
constexpr std::array<std::array<float, 3>, 8> kLevelColors = {{{0.84f, 0.19f, 0.15f},
                                                               {0.96f, 0.43f, 0.26f},
                                                               {0.99f, 0.68f, 0.38f},
                                                               {0.99f, 0.88f, 0.56f},
                                                               {0.67f, 0.87f, 0.64f},
                                                               {0.40f, 0.76f, 0.65f},
                                                               {0.20f, 0.53f, 0.74f},
                                                               {0.37f, 0.31f, 0.64f}}};

const std::array<float, 3>& ColorOf(const DrawnNode& node)
{
    return kLevelColors[static_cast<std::size_t>(LevelOf(node)) % kLevelColors.size()];
}

/// The twelve edges of a node's box, as lines.
void DrawBox(const DrawnNode& node)
{
    const auto low = [&](int axis) {
        return static_cast<float>((axis == 0 ? node.centerX : node.centerZ) - node.half);
    };
    const float x[] = {low(0), low(0) + static_cast<float>(2 * node.half)};
    const float y[] = {node.low, node.high};
    const float z[] = {low(1), low(1) + static_cast<float>(2 * node.half)};
    for (const std::size_t a : {0u, 1u}) {
        for (const std::size_t b : {0u, 1u}) {
            glVertex3f(x[0], y[a], z[b]);
            glVertex3f(x[1], y[a], z[b]);
            glVertex3f(x[a], y[0], z[b]);
            glVertex3f(x[a], y[1], z[b]);
            glVertex3f(x[a], y[b], z[0]);
            glVertex3f(x[a], y[b], z[1]);
        }
    }
}

SceneStyle StyleOf(const ViewSettings& settings)
{
    return {SunlitAtmosphere(settings.sunAzimuth, settings.sunHeight), settings.fill, settings.fog,
            settings.vertexColors, settings.mixColors};
}

}  // namespace

TerrainView::TerrainView(const GlFunctions& gl, GlLookup lookup, TerrainDocument& document, LightMap light,
                         const ViewSettings& settings)
    : document_(document),
      settings_(settings),
      light_(std::move(light)),
      scene_(gl, document.Data(), document.Session(), light_, StyleOf(settings)),
      probe_(gl, lookup),
      detail_(MakeObject<DetailCamera>()),
      probing_(MakeObject<DetailCamera>())
{
    Apply(settings);
}

void TerrainView::Apply(const ViewSettings& settings)
{
    ITessara& surface = document_.Session().Surface();
    if (settings.frozen && !settings_.frozen)
        isHeld_ = false;  // frozen at the next frame, for the camera of then
    if (settings.errorPixels != settings_.errorPixels)
        fixedDetail_.reset();
    settings_ = settings;
    RenewDetail();
    if (document_.Session().Ground().Exaggeration() != settings.exaggeration)
        document_.Session().SetExaggeration(settings.exaggeration);
    scene_.SetStyle(StyleOf(settings));
    surface.SetRenderMode(settings.realTime ? TESSARA_RENDER_MODE_REALTIME : TESSARA_RENDER_MODE_NORMAL);
    Unsettle();
}

void TerrainView::Unsettle()
{
    settling_.Restart();
    figures_.settled = false;
}

void TerrainView::UseSource(bool use)
{
    document_.Session().Surface().UseTextureSource(use ? 1 : 0);
}

void TerrainView::SetLight(LightMap light)
{
    light_ = std::move(light);
    scene_.Painter().SetLight(light_);
}

/// Outside of the real-time mode a tree knows the heights and the detail of its build.
void TerrainView::RenewDetail()
{
    if (settings_.realTime || !treeIsStale_)
        return;
    document_.Session().Surface().Build3D();
    treeIsStale_ = false;
}

void TerrainView::HeightsChanged(const GridArea& cells)
{
    treeIsStale_ = true;
    RenewDetail();
    const double exaggeration = document_.Session().Ground().Exaggeration();
    scene_.Painter().UpdateHeights(cells);
    scene_.Painter().UpdateLight(light_, RenewNormals(light_, document_.Data(), exaggeration, cells));
    const ElevationData& data = document_.Data();
    if (cells.left == 0 || cells.top == 0 || cells.right == data.width || cells.bottom == data.height)
        scene_.EdgesChanged();
    Unsettle();
}

void TerrainView::SetColors(const HeightColors& colors)
{
    ElevationPalette* palette = nullptr;
    document_.Session().Matrix().GetPalette(&palette);
    if (palette)
        ColorPalette(*palette, document_.Floor(), document_.Top(), colors);
    scene_.Painter().SetColors(colors);
}

void TerrainView::FixDetail(std::optional<double> metres)
{
    fixedDetail_ = metres;
    Unsettle();
}

double TerrainView::LevelOfDetail(const Camera& camera) const
{
    return fixedDetail_ ? *fixedDetail_ : camera.Width() / (2.0 * camera.HalfWidth()) / settings_.errorPixels;
}

/// How fine the terrain is, and for whom.
DetailCamera& TerrainView::TakeDetail(const Camera& camera)
{
    if (settings_.frozen && isHeld_)
        return *detail_;
    const double levelOfDetail = LevelOfDetail(camera);
    if (std::exchange(levelOfDetail_, levelOfDetail) != levelOfDetail)
        settling_.Restart();
    document_.Session().SetLevelOfDetail(levelOfDetail);
    document_.Session().Follow(*detail_, camera);
    isHeld_ = settings_.frozen;
    return *detail_;
}

void TerrainView::Draw(Camera& camera)
{
    const Clock::time_point start = Clock::now();
    DetailCamera& detail = TakeDetail(camera);
    figures_.triangles = scene_.Draw(camera, detail);
    settling_.Saw(figures_.triangles);
    if (settings_.levelColors || settings_.nodeBoxes)
        DrawNodes();
    const bool moved = Length(camera.Position() - lastPosition_) > 0.0;
    lastPosition_ = camera.Position();
    figures_.draw = std::max(Milliseconds(Clock::now() - start) - figures_.update, 0.0);
    if (moved && !isHeld_)
        settling_.Restart();
    figures_.settled = settling_.IsDone();
}

void TerrainView::DrawSettled(Camera& camera)
{
    scene_.Settle(camera, TakeDetail(camera));
    Draw(camera);
}

void TerrainView::Measure(Camera& camera)
{
    ITessara& surface = document_.Session().Surface();
    probing_->Join(TakeDetail(camera));
    probing_->SeeNothing();
    const Clock::time_point start = Clock::now();
    surface.Draw3D(probing_.Get());
    figures_.update = Milliseconds(Clock::now() - start);
    probing_->SeeAll();
    const std::vector<DrawnVertex> all = probe_.Capture(surface, *probing_, figures_.triangles * 2);
    figures_.activeNodes = SurveyNodes(all, RootHalf()).active;
}

/// Half size of the tree's root.
int TerrainView::RootHalf() const
{
    return 1 << (MeasureTree(document_.Session().Columns(), document_.Session().Rows()).levels - 1);
}

void TerrainView::Survey()
{
    captured_ = probe_.Capture(document_.Session().Surface(), *detail_, figures_.triangles);
    survey_ = SurveyNodes(captured_, RootHalf());
}

void TerrainView::EnterTreeSpace() const
{
    float translation[3] = {};
    document_.Session().Surface().GetTranslation(translation);
    glPushMatrix();
    glTranslatef(translation[0], translation[1], translation[2]);
    glScaled(1.0, document_.Session().Ground().ElevationScale(), 1.0);
}

/// Over the terrain as it was drawn: the nodes' triangles in the colours of their levels, and their boxes.
void TerrainView::DrawNodes()
{
    Survey();
    glPushAttrib(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT | GL_CURRENT_BIT | GL_LINE_BIT | GL_COLOR_BUFFER_BIT |
                 GL_POLYGON_BIT | GL_TRANSFORM_BIT);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    scene_.Painter().CutEdges();
    EnterTreeSpace();
    if (settings_.levelColors && settings_.fill == FillMode::Filled) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_POLYGON_OFFSET_FILL);
        glPolygonOffset(-1.0f, -1.0f);
        glBegin(GL_TRIANGLES);
        for (std::size_t i = 0; i < survey_.nodeOf.size(); ++i) {
            const auto& color = ColorOf(survey_.nodes[survey_.nodeOf[i]]);
            glColor4f(color[0], color[1], color[2], 0.62f);
            for (std::size_t k = 0; k < 3; ++k)
                glVertex3fv(&captured_[3 * i + k].x);
        }
        glEnd();
    }
    if (settings_.nodeBoxes) {
        glLineWidth(1.0f);
        glBegin(GL_LINES);
        for (const DrawnNode& node : survey_.nodes) {
            if (node.beyond)
                continue;
            const auto& color = ColorOf(node);
            glColor3f(color[0], color[1], color[2]);
            DrawBox(node);
        }
        glEnd();
    }
    glPopMatrix();
    glPopAttrib();
}

void TerrainView::DrawRing(const Camera& camera, const GroundRing& ring) const
{
    constexpr int kCorners = 96;
    camera.LoadMatrices();
    const Vector3 units = document_.Session().Ground().DrawUnits();
    glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT | GL_CURRENT_BIT);
    glDisable(GL_DEPTH_TEST);
    for (const bool dark : {true, false}) {
        glLineWidth(dark ? 3.0f : 1.2f);
        dark ? glColor3f(0.0f, 0.0f, 0.0f) : glColor3f(1.0f, 0.9f, 0.35f);
        glBegin(GL_LINE_LOOP);
        for (int i = 0; i < kCorners; ++i) {
            const double angle = 2.0 * std::numbers::pi * i / kCorners;
            const double x = ring.x + ring.radius * std::cos(angle);
            const double z = ring.z + ring.radius * std::sin(angle);
            glVertex3d(x / units.x, document_.Ground().HeightAt(x, z) / units.y, z / units.z);
        }
        glEnd();
    }
    glPopAttrib();
}

}  // namespace tessara

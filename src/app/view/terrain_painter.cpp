#include "app/view/terrain_painter.h"

#include "app/view/height_colors.h"
#include "app/view/terrain_shaders.h"
#include "host/camera.h"
#include "host/terrain_session.h"
#include "platform/com/bstr.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessara {

namespace {

/// What ground without any colour looks like in a light of 1: bright, with room above for what faces the sun.
constexpr Vector3 kPlainColor{0.74, 0.73, 0.71};

/// Lets shaders find a map, in which the outermost texels stand on the outermost grid points.
/// \param name the uniform variables' but for their endings
void SetPlace(const ShaderProgram& program, const std::string& name, const GroundFrame& ground, int width, int height)
{
    const auto scale = [](double extent, int texels) { return extent > 0.0 ? (texels - 1) / (extent * texels) : 0.0; };
    program.Set((name + "Scale").c_str(), scale(ground.Width(), width), 0.0, scale(ground.Depth(), height));
    program.Set((name + "Origin").c_str(), 0.5 / width, 0.0, 0.5 / height);
}

void Set(const ShaderProgram& program, const char* name, const Vector3& value)
{
    program.Set(name, value.x, value.y, value.z);
}

}  // namespace

TerrainPainter::TerrainPainter(const GlFunctions& gl, const ElevationData& data, const TerrainSession& terrain,
                               const Atmosphere& atmosphere, const LightMap& light, bool withShaders)
    : gl_(gl),
      data_(data),
      terrain_(terrain),
      atmosphere_(atmosphere),
      lightWidth_(light.width),
      lightHeight_(light.height)
{
    if (!withShaders)
        return;
    try {
        program_ = std::make_unique<ShaderProgram>(gl, kTerrainVertexShader, kTerrainFragmentShader);
    } catch (const std::runtime_error&) {
        return;  // an old driver: OpenGL's own light still works
    }
    heights_ = std::make_unique<HeightTexture>(gl, data);
    SetLight(light);
}

void TerrainPainter::SetColors(const HeightColors& colors)
{
    const HeightTable table(colors);
    landSpan_ = table.Land();
    waterSpan_ = table.Water();
    if (program_)
        ramp_ = std::make_unique<Texture>(gl_, GL_RGB8, 512, 1, GL_RGB, GL_UNSIGNED_BYTE, table.Colors().data(),
                                          TextureFilter::Nearest);
}

void TerrainPainter::SetSea(const Sea* sea)
{
    sea_ = sea;
    water_.reset();
    if (!sea || !program_)
        return;
    const std::vector<std::uint8_t> water = heights_->Covered(data_, *sea);
    water_ = std::make_unique<Texture>(gl_, GL_LUMINANCE8, heights_->Width(), heights_->Height(), GL_LUMINANCE,
                                       GL_UNSIGNED_BYTE, water.data());
}

void TerrainPainter::ShowColors(bool shown, bool mixed)
{
    colorsShown_ = shown;
    colorsMixed_ = mixed;
}

void TerrainPainter::SetLight(const LightMap& light)
{
    if (!program_)
        return;
    lightWidth_ = light.width;
    lightHeight_ = light.height;
    heights_->RenewMipmaps(gl_);
    light_ = std::make_unique<Texture>(gl_, GL_RGBA16, light.width, light.height, GL_RGBA, GL_UNSIGNED_SHORT,
                                       light.texels.data());
}

void TerrainPainter::UpdateLight(const LightMap& light, const GridArea& texels)
{
    if (!light_ || texels.IsEmpty())
        return;
    const auto first = static_cast<std::size_t>(texels.left) +
                       static_cast<std::size_t>(texels.top) * static_cast<std::size_t>(light.width);
    light_->Update(texels.left, texels.top, texels.right - texels.left, texels.bottom - texels.top, light.width,
                   GL_RGBA, GL_UNSIGNED_SHORT, &light.texels[first]);
}

void TerrainPainter::UpdateHeights(const GridArea& cells)
{
    if (!heights_ || cells.IsEmpty())
        return;
    heights_->Update(data_, cells);
    SetSea(sea_);
}

void TerrainPainter::Draw(const Camera& camera, ICameraObject& detail, double clear, double haze) const
{
    glPushAttrib(GL_ENABLE_BIT | GL_LIGHTING_BIT | GL_TRANSFORM_BIT);
    glEnable(GL_DEPTH_TEST);
    ChooseVertexColors();
    CutEdges();
    if (program_)
        BeginShaded(camera, clear, haze);
    else
        BeginFixed();
    terrain_.Surface().Draw3D(&detail);
    if (program_)
        gl_.UseProgram(0);
    glPopAttrib();
}

void TerrainPainter::DrawUnlit(ICameraObject& camera, GLenum mode) const
{
    ITessara& surface = terrain_.Surface();
    glPushAttrib(GL_ENABLE_BIT | GL_TRANSFORM_BIT | GL_POLYGON_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_COLOR_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    ChooseVertexColors();
    CutEdges();
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.0f, 2.0f);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    surface.Draw3D(&camera);  // hides the lines behind it
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glLineWidth(1.5f);
    glPointSize(2.0f);
    surface.SetGLPolygonMode(GL_FRONT_AND_BACK, mode);
    surface.Draw3D(&camera);
    surface.SetGLPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glPopAttrib();
}

void TerrainPainter::BeginShaded(const Camera& camera, double clear, double haze) const
{
    const GroundFrame& ground = terrain_.Ground();
    const Vector3 units = ground.DrawUnits();
    program_->Use();
    program_->Set("toGround", units.x, units.y * ground.ElevationScale(), units.z);
    program_->Set("groundOrigin", -terrain_.Border() * units.x, 0.0, -terrain_.Border() * units.z);
    SetPlace(*program_, "light", ground, lightWidth_, lightHeight_);
    Set(*program_, "eye", camera.Position());
    Set(*program_, "sunDirection", atmosphere_.sunDirection);
    Set(*program_, "sunColor", atmosphere_.sunColor);
    Set(*program_, "skyColor", atmosphere_.skyColor);
    Set(*program_, "groundColor", atmosphere_.groundColor);
    Set(*program_, "hazeColor", atmosphere_.hazeColor);
    program_->Set("hazeStart", clear);
    program_->Set("hazeLength", haze);
    SetTextures();
    program_->Set("lightMap", 2);
    program_->Set("waterMap", 3);
    program_->Set("hasWater", water_ ? 1 : 0);
    gl_.ActiveTexture(GL_TEXTURE2);
    light_->Bind();
    if (water_) {
        gl_.ActiveTexture(GL_TEXTURE3);
        water_->Bind();
    }
    gl_.ActiveTexture(GL_TEXTURE0);
}

/// The surface binds its source texture on unit 0 and its detail texture on unit 1. The source covers the cells of the
/// grid, without the border around it.
void TerrainPainter::SetTextures() const
{
    LONG detail = 0;
    int brightness = 1;
    terrain_.Surface().IsUsingTextureDetail(&detail);
    terrain_.Surface().GetTextureDetailRGBGamma(&brightness);
    const double columns = terrain_.Columns() - 2 * terrain_.Border();
    const double rows = terrain_.Rows() - 2 * terrain_.Border();
    const Vector3 units = terrain_.Ground().DrawUnits();
    program_->Set("sourceMap", 0);
    program_->Set("detailMap", 1);
    BstrHolder detailName;
    terrain_.Surface().GetDBTextureDetailName(detailName.Out(), nullptr);
    const bool hasSource = ShowsSource();
    program_->Set("hasSource", hasSource ? 1 : 0);
    SetHeights(hasSource);
    program_->Set("hasDetail", detail != 0 && SysStringLen(detailName.Get()) != 0 ? 1 : 0);
    program_->Set("detailScale", static_cast<double>(brightness));
    program_->Set("sourceScale", 1.0 / (columns * units.x), 0.0, 1.0 / (rows * units.z));
    program_->Set("sourceOrigin", 0.5 / columns, 0.0, 0.5 / rows);
}

/// Without a texture in a slot the surface binds none.
bool TerrainPainter::ShowsSource() const
{
    LONG source = 0;
    terrain_.Surface().IsUsingTextureSource(&source);
    return source != 0 && SUCCEEDED(terrain_.Surface().ActivateSourceTexture());
}

/// They count where no shader colours the pixels.
void TerrainPainter::ChooseVertexColors() const
{
    terrain_.Surface().UseColor(ShowsColors(ShowsSource()) ? 1 : 0);
}

void TerrainPainter::SetHeights(bool hasSource) const
{
    SetPlace(*program_, "height", terrain_.Ground(), heights_->Width(), heights_->Height());
    Set(*program_, "plainColor", kPlainColor);
    program_->Set("heightMap", 4);
    program_->Set("rampMap", 5);
    program_->Set("hasColors", ramp_ && ShowsColors(hasSource) ? 1 : 0);
    program_->Set("landLow", landSpan_.low);
    program_->Set("landScale", landSpan_.scale);
    program_->Set("waterLow", waterSpan_.low);
    program_->Set("waterScale", waterSpan_.scale);
    gl_.ActiveTexture(GL_TEXTURE4);
    heights_->Bind();
    gl_.ActiveTexture(GL_TEXTURE5);
    if (ramp_)
        ramp_->Bind();
    gl_.ActiveTexture(GL_TEXTURE0);
}

void TerrainPainter::BeginFixed() const
{
    const Vector3 units = terrain_.Ground().DrawUnits();
    const Vector3& sun = atmosphere_.sunDirection;
    const GLfloat direction[4] = {static_cast<GLfloat>(sun.x / units.x), static_cast<GLfloat>(sun.y / units.y),
                                  static_cast<GLfloat>(sun.z / units.z), 0.0f};
    constexpr GLfloat kSunlight[4] = {0.85f, 0.82f, 0.76f, 1.0f};
    constexpr GLfloat kSkylight[4] = {0.36f, 0.38f, 0.42f, 1.0f};
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glLightfv(GL_LIGHT0, GL_POSITION, direction);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, kSunlight);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, kSkylight);
    glEnable(GL_COLOR_MATERIAL);
    glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    glEnable(GL_NORMALIZE);
}

/// Beyond its grid the surface draws slivers and one corner at the lowest height. A grid point stands for the ground
/// half a cell around it.
void TerrainPainter::CutEdges() const
{
    const double east = terrain_.Columns() - 2 * terrain_.Border() - 0.5;
    const double south = terrain_.Rows() - 2 * terrain_.Border() - 0.5;
    const GLdouble planes[4][4] = {
        {1.0, 0.0, 0.0, 0.5}, {-1.0, 0.0, 0.0, east}, {0.0, 0.0, 1.0, 0.5}, {0.0, 0.0, -1.0, south}};
    for (GLenum i = 0; i < 4; ++i) {
        glClipPlane(GL_CLIP_PLANE0 + i, planes[i]);
        glEnable(GL_CLIP_PLANE0 + i);
    }
}

}  // namespace tessara

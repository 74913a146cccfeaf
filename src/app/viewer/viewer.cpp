#include "app/viewer/viewer.h"

#include "app/output/png_file.h"
#include "app/output/temporary_file.h"
#include "app/view/framing.h"
#include "app/view/saved_textures.h"
#include "app/viewer/picture/view_overlay.h"
#include "platform/gl/render_target.h"
#include "surface/itessara.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace tessara {

namespace {

constexpr int kMostSettling = 60;

bool HasSource(const ProjectPlace& saved)
{
    const auto values = saved.Values();
    return std::any_of(values.begin(), values.end(), [](const ProjectPlace::Value& value) {
        return value.name == "TEXTURE_SRC_DATA" && value.deliverable;
    });
}

/// \param shown whether pictures of the ground are shown where there are any; a project that has one says so itself
void TakeTextures(ITessara& surface, ProjectPlace& saved, bool& shown)
{
    TakeSavedTextures(surface, saved);
    LONG used = 0;
    if (HasSource(saved) && SUCCEEDED(surface.IsUsingTextureSource(&used)))
        shown = used != 0;
}

Vector3 SunOf(const ViewSettings& settings)
{
    return SunlitAtmosphere(settings.sunAzimuth, settings.sunHeight).sunDirection;
}

}  // namespace

Viewer::Viewer(ComPtr<IKvoHost> host, GlLookup lookup, const ViewSettings& settings,
               std::function<void(const ViewerChange&)> changed, std::function<void()> lightReady)
    : host_(std::move(host)),
      lookup_(lookup),
      settings_(settings),
      changed_(std::move(changed)),
      light_(std::move(lightReady))
{
    if (!gl_.Load(lookup))
        throw std::runtime_error("The viewer needs OpenGL 3.0, which this system's driver doesn't have.");
}

Viewer::~Viewer()
{
    view_ = nullptr;
}

void Viewer::Open(OpenedTerrain terrain)
{
    ViewSettings settings = settings_;
    settings.frozen = false;
    if (terrain.saved)
        settings = WithLook(settings, terrain.saved->terrain, terrain.saved->place->Settings());
    auto document = std::make_unique<TerrainDocument>(std::move(terrain.path), std::move(terrain.data),
                                                      settings.exaggeration, 500.0, host_);
    if (terrain.saved)
        TakeTextures(document->Session().Surface(), *terrain.saved->place, settings.sourceTexture);
    auto view = std::make_unique<TerrainView>(gl_, lookup_, *document, std::move(terrain.light), settings);
    auto camera = MakeObject<tessara::Camera>();
    auto controller = std::make_unique<CameraController>(*camera, document->Ground(), document->Session().Ground());
    if (camera_)
        controller->Resize(camera_->Width(), camera_->Height());
    light_.Forget();
    drag_ = DragKind::None;
    view_ = std::move(view);
    controller_ = std::move(controller);
    camera_ = std::move(camera);
    document_ = std::move(document);
    settings_ = settings;
    mapCost_ = {};  // its map is wanted at once
    SetOutline();
    controller_->Resize(width_, height_);
    controller_->ShowAll();
    ResetColors();
    TakeSaved(terrain.saved);
    changed_({true, true, true});
}

void Viewer::SetOutline()
{
    controller_->SetOutline(OutlineOf(document_->Data(), document_->Session().Ground()));
}

void Viewer::Apply(const ViewSettings& settings)
{
    if (IsStroking() && !settings.realTime)
        EndDrag();
    const ViewSettings before = std::exchange(settings_, settings);
    if (!document_)
        return;
    view_->Apply(settings_);
    Restyle(before);
    changed_({true, false, true});
}

/// What follows from settings beyond the next frame.
void Viewer::Restyle(const ViewSettings& before)
{
    if (before.exaggeration != settings_.exaggeration) {
        controller_->ScaleHeights(settings_.exaggeration / before.exaggeration);
        SetOutline();
    }
    if (before.exaggeration != settings_.exaggeration || before.sunAzimuth != settings_.sunAzimuth ||
        before.sunHeight != settings_.sunHeight)
        light_.Order(document_->Data(), settings_.exaggeration, SunOf(settings_));
    if (before.ramp != settings_.ramp)
        SetColors(colors_.low, colors_.high);
    if (before.sourceTexture != settings_.sourceTexture)
        view_->UseSource(settings_.sourceTexture);
}

void Viewer::SetColors(double low, double high)
{
    colors_ = {settings_.ramp, low, std::max(high, low + 1e-3), colors_.own};
    if (!document_)
        return;
    view_->SetColors(colors_);
    MakeMapStale();
    changed_({true, true, true});
}

void Viewer::ResetColors()
{
    const ElevationData& data = document_->Data();
    SetColors(static_cast<double>(data.minimum), static_cast<double>(data.maximum));
}

void Viewer::TakeLight()
{
    const std::unique_ptr<LightMap> map = light_.Take();
    if (!map || !view_)
        return;
    view_->SetLight(std::move(*map));
    changed_({true, false, false});
}

void Viewer::DrawPicture(int width, int height, double factor, TextPainter& text)
{
    width_ = width;
    height_ = height;
    glViewport(0, 0, width, height);
    if (!document_) {
        glClearColor(0.2f, 0.22f, 0.25f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        return;
    }
    controller_->Resize(width, height);
    view_->Draw(*camera_, Ring());
    DrawScaleBar(width, height, MetresPerPixel(*controller_, width, height), factor, text);
    DrawCompass(width, height, controller_->Azimuth(), factor, text);
}

bool Viewer::WantsFrame() const
{
    return document_ && !view_->Figures().settled;
}

void Viewer::Measure()
{
    if (document_)
        view_->Measure(*camera_);
}

const FrameFigures& Viewer::Figures() const
{
    static const FrameFigures none;
    return view_ ? view_->Figures() : none;
}

void Viewer::CameraMoved()
{
    changed_({true, true, false});
}

/// \param finished the stroke is over: what takes long follows now
void Viewer::HeightsChanged(const GridArea& cells, bool finished)
{
    if (!cells.IsEmpty())
        view_->HeightsChanged(cells);
    if (finished) {
        SetOutline();
        light_.Order(document_->Data(), settings_.exaggeration, SunOf(settings_));
        MakeMapStale();
    }
    changed_({true, finished, finished});
}

void Viewer::Undo()
{
    EndDrag();
    if (document_ && document_->CanUndo())
        HeightsChanged(document_->Undo(), true);
}

void Viewer::Redo()
{
    EndDrag();
    if (document_ && document_->CanRedo())
        HeightsChanged(document_->Redo(), true);
}

void Viewer::SavePicture(const std::string& path, int width, int height)
{
    RequireWritable(path, document_->Path());
    GLint bound = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &bound);
    const RenderTarget target(gl_, width, height, true);
    const int oldWidth = camera_->Width();
    const int oldHeight = camera_->Height();
    target.Bind();
    controller_->Resize(width, height);
    for (int frame = 0; frame < kMostSettling; ++frame) {
        view_->Draw(*camera_, std::nullopt);
        if (view_->Figures().settled)
            break;
    }
    const std::vector<std::uint8_t> pixels = target.ReadPixels();
    gl_.BindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(bound));
    controller_->Resize(oldWidth, oldHeight);
    WritePng(path, width, height, pixels);
    changed_({true, false, false});
}

std::uint64_t Viewer::ExportTriangles(const std::string& path)
{
    const double pixels = camera_->Width() / (2.0 * camera_->HalfWidth());
    return document_->ExportTriangles(path, *camera_, pixels / settings_.errorPixels);
}

}  // namespace tessara

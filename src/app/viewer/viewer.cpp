#include "app/viewer/viewer.h"

#include "app/view/height_span.h"
#include "app/view/saved_textures.h"
#include "app/viewer/work/project_look.h"
#include "surface/itessara.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tessara {

namespace {

/// \param shown whether pictures of the ground are shown where there are any; a project that has one says so itself
void TakeTextures(ITessara& surface, ProjectPlace& saved, bool& shown)
{
    TakeSavedTextures(surface, saved);
    LONG used = 0;
    if (HasSource(surface) && SUCCEEDED(surface.IsUsingTextureSource(&used)))
        shown = used != 0;
}

}  // namespace

Viewer::Parts::Parts(OpenedTerrain& terrain, const ViewSettings& opening, Viewer& viewer)
    : owned(std::move(terrain.document)),
      document(*owned),
      controller(*camera, document.Ground(), document.Session().Ground()),
      sculptor(document, [&viewer](const GridArea& cells, bool finished) { viewer.HeightsChanged(cells, finished); }),
      picture(viewer.gl_, viewer.lookup_, document, *camera, controller, viewer.pointer_, std::move(terrain.light),
              opening, viewer.settings_, viewer.changed_),
      map(viewer.gl_, document, controller, viewer.colors_),
      readout(document, viewer.pointer_),
      work(document, sculptor, controller, viewer.settings_, viewer.colors_, viewer.changed_)
{
}

Viewer::Viewer(ComPtr<IKvoHost> host, GlLookup lookup, const ViewSettings& settings, ViewerListener changed,
               std::function<void()> lightReady)
    : host_(std::move(host)),
      lookup_(lookup),
      settings_(settings),
      changed_(std::move(changed)),
      light_(std::move(lightReady)),
      pointer_(settings_, [this] { changed_({.brush = true}); })
{
    if (!gl_.Load(lookup))
        throw std::runtime_error("The viewer needs OpenGL 3.0, which this system's driver doesn't have.");
}

Viewer::~Viewer() = default;

/// \param settings become those with which the terrain is shown
std::unique_ptr<Viewer::Parts> Viewer::MakeParts(OpenedTerrain& terrain, ViewSettings& settings)
{
    settings.frozen = false;
    settings.sea = SeaMode::Auto;  // what suits one terrain would flood another
    settings.seaLevel = 0.0;
    if (terrain.saved)
        settings = terrain.saved->settings;
    terrain.document->Serve(*host_);
    auto parts = std::make_unique<Parts>(terrain, settings, *this);
    parts->controller.SetOutline(std::move(terrain.outline));
    if (parts_)
        parts->controller.Resize(parts_->camera->Width(), parts_->camera->Height());
    const Aim aim = terrain.saved ? terrain.saved->aim : Aim();
    parts->controller.Follow(aim);
    parts->picture.View().FixDetail(aim.levelOfDetail);
    return parts;
}

/// \param parts of the terrain, which becomes the one that is shown
void Viewer::Enter(std::unique_ptr<Parts> parts, OpenedTerrain& terrain, const ViewSettings& settings)
{
    settings_ = settings;
    pointer_.Attach(&parts->controller, IsCoarse() ? nullptr : &parts->sculptor);
    parts_ = std::move(parts);
    FindSea();
    ResetColors();
    if (terrain.saved) {
        colors_ = terrain.saved->look.colors;
        SetColors(colors_.low, colors_.high);
    }
    Work().Begin(terrain.saved);
    light_.Begin(terrain.conditions);
    FollowSun();
    Camera().OnMove([this] { changed_({.picture = true, .map = true}); });
    changed_({true, true, true});
}

void Viewer::Open(OpenedTerrain terrain)
{
    ViewSettings settings = settings_;
    auto parts = MakeParts(terrain, settings);
    ITessara& surface = parts->document.Session().Surface();
    if (terrain.saved)
        TakeTextures(surface, *terrain.saved->place, settings.sourceTexture);
    else
        surface.SetTextureDetailRGBGamma(1);  // the light of the picture is made for textures as they are
    const std::unique_ptr<Parts> coarse = IsCoarse() ? std::move(parts_) : nullptr;
    aside_.reset();
    Enter(std::move(parts), terrain, settings);
    if (coarse)
        TakeCamera(coarse->controller);
}

void Viewer::ShowCoarse(OpenedTerrain terrain)
{
    ViewSettings settings = settings_;
    auto parts = MakeParts(terrain, settings);
    if (HasTerrain())
        Sculptor().End();
    if (!IsCoarse())
        aside_ = Aside{std::move(parts_), settings_, colors_};
    Enter(std::move(parts), terrain, settings);
}

void Viewer::GiveUp()
{
    if (!IsCoarse())
        return;
    Aside before = std::move(*aside_);
    aside_.reset();
    parts_ = std::move(before.parts);
    settings_ = before.settings;
    colors_ = before.colors;
    pointer_.Attach(parts_ ? &parts_->controller : nullptr, parts_ ? &parts_->sculptor : nullptr);
    light_.Begin({});
    if (HasTerrain())
        FollowSun();
    changed_({true, true, true});
}

/// Whoever has moved over the coarse terrain goes on from there.
void Viewer::TakeCamera(const CameraController& coarse)
{
    if (coarse.HasMoved())
        Camera().Place(coarse.Position(), coarse.Azimuth(), coarse.Tilt());
}

void Viewer::SetOutline()
{
    Camera().SetOutline(OutlineOf(Document().Data(), SpanOf(Document().Data()), Document().Session().Ground()));
}

/// The light follows the sun and the heights; while a stroke goes on it waits.
void Viewer::FollowSun()
{
    if (Sculptor().IsStroking())
        return;
    light_.Follow(Document().Data(), {Sculptor().State(), settings_.exaggeration,
                                      SunlitAtmosphere(settings_.sunAzimuth, settings_.sunHeight).sunDirection});
}

void Viewer::Apply(const ViewSettings& settings)
{
    if (HasTerrain() && !settings.realTime)
        Sculptor().End();
    const ViewSettings before = std::exchange(settings_, settings);
    if (!HasTerrain())
        return;
    Picture().View().Apply(settings_);
    Restyle(before);
    changed_({.picture = true, .state = true});
}

/// What follows from settings beyond the next frame.
void Viewer::Restyle(const ViewSettings& before)
{
    if (before.exaggeration != settings_.exaggeration) {
        Camera().ScaleHeights(settings_.exaggeration / before.exaggeration);
        SetOutline();
    }
    FollowSun();
    if (SeaChoiceOf(before) != SeaChoiceOf(settings_))
        FindSea();
    if (before.ramp != settings_.ramp || SeaChoiceOf(before) != SeaChoiceOf(settings_))
        SetColors(colors_.low, colors_.high);
    if (before.sourceTexture != settings_.sourceTexture)
        Picture().View().UseSource(settings_.sourceTexture);
}

void Viewer::FindSea()
{
    parts_->sea = SeaOf(Document().Data(), SeaChoiceOf(settings_));
    const Sea* sea = parts_->sea ? &*parts_->sea : nullptr;
    Picture().View().SetSea(sea);
    Map().SetSea(sea);
}

void Viewer::SetColors(double low, double high)
{
    colors_ = {settings_.ramp, low, std::max(high, low + 1e-3), colors_.own};
    if (!HasTerrain())
        return;
    if (parts_->sea)
        colors_.sea = parts_->sea->level;
    Picture().View().SetColors(colors_);
    Map().MakeStale();
    changed_({true, true, true});
}

void Viewer::ResetColors()
{
    const ElevationData& data = Document().Data();
    SetColors(static_cast<double>(data.minimum), static_cast<double>(data.maximum));
}

void Viewer::TakeLight()
{
    const std::unique_ptr<LightMap> map = light_.Take();
    if (!map || !HasTerrain())
        return;
    Picture().View().SetLight(std::move(*map));
    changed_({.picture = true});
}

/// \param finished the stroke is over: what takes long follows now
void Viewer::HeightsChanged(const GridArea& cells, bool finished)
{
    Camera().GroundChanged();
    if (!cells.IsEmpty())
        Picture().View().HeightsChanged(cells);
    if (finished) {
        SetOutline();
        FollowSun();
        Map().MakeStale();
    }
    changed_({true, finished, finished});
}

}  // namespace tessara

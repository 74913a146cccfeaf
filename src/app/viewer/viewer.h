#pragma once

#include "app/viewer/camera/camera_controller.h"
#include "app/viewer/camera/pointer.h"
#include "app/viewer/picture/background_light.h"
#include "app/viewer/picture/map_picture.h"
#include "app/viewer/picture/terrain_picture.h"
#include "app/viewer/terrain/readout.h"
#include "app/viewer/terrain/sculptor.h"
#include "app/viewer/terrain/terrain_document.h"
#include "app/viewer/terrain/terrain_loader.h"
#include "app/viewer/viewer_change.h"
#include "app/viewer/work/terrain_work.h"

#include <functional>
#include <memory>
#include <optional>

namespace tessara {

/// The viewer without its window: opens a terrain, owns what a person has over it, and says what has changed. Every
/// method, of the parts too, runs on the window's thread with the OpenGL context of its canvases current.
class Viewer {
public:
    /// \param host serves the terrain \param lookup finds OpenGL's entry points \param changed hears of changes
    /// \param lightReady called on another thread when TakeLight has something to take
    /// \throws std::runtime_error when the system's OpenGL is too old
    Viewer(ComPtr<IKvoHost> host, GlLookup lookup, const ViewSettings& settings, ViewerListener changed,
           std::function<void()> lightReady);
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;
    ~Viewer();

    /// Replaces the open terrain; after a failure the old one stays. \throws std::runtime_error for the user
    void Open(OpenedTerrain terrain);

    /// Shows the coarse form of a terrain that is being worked out: there is nothing to do with it but look. The open
    /// terrain is put aside until Open or GiveUp. \throws std::runtime_error for the user
    void ShowCoarse(OpenedTerrain terrain);
    bool IsCoarse() const noexcept { return aside_.has_value(); }

    /// The terrain that was put aside is the open one again, if there was one.
    void GiveUp();

    bool HasTerrain() const noexcept { return parts_ != nullptr; }

    // The parts of the open terrain, which go with it.
    TerrainDocument& Document() const noexcept { return parts_->document; }
    CameraController& Camera() const noexcept { return parts_->controller; }
    tessara::Sculptor& Sculptor() const noexcept { return parts_->sculptor; }
    TerrainPicture& Picture() const noexcept { return parts_->picture; }
    MapPicture& Map() const noexcept { return parts_->map; }
    tessara::Readout& Readout() const noexcept { return parts_->readout; }
    TerrainWork& Work() const noexcept { return parts_->work; }

    /// The mouse, over whatever terrain is open.
    tessara::Pointer& Pointer() noexcept { return pointer_; }

    /// Whether something would be lost with the open terrain.
    bool HasUnsavedWork() const { return HasTerrain() && !IsCoarse() && Work().IsUnsaved(); }

    const GlFunctions& Gl() const noexcept { return gl_; }
    const ViewSettings& Settings() const noexcept { return settings_; }
    void Apply(const ViewSettings& settings);

    const HeightColors& Colors() const noexcept { return colors_; }
    void SetColors(double low, double high);
    void ResetColors();

    /// Light that was worked out anew has become ready.
    void TakeLight();
    bool IsLightBusy() { return light_.IsBusy(); }

private:
    struct Parts {
        Parts(OpenedTerrain& terrain, const ViewSettings& opening, Viewer& viewer);

        std::unique_ptr<TerrainDocument> owned;
        TerrainDocument& document;
        ComPtr<tessara::Camera> camera = MakeObject<tessara::Camera>();
        CameraController controller;
        tessara::Sculptor sculptor;
        TerrainPicture picture;
        MapPicture map;
        tessara::Readout readout;
        TerrainWork work;
        std::optional<Sea> sea{};
    };

    /// An open terrain behind the coarse form of another one.
    struct Aside {
        std::unique_ptr<Parts> parts;
        ViewSettings settings;
        HeightColors colors;
    };

    std::unique_ptr<Parts> MakeParts(OpenedTerrain& terrain, ViewSettings& settings);
    void Enter(std::unique_ptr<Parts> parts, OpenedTerrain& terrain, const ViewSettings& settings);
    void TakeCamera(const CameraController& coarse);
    void Restyle(const ViewSettings& before);
    void HeightsChanged(const GridArea& cells, bool finished);
    void SetOutline();
    void FollowSun();
    void FindSea();

    ComPtr<IKvoHost> host_;
    GlLookup lookup_;
    GlFunctions gl_;
    ViewSettings settings_;
    HeightColors colors_;
    ViewerListener changed_;
    BackgroundLight light_;
    tessara::Pointer pointer_;
    std::unique_ptr<Parts> parts_;  // null until a terrain is open
    std::optional<Aside> aside_;
};

}  // namespace tessara

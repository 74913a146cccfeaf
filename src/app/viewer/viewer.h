#pragma once

#include "app/viewer/camera/camera_controller.h"
#include "app/viewer/picture/background_light.h"
#include "app/viewer/picture/map_view.h"
#include "app/viewer/picture/terrain_view.h"
#include "app/viewer/terrain/terrain_document.h"
#include "app/viewer/terrain/terrain_loader.h"
#include "app/viewer/work/project_look.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tessara {

class ProjectWriter;
class TextPainter;

/// The work on a terrain as it is at a time, as far as it is worth to be saved.
struct WorkState {
    std::uint64_t heights = 0;
    unsigned textures = 0;
    ProjectLook look;

    bool operator==(const WorkState&) const = default;
};

/// What the window must do about a change.
struct ViewerChange {
    bool picture = false;  ///< draw the terrain again
    bool map = false;      ///< draw the map again
    bool state = false;    ///< show menus, fields and titles anew
};

/// The viewer without its window: one open terrain, the camera over it, and what a person does with both. Every method
/// runs on the window's thread with the OpenGL context of its canvases current.
class Viewer {
public:
    /// \param host serves the terrain \param lookup finds OpenGL's entry points \param changed hears of changes, on the
    /// window's thread \param lightReady called on another thread when TakeLight has something to take
    /// \throws std::runtime_error when the system's OpenGL is too old
    Viewer(ComPtr<IKvoHost> host, GlLookup lookup, const ViewSettings& settings,
           std::function<void(const ViewerChange&)> changed, std::function<void()> lightReady);
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;
    ~Viewer();

    /// Replaces the open terrain; after a failure the old one stays. \throws std::runtime_error for the user
    void Open(OpenedTerrain terrain);

    bool HasTerrain() const noexcept { return document_ != nullptr; }
    TerrainDocument& Document() noexcept { return *document_; }
    CameraController& Camera() noexcept { return *controller_; }

    const GlFunctions& Gl() const noexcept { return gl_; }
    const ViewSettings& Settings() const noexcept { return settings_; }
    void Apply(const ViewSettings& settings);

    const HeightColors& Colors() const noexcept { return colors_; }
    void SetColors(double low, double high);
    void ResetColors();

    // Projects.

    /// The project that the terrain belongs to; empty where it was never saved into one.
    const std::string& ProjectPath() const noexcept { return projectPath_; }

    /// The terrain's name in the project.
    const std::string& Element() const noexcept { return element_; }

    /// Whether the work was recovered and is in no project that a person knows.
    bool IsRecovered() const noexcept { return recovered_; }

    /// The textures or their switches have changed, by way of the surface.
    void TexturesChanged();

    /// Whether something would be lost with the terrain: in a project every change but the camera's, else heights that
    /// no file holds.
    bool HasUnsavedWork() const;

    /// Adds the terrain, and all other terrains of the project that it belongs to, to a project that is being written.
    /// \throws std::runtime_error for the user
    void WriteProject(ProjectWriter& writer);

    /// Saves the terrain into a project, which it belongs to from now on. \throws std::runtime_error for the user
    void SaveProject(const std::string& path);

    /// Tells two states of the work apart.
    WorkState Work() const;

    /// Light that was worked out anew has become ready.
    void TakeLight();
    bool IsLightBusy() { return light_.IsBusy(); }

    // Drawing, each into a viewport of its own over the whole canvas, whose size is in pixels.
    void DrawPicture(int width, int height, double factor, TextPainter& text);
    void DrawMap(int width, int height, double factor, TextPainter& text);

    /// Whether the picture isn't final yet: another frame shows more.
    bool WantsFrame() const;

    /// Takes the figures of the frame that can't be had in passing.
    void Measure();
    const FrameFigures& Figures() const;

    /// Milliseconds after which the map is to be drawn again because it shows older heights or colours: one that takes
    /// long to renew waits until nobody has changed anything for a while. \return 0 where it shows them as they are
    int MapDelay() const;

    /// Draws the map anew, which takes long on large terrains.
    void RenewMap();

    // The mouse, in pixels of the picture.
    void Hover(const PicturePoint& point);
    void Leave();
    void BeginOrbit(const PicturePoint& point);
    void BeginPan(const PicturePoint& point);
    void BeginStroke(const PicturePoint& point);
    void Drag(const PicturePoint& point);
    void EndDrag();
    void Zoom(const PicturePoint& point, double steps);
    void GoToMap(const PicturePoint& point, int width, int height, double factor);

    /// Whether time must go on: a stroke is held.
    bool IsStroking() const noexcept { return drag_ == DragKind::Stroke; }
    void ContinueStroke(double seconds);

    void SetBrushShown(bool shown);
    void Undo();
    void Redo();

    /// The camera has moved, by whoever.
    void CameraMoved();

    /// What is under the mouse, for the status bar; empty where there is no ground.
    std::string PlaceUnderMouse() const;
    std::string HeightUnderMouse() const;

    /// Draws a picture of another size and writes it. \throws std::runtime_error for the user
    void SavePicture(const std::string& path, int width, int height);

    /// Writes the triangles of the picture. \return their number \throws std::runtime_error for the user
    std::uint64_t ExportTriangles(const std::string& path);

private:
    using Clock = std::chrono::steady_clock;
    enum class DragKind { None, Orbit, Pan, Stroke };

    void TakeSaved(const std::optional<SavedTerrain>& saved);
    void HeightsChanged(const GridArea& cells, bool finished);
    void Restyle(const ViewSettings& before);
    void SetOutline();
    void MakeMapStale();
    void DrawCone(const MapView& map, int width, int height, double factor) const;
    MapView MapFor(int width, int height, double factor) const;
    void Stroke(double seconds);
    GridArea Dab(const BrushPoint& point);
    std::optional<GroundRing> Ring() const;

    ComPtr<IKvoHost> host_;
    GlLookup lookup_;
    GlFunctions gl_;
    ViewSettings settings_;
    std::function<void(const ViewerChange&)> changed_;
    BackgroundLight light_;
    std::unique_ptr<TerrainDocument> document_;
    ComPtr<tessara::Camera> camera_;
    std::unique_ptr<CameraController> controller_;
    std::unique_ptr<TerrainView> view_;
    HeightColors colors_;
    DragKind drag_ = DragKind::None;
    std::optional<PicturePoint> mouse_;
    double strokeLevel_ = 0.0;
    Vector3 strokeAt_;
    GridArea strokeArea_;
    std::string projectPath_;
    std::string element_;        // the terrain's name in the project
    unsigned textureState_ = 0;  // counts changes
    WorkState saved_;            // what the project holds
    bool recovered_ = false;     // the project doesn't hold what was opened
    int width_ = 1;              // of the picture, in pixels
    int height_ = 1;
    bool brushShown_ = false;
    bool mapStale_ = true;
    Clock::time_point mapChanged_;  // when it became stale for the last time
    Clock::duration mapCost_{};     // of renewing it
};

}  // namespace tessara

#pragma once

#include "app/viewer/view_request.h"
#include "app/viewer/viewer.h"
#include "app/viewer/window/pages/settings_listener.h"
#include "app/viewer/work/kept_settings.h"
#include "app/viewer/work/work_keeper.h"
#include "host/project/autosave.h"

#include <wx/frame.h>
#include <wx/timer.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

class wxGLContext;
class wxInfoBar;
class wxMenu;
class wxNotebook;
class wxPanel;

namespace tessara {

class LegendPane;
class LoadBar;
class MapPane;
class PaneSplitter;
class ColorsPage;
class DebugPage;
class PicturePane;
class SculptPage;
class ViewPage;
class SmoothFrame;
class StatusProgress;
class StatusTexts;
class TextTextures;

/// The window: the terrain in space and as a map, settings, menus and a status bar.
class MainWindow final : public wxFrame {
public:
    /// Opens what the request asks for as soon as the window is on the screen.
    MainWindow(const ViewRequest& request, const KeptSettings& kept);
    ~MainWindow() override;

    /// Whether OpenGL, without which the window is of no use, could be started.
    bool HasFailed() const noexcept { return failed_; }

    /// Opens a file, with progress that can be cancelled; after a failure the old terrain stays. \param path empty for
    /// the built-in sample
    void Load(const std::string& path);

    /// The same for one terrain of a project.
    void Load(const std::string& path, const std::string& element);
    bool IsLoading() const noexcept { return loader_ != nullptr; }

    /// Does what a menu line says. \param command see Command
    void Run(int command);

    /// Null until the window is on the screen.
    tessara::Viewer* GetViewer() const noexcept { return viewer_.get(); }
    PicturePane& Picture() const noexcept { return *picture_; }
    MapPane& Map() const noexcept { return *map_; }

private:
    // Making and ending.
    void MakePanes();
    void MakeStatus();
    void Place();
    void BindEvents();
    void Start();
    bool StartDrawing();
    void OnClose(wxCloseEvent& event);
    void Keep();

    // What the window shows.
    SettingsListener MakeListener();
    void Change(const std::function<void(ViewSettings&)>& change);
    void Changed(const ViewerChange& change);
    void ShowState();
    void ShowMenus();
    void ShowRecent();
    void ShowTitle();
    void ShowFrame();

    // Commands.
    void Do(int command);
    bool DoFile(int command);
    bool DoEdit(int command);
    bool DoView(int command);
    bool DoTerrain(int command);
    bool DoHelp(int command);
    void SetBrush(int command);
    void ScaleBrush(double factor);
    void ShowKeys();
    void SetRealTime(bool on);
    void SetMapShown(bool shown);
    void SetSideShown(bool shown);
    void OnKey(wxKeyEvent& event);
    bool OnSteeringKey(int key);
    bool Escape();
    bool IsTyping() const;

    // Files.
    void AskAndOpen();
    std::optional<std::string> ChooseTerrain(const std::string& project);
    void Begin(TerrainRequest terrain);
    bool OfferRecovery();
    void KeepWork();
    std::string NameOfWork() const;
    std::optional<WorkState> StateOfWork() const;
    bool SaveProject(bool elsewhere);
    void AskAndSaveHeights();
    void AskAndSavePicture();
    void AskAndExport();
    void ImportSource();
    void OpenDetailDialog();
    bool MayLeave();
    void WatchLoader();
    void ShowCoarse();
    void Opened(OpenedTerrain terrain);
    void ShowInformation();
    void ShowError(const std::string& message);
    void Tell(const std::string& message);

    ViewRequest request_;
    KeptSettings kept_;
    bool failed_ = false;
    int running_ = 0;  // commands that aren't done
    bool hasSource_ = false;
    bool stateRequested_ = false;
    std::string loading_;
    std::optional<WorkState> left_;  // the work that may be left for what is being loaded
    wxTimer loadTimer_;
    wxTimer keepTimer_;
    WorkKeeper keeper_;
    std::optional<Recovery> recovery_;  // of what is being loaded
    std::chrono::steady_clock::time_point lastFigures_;

    wxPanel* root_ = nullptr;
    wxInfoBar* notes_ = nullptr;
    PaneSplitter* panes_ = nullptr;
    PaneSplitter* side_ = nullptr;
    wxNotebook* pages_ = nullptr;
    wxPanel* mapPanel_ = nullptr;
    PicturePane* picture_ = nullptr;
    MapPane* map_ = nullptr;
    LegendPane* legend_ = nullptr;
    LoadBar* bar_ = nullptr;
    ViewPage* viewPage_ = nullptr;
    ColorsPage* colorsPage_ = nullptr;
    SculptPage* sculptPage_ = nullptr;
    DebugPage* debugPage_ = nullptr;
    std::unique_ptr<StatusTexts> texts_;

    std::unique_ptr<wxGLContext> context_;
    ComPtr<StatusProgress> progress_;
    std::unique_ptr<TextTextures> text_;
    std::unique_ptr<SmoothFrame> smooth_;
    std::unique_ptr<tessara::Viewer> viewer_;
    std::unique_ptr<TerrainLoader> loader_;
};

}  // namespace tessara

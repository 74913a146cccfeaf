#pragma once

#include "app/viewer/view_request.h"
#include "app/viewer/window/commands/command_menus.h"
#include "app/viewer/window/files/settings_store.h"
#include "app/viewer/window/panes/status_line.h"

#include <wx/frame.h>

#include <memory>
#include <string>

namespace tessara {

class MapPane;
class PicturePane;
class Viewer;
class ViewerStage;
class WindowPanes;
struct ViewerChange;
struct Workbench;

/// The window: the terrain in space and as a map, settings, menus and a status bar.
class MainWindow final : public wxFrame {
public:
    /// Opens what the request asks for as soon as the window is on the screen.
    MainWindow(const ViewRequest& request, const KeptSettings& kept);
    ~MainWindow() override;

    /// Whether OpenGL could not be started; the window is useless without it.
    bool HasFailed() const noexcept { return failed_; }

    /// Opens a file, with progress that can be cancelled; after a failure the old terrain stays. \param path empty for
    /// the built-in sample
    void Load(const std::string& path);
    bool IsLoading() const noexcept;

    /// Does what a menu line says. \param command see CommandId
    void Run(int command);

    /// Null until the window is on the screen.
    tessara::Viewer* GetViewer() const noexcept;
    PicturePane& Picture() const noexcept;
    MapPane& Map() const noexcept;

private:
    WindowPanes* MakePanes();
    void Place();
    void BindEvents();
    void Start();
    void OnClose(wxCloseEvent& event);
    void OnKey(wxKeyEvent& event);
    void Keep();
    void Do(int command);
    void Changed(const ViewerChange& change);
    void RequestState();
    void ShowState();
    void ShowFrame();

    ViewRequest request_;
    SettingsStore store_;
    CommandMenus menus_;
    StatusLine status_;
    WindowPanes* panes_;
    std::unique_ptr<ViewerStage> stage_;  // null until the window is on the screen, as is the bench
    std::unique_ptr<Workbench> bench_;
    bool failed_ = false;
    bool stateRequested_ = false;
    int running_ = 0;  // commands that aren't done
};

}  // namespace tessara

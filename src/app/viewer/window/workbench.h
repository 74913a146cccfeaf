#pragma once

#include "app/viewer/window/files/file_desk.h"
#include "app/viewer/window/files/save_desk.h"
#include "app/viewer/window/files/work_watch.h"
#include "app/viewer/window/settings_desk.h"
#include "app/viewer/window/texture_desk.h"

class wxFrame;

namespace tessara {

class PicturePane;
class SettingsStore;
class StatusLine;
class Viewer;
class WindowPanes;
struct ViewRequest;

/// What the commands of the window work with, once there is something to work at: the window's parts, and a desk for
/// each kind of work.
struct Workbench {
    /// All outlive this object. \param isBusy whether a command is at work \param changed something is to be shown anew
    Workbench(wxFrame& window, tessara::Viewer& shown, WindowPanes& parts, StatusLine& status, SettingsStore& kept,
              const ViewRequest& request, std::function<bool()> isBusy, std::function<void()> changed);

    wxFrame& frame;
    tessara::Viewer& viewer;
    WindowPanes& panes;
    PicturePane& picture;
    SettingsStore& store;
    SettingsDesk settings;
    TextureDesk textures;
    WorkWatch watch;
    SaveDesk saves;
    FileDesk files;

private:
    void TerrainOpened();
};

}  // namespace tessara

#pragma once

#include "app/viewer/work/terrain_work.h"

#include <string>

class wxWindow;

namespace tessara {

class PicturePane;
class SettingsStore;
class StatusLine;
class Viewer;
class WorkWatch;

/// Where the open terrain, its picture and its triangles are written to files, if the user confirms.
class SaveDesk {
public:
    /// All outlive this object.
    SaveDesk(wxWindow& window, Viewer& viewer, PicturePane& picture, StatusLine& status, SettingsStore& store,
             WorkWatch& watch);

    /// Saves the project, and asks for a name where it has none. \return whether it is saved
    bool SaveProject();
    bool SaveProjectAs();
    void SaveHeights();
    void SavePicture();
    void Export();

    /// Asks what becomes of unsaved work. \return whether the terrain may go
    bool MayLeave();

    /// What the user calls the work.
    std::string NameOfWork() const;

private:
    bool WriteProject(const std::string& path, TerrainWork::IfChanged ifChanged = TerrainWork::IfChanged::Refuse);
    bool SettleChanges(const std::string& path, const std::string& what);

    wxWindow& window_;
    Viewer& viewer_;
    PicturePane& picture_;
    StatusLine& status_;
    SettingsStore& store_;
    WorkWatch& watch_;
};

}  // namespace tessara

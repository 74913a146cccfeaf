#pragma once

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
    bool WriteProject(const std::string& path);

    wxWindow& window_;
    Viewer& viewer_;
    PicturePane& picture_;
    StatusLine& status_;
    SettingsStore& store_;
    WorkWatch& watch_;
};

}  // namespace tessara

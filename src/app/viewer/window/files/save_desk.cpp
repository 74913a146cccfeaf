#include "app/viewer/window/files/save_desk.h"

#include "app/viewer/picture/view_text.h"
#include "app/viewer/viewer.h"
#include "app/viewer/window/dialogs/messages.h"
#include "app/viewer/window/dialogs/picture_dialog.h"
#include "app/viewer/window/files/settings_store.h"
#include "app/viewer/window/files/work_watch.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/panes/status_line.h"
#include "app/viewer/window/window_text.h"

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>
#include <wx/utils.h>

#include <algorithm>
#include <optional>

namespace tessara {

namespace {

constexpr char kProjectFiles[] = "Tessara project (*.tessara)|*.tessara";
constexpr char kHeightFiles[] = "GeoTIFF (*.tif)|*.tif|ESRI ASCII grid (*.asc)|*.asc|16-bit PNG (*.png)|*.png";
constexpr char kPictureFiles[] = "PNG picture (*.png)|*.png";
constexpr char kMeshFiles[] =
    "Text, one vertex a line (*.txt)|*.txt|Wavefront OBJ (*.obj)|*.obj|PLY (*.ply)|*.ply|STL (*.stl)|*.stl";

/// Asks where to write. A name without an ending gets the one of the chosen kind.
/// \return nothing when the user doesn't want to
std::optional<std::string> AskWhere(wxWindow* parent, const char* title, const wxFileName& proposed, const char* kinds)
{
    wxFileDialog dialog(parent, title, proposed.GetPath(), proposed.GetFullName(), kinds,
                        wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (dialog.ShowModal() != wxID_OK)
        return std::nullopt;
    wxFileName path(dialog.GetPath());
    if (!path.HasExt()) {
        const wxArrayString parts = wxSplit(kinds, '|');
        path.SetExt(parts[static_cast<std::size_t>(2 * std::max(dialog.GetFilterIndex(), 0) + 1)].AfterLast('.'));
    }
    return path.GetFullPath().utf8_string();
}

/// The terrain's file under another ending; \param suffix behind the name
wxFileName Proposed(Viewer& viewer, const char* suffix, const char* ending)
{
    const TerrainWork& work = viewer.Work();
    wxFileName name(Wide(work.ProjectPath().empty() ? viewer.Document().Path() : work.ProjectPath()));
    if (work.ProjectPath().empty() && work.IsRecovered())
        name = wxFileName(wxString(), Wide(work.Element()));  // the file that it comes from is none of the user's
    if (!name.IsOk() || name.GetName().empty())
        name.SetName("sample");
    name.SetName(name.GetName() + suffix);
    name.SetExt(ending);
    return name;
}

}  // namespace

SaveDesk::SaveDesk(wxWindow& window, Viewer& viewer, PicturePane& picture, StatusLine& status, SettingsStore& store,
                   WorkWatch& watch)
    : window_(window), viewer_(viewer), picture_(picture), status_(status), store_(store), watch_(watch)
{
}

std::string SaveDesk::NameOfWork() const
{
    const TerrainWork& work = viewer_.Work();
    if (!work.ProjectPath().empty())
        return TerrainName(work.ProjectPath());
    return work.IsRecovered() ? work.Element() : TerrainName(viewer_.Document().Path());
}

bool SaveDesk::MayLeave()
{
    if (!viewer_.HasUnsavedWork())
        return true;
    wxMessageDialog question(&window_, "There are changes of " + Wide(NameOfWork()) + " that aren't saved. Save them?",
                             "Tessara", wxYES_NO | wxCANCEL | wxICON_QUESTION);
    question.SetYesNoCancelLabels("&Save", "&Don't Save", "&Cancel");
    const int answer = question.ShowModal();
    return answer == wxID_YES ? SaveProject() : answer == wxID_NO;
}

bool SaveDesk::SaveProject()
{
    return viewer_.Work().ProjectPath().empty() ? SaveProjectAs() : WriteProject(viewer_.Work().ProjectPath());
}

bool SaveDesk::SaveProjectAs()
{
    const auto path = AskWhere(&window_, "Save Project", Proposed(viewer_, "", "tessara"), kProjectFiles);
    return path && WriteProject(*path);
}

/// The project is another one than was opened: asks whose changes count.
bool SaveDesk::SettleChanges(const std::string& path, const std::string& what)
{
    wxMessageDialog question(&window_,
                             Wide(what) + "\n\nSave Anyway puts what was changed here into the project as it is now. "
                                          "What both have changed becomes as it is here.",
                             "Tessara", wxYES_NO | wxCANCEL | wxICON_WARNING);
    question.SetYesNoCancelLabels("Save &As...", "Save An&yway", "&Cancel");
    const int answer = question.ShowModal();
    if (answer == wxID_YES)
        return SaveProjectAs();
    return answer == wxID_NO && WriteProject(path, TerrainWork::IfChanged::Merge);
}

bool SaveDesk::WriteProject(const std::string& path, TerrainWork::IfChanged ifChanged)
{
    if (!picture_.MakeCurrent())
        return false;
    std::string changed;
    try {
        const wxBusyCursor wait;
        viewer_.Work().SaveProject(path, ifChanged);
    } catch (const ProjectChanged& error) {
        changed = error.what();
    } catch (const std::exception& error) {
        ShowError(&window_, error.what());
        return false;
    }
    if (!changed.empty())
        return SettleChanges(path, changed);
    watch_.Saved();
    store_.AddRecent(path);
    status_.Tell("Saved " + TerrainName(path));
    return true;
}

void SaveDesk::SaveHeights()
{
    const TerrainDocument& document = viewer_.Document();
    const auto path = AskWhere(&window_, "Save Heights",
                               Proposed(viewer_, document.Path().empty() ? "" : "_edited", "tif"), kHeightFiles);
    if (!path)
        return;
    const wxBusyCursor wait;
    viewer_.Work().SaveHeights(*path);
    status_.Tell("Saved " + TerrainName(*path));
}

void SaveDesk::SavePicture()
{
    const auto size = AskPictureSize(&window_, wxSize(picture_.PixelWidth(), picture_.PixelHeight()));
    if (!size)
        return;
    const auto path = AskWhere(&window_, "Save Picture", Proposed(viewer_, "_view", "png"), kPictureFiles);
    if (!path || !picture_.MakeCurrent())
        return;
    const wxBusyCursor wait;
    viewer_.Picture().Save(*path, size->x, size->y);
    status_.Tell("Saved " + TerrainName(*path));
}

void SaveDesk::Export()
{
    const auto path = AskWhere(&window_, "Export Triangles", Proposed(viewer_, "", "txt"), kMeshFiles);
    if (!path || !picture_.MakeCurrent())
        return;
    const wxBusyCursor wait;
    status_.Tell("Exported " + CountText(viewer_.Picture().ExportTriangles(*path)) + " triangles");
}

}  // namespace tessara

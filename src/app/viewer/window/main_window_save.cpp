#include "app/viewer/picture/view_text.h"
#include "app/viewer/window/main_window.h"
#include "app/viewer/window/picture_dialog.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/window_text.h"

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>
#include <wx/utils.h>

#include <algorithm>

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
wxFileName Proposed(const tessara::Viewer& viewer, const TerrainDocument& document, const char* suffix,
                    const char* ending)
{
    wxFileName name(Wide(viewer.Work().ProjectPath().empty() ? document.Path() : viewer.Work().ProjectPath()));
    if (viewer.Work().ProjectPath().empty() && viewer.Work().IsRecovered())
        name =
            wxFileName(wxString(), Wide(viewer.Work().Element()));  // the file that it comes from is none of the user's
    if (!name.IsOk() || name.GetName().empty())
        name.SetName("sample");
    name.SetName(name.GetName() + suffix);
    name.SetExt(ending);
    return name;
}

}  // namespace

std::string MainWindow::NameOfWork() const
{
    const TerrainWork& work = viewer_->Work();
    if (!work.ProjectPath().empty())
        return TerrainName(work.ProjectPath());
    return work.IsRecovered() ? work.Element() : TerrainName(viewer_->Document().Path());
}

/// \return nothing while no terrain is open
std::optional<WorkState> MainWindow::StateOfWork() const
{
    return viewer_->HasTerrain() ? std::optional(viewer_->Work().State()) : std::nullopt;
}

bool MainWindow::MayLeave()
{
    if (!viewer_ || !viewer_->HasUnsavedWork())
        return true;
    wxMessageDialog question(this, "There are changes of " + Wide(NameOfWork()) + " that aren't saved. Save them?",
                             "Tessara", wxYES_NO | wxCANCEL | wxICON_QUESTION);
    question.SetYesNoCancelLabels("&Save", "&Don't Save", "&Cancel");
    const int answer = question.ShowModal();
    return answer == wxID_YES ? SaveProject(false) : answer == wxID_NO;
}

/// \param elsewhere ask for a name though there is one \return whether the project is saved
bool MainWindow::SaveProject(bool elsewhere)
{
    std::string path = viewer_->Work().ProjectPath();
    if (path.empty() || elsewhere) {
        const auto chosen =
            AskWhere(this, "Save Project", Proposed(*viewer_, viewer_->Document(), "", "tessara"), kProjectFiles);
        if (!chosen)
            return false;
        path = *chosen;
    }
    if (!picture_->MakeCurrent())
        return false;
    const wxBusyCursor wait;
    try {
        viewer_->Work().SaveProject(path);
    } catch (const std::exception& error) {
        ShowError(error.what());
        return false;
    }
    keeper_.Forget();
    kept_.recent.Add(path);
    ShowRecent();
    Tell("Saved " + TerrainName(path));
    return true;
}

void MainWindow::AskAndSaveHeights()
{
    const TerrainDocument& document = viewer_->Document();
    const auto path =
        AskWhere(this, "Save Heights", Proposed(*viewer_, document, document.Path().empty() ? "" : "_edited", "tif"),
                 kHeightFiles);
    if (!path)
        return;
    const wxBusyCursor wait;
    viewer_->Work().SaveHeights(*path);
    Tell("Saved " + TerrainName(*path));
}

void MainWindow::AskAndSavePicture()
{
    const auto size = AskPictureSize(this, wxSize(picture_->PixelWidth(), picture_->PixelHeight()));
    if (!size)
        return;
    const auto path =
        AskWhere(this, "Save Picture", Proposed(*viewer_, viewer_->Document(), "_view", "png"), kPictureFiles);
    if (!path || !picture_->MakeCurrent())
        return;
    const wxBusyCursor wait;
    viewer_->Picture().Save(*path, size->x, size->y);
    Tell("Saved " + TerrainName(*path));
}

void MainWindow::AskAndExport()
{
    const auto path =
        AskWhere(this, "Export Triangles", Proposed(*viewer_, viewer_->Document(), "", "txt"), kMeshFiles);
    if (!path || !picture_->MakeCurrent())
        return;
    const wxBusyCursor wait;
    const std::uint64_t triangles = viewer_->Picture().ExportTriangles(*path);
    Tell("Exported " + CountText(triangles) + " triangles");
}

/// Keeps the work safe while nobody is in the middle of something.
void MainWindow::KeepWork()
{
    if (!viewer_ || !viewer_->HasTerrain() || viewer_->IsCoarse() || picture_->IsBusy() || !picture_->MakeCurrent())
        return;
    try {
        keeper_.Update(viewer_->Work());
    } catch (const std::exception& error) {
        keepTimer_.Stop();
        Tell(std::string("Unsaved work can't be kept safe: ") + error.what());
    }
}

}  // namespace tessara

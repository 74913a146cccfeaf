#include "app/viewer/view_text.h"
#include "app/viewer/window/load_bar.h"
#include "app/viewer/window/main_window.h"
#include "app/viewer/window/map_pane.h"
#include "app/viewer/window/picture_dialog.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/table_dialog.h"
#include "app/viewer/window/window_text.h"
#include "surface/itessara.h"

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/infobar.h>
#include <wx/msgdlg.h>
#include <wx/statusbr.h>
#include <wx/utils.h>

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

constexpr int kWatch = 40;  // milliseconds
constexpr char kElevationFiles[] =
    "Elevation files|*.[tT][iI][fF];*.[tT][iI][fF][fF];*.[hH][gG][tT];*.[aA][sS][cC];*.[dD][eE][mM];*.[pP][nN][gG];"
    "*.[iI][mM][gG];*.[bB][iI][lL];*.[fF][lL][tT];*.[dD][tT][012];*.[gG][rR][dD];*.[nN][cC];*.[vV][rR][tT];*.[xX][yY]["
    "zZ]|"
    "All files|*";
constexpr char kHeightFiles[] = "GeoTIFF (*.tif)|*.tif|ESRI ASCII grid (*.asc)|*.asc|16-bit PNG (*.png)|*.png";
constexpr char kMeshFiles[] =
    "Text, one vertex a line (*.txt)|*.txt|Wavefront OBJ (*.obj)|*.obj|PLY (*.ply)|*.ply|STL (*.stl)|*.stl";

/// Asks where to write. A name without an ending gets the one of the chosen kind.
/// \return nothing when the user doesn't want to
std::optional<std::string> AskWhere(wxWindow* parent, const char* title, const wxString& folder, const wxString& name,
                                    const char* kinds)
{
    wxFileDialog dialog(parent, title, folder, name, kinds, wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (dialog.ShowModal() != wxID_OK)
        return std::nullopt;
    wxFileName path(dialog.GetPath());
    if (!path.HasExt()) {
        const wxArrayString parts = wxSplit(kinds, '|');
        path.SetExt(parts[static_cast<std::size_t>(2 * std::max(dialog.GetFilterIndex(), 0) + 1)].AfterLast('.'));
    }
    return path.GetFullPath().utf8_string();
}

}  // namespace

void MainWindow::ShowError(const std::string& message)
{
    wxMessageBox(Wide(message), "Tessara", wxOK | wxICON_ERROR, this);
}

void MainWindow::Tell(const std::string& message)
{
    SetStatusText(Wide(message));
}

void MainWindow::AskAndOpen()
{
    const wxString folder =
        kept_.recent.Paths().empty() ? wxString() : wxFileName(Wide(kept_.recent.Paths().front())).GetPath();
    wxFileDialog dialog(this, "Open an Elevation File", folder, wxEmptyString, kElevationFiles,
                        wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog.ShowModal() == wxID_OK)
        Load(dialog.GetPath().utf8_string());
}

void MainWindow::Load(const std::string& path)
{
    if (!viewer_ || !MayLeave())
        return;
    std::string full;
    if (!path.empty()) {
        wxFileName name(Wide(path));
        name.MakeAbsolute();
        full = name.GetFullPath().utf8_string();
    }
    loader_ = nullptr;
    picture_->SetFlying(false);
    const ViewSettings& settings = viewer_->Settings();
    loading_ = full;
    loader_ = std::make_unique<TerrainLoader>(
        TerrainRequest{.path = full,
                       .reading = request_.reading,
                       .exaggeration = settings.exaggeration,
                       .sun = SunlitAtmosphere(settings.sunAzimuth, settings.sunHeight).sunDirection});
    bar_->Begin(full.empty() ? "Making the sample" : "Reading " + TerrainName(full), [this] {
        if (loader_)
            loader_->Cancel();
    });
    loadTimer_.Start(kWatch);
}

void MainWindow::WatchLoader()
{
    if (!loader_) {
        loadTimer_.Stop();
        return;
    }
    bar_->Step(loader_->Fraction());
    if (!loader_->IsDone())
        return;
    loadTimer_.Stop();
    const std::unique_ptr<TerrainLoader> done = std::move(loader_);
    bar_->End();
    try {
        if (auto terrain = done->Take())
            Opened(std::move(*terrain));
        else
            Tell("Cancelled");
    } catch (const std::bad_alloc&) {
        ShowError("There is not enough memory to open " + (loading_.empty() ? "the sample" : loading_) + ".");
    } catch (const std::exception& error) {
        kept_.recent.Remove(loading_);
        ShowRecent();
        ShowError(error.what());
    }
    Changed({true, true, true});
}

void MainWindow::Opened(OpenedTerrain terrain)
{
    if (!picture_->MakeCurrent())
        return;
    const wxBusyCursor wait;
    std::string notes;
    for (const std::string& note : terrain.data.notes)
        notes += (notes.empty() ? "" : "  ") + note;
    viewer_->Open(std::move(terrain));
    hasSource_ = false;
    const GroundFrame& ground = viewer_->Document().Session().Ground();
    const double across = std::max(ground.Width(), ground.Depth());
    sculptPage_->SetTerrainSize(across);
    Change([across](ViewSettings& settings) {
        settings.brush.radius = std::clamp(settings.brush.radius, across * 0.002, across * 0.25);
    });
    if (!loading_.empty()) {
        kept_.recent.Add(loading_);
        ShowRecent();
    }
    if (notes.empty())
        notes_->Dismiss();
    else
        notes_->ShowMessage(Wide(notes), wxICON_INFORMATION);
    Tell({});
    picture_->SetFocus();
}

bool MainWindow::MayLeave()
{
    if (!viewer_ || !viewer_->HasTerrain() || !viewer_->Document().IsModified())
        return true;
    wxMessageDialog question(
        this, "The heights of " + Wide(TerrainName(viewer_->Document().Path())) + " have been changed. Save them?",
        "Tessara", wxYES_NO | wxCANCEL | wxICON_QUESTION);
    question.SetYesNoCancelLabels("&Save...", "&Don't Save", "&Cancel");
    const int answer = question.ShowModal();
    return answer == wxID_YES ? AskAndSaveHeights() : answer == wxID_NO;
}

/// \return whether the heights are saved
bool MainWindow::AskAndSaveHeights()
{
    TerrainDocument& document = viewer_->Document();
    const wxFileName source(Wide(document.Path()));
    const wxString name = document.Path().empty() ? wxString("sample.tif") : source.GetName() + "_edited.tif";
    const auto path = AskWhere(this, "Save Heights", source.GetPath(), name, kHeightFiles);
    if (!path)
        return false;
    const wxBusyCursor wait;
    try {
        document.Save(*path);
    } catch (const std::exception& error) {
        ShowError(error.what());
        return false;
    }
    Tell("Saved " + TerrainName(*path));
    return true;
}

void MainWindow::AskAndSavePicture()
{
    const auto size = AskPictureSize(this, wxSize(picture_->PixelWidth(), picture_->PixelHeight()));
    if (!size)
        return;
    const wxString name = wxFileName(Wide(TerrainName(viewer_->Document().Path()))).GetName().Lower() + ".png";
    const auto path = AskWhere(this, "Save Picture", wxEmptyString, name, "PNG picture (*.png)|*.png");
    if (!path || !picture_->MakeCurrent())
        return;
    const wxBusyCursor wait;
    viewer_->SavePicture(*path, size->x, size->y);
    Tell("Saved " + TerrainName(*path));
}

void MainWindow::AskAndExport()
{
    const wxString name = wxFileName(Wide(TerrainName(viewer_->Document().Path()))).GetName().Lower() + ".txt";
    const auto path = AskWhere(this, "Export Triangles", wxEmptyString, name, kMeshFiles);
    if (!path || !picture_->MakeCurrent())
        return;
    const wxBusyCursor wait;
    const std::uint64_t triangles = viewer_->ExportTriangles(*path);
    Tell("Exported " + CountText(triangles) + " triangles");
}

/// The surface asks for the file, and tells what is wrong with it.
void MainWindow::ImportSource()
{
    if (!viewer_->HasTerrain())
        return;
    const bool imported = SUCCEEDED(viewer_->Document().Session().Surface().ImportTextureSource(nullptr));
    if (!picture_->MakeCurrent())
        return;
    if (imported) {
        hasSource_ = true;
        Change([](ViewSettings& settings) { settings.sourceTexture = true; });
    }
    Changed({true, false, true});
}

void MainWindow::OpenDetailDialog()
{
    if (!viewer_->HasTerrain())
        return;
    const HRESULT result = viewer_->Document().Session().Surface().TextureDetailDlg();
    if (FAILED(result))
        ShowError("The dialog for detail textures couldn't be opened.");
    Changed({true, false, true});
}

void MainWindow::ShowInformation()
{
    const TerrainDocument& document = viewer_->Document();
    const ElevationData& data = document.Data();
    const auto size = [](int width, int height) { return std::to_string(width) + " × " + std::to_string(height); };
    std::vector<TableRow> rows = {
        {"File", document.Path().empty() ? "The built-in sample" : document.Path()},
        {"Grid",
         size(data.width, data.height) + " heights" +
             (data.sourceWidth > data.width ? ", reduced from " + size(data.sourceWidth, data.sourceHeight) : "")},
        {"Size", LengthText((data.width - 1) * data.spacingX) + " × " + LengthText((data.height - 1) * data.spacingY)},
        {"Spacing", LengthText(data.spacingX) + " × " + LengthText(data.spacingY)},
        {"Heights",
         HeightText(static_cast<double>(data.minimum)) + " to " + HeightText(static_cast<double>(data.maximum))},
    };
    if (!data.referenceSystem.empty())
        rows.push_back({"Reference", data.referenceSystem});
    if (!data.format.empty())
        rows.push_back({"Format", data.format});
    for (const std::string& note : data.notes)
        rows.push_back({"Note", note});
    ShowTable(this, "Terrain Information", rows);
}

}  // namespace tessara

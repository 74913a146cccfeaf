#include "app/view/saved_textures.h"
#include "app/viewer/window/load_bar.h"
#include "app/viewer/window/main_window.h"
#include "app/viewer/window/pages/sculpt_page.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/window_text.h"
#include "app/viewer/work/setting_table.h"
#include "host/project/project_file.h"
#include "surface/itessara.h"

#include <wx/choicdlg.h>
#include <wx/datetime.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/infobar.h>
#include <wx/msgdlg.h>
#include <wx/utils.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tessara {

namespace {

constexpr int kWatch = 40;  // milliseconds
constexpr char kFiles[] =
    "Projects and elevation files|*.tessara;*.[tT][iI][fF];*.[tT][iI][fF][fF];*.[hH][gG][tT];*.[aA][sS][cC];"
    "*.[dD][eE][mM];*.[pP][nN][gG];*.[iI][mM][gG];*.[bB][iI][lL];*.[fF][lL][tT];*.[dD][tT][012];*.[gG][rR][dD];"
    "*.[nN][cC];*.[vV][rR][tT];*.[xX][yY][zZ]|Tessara projects (*.tessara)|*.tessara|All files|*";

}  // namespace

void MainWindow::AskAndOpen()
{
    const wxString folder =
        kept_.recent.Paths().empty() ? wxString() : wxFileName(Wide(kept_.recent.Paths().front())).GetPath();
    wxFileDialog dialog(this, "Open", folder, wxEmptyString, kFiles, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog.ShowModal() == wxID_OK)
        Load(dialog.GetPath().utf8_string());
}

/// \return nothing when the user doesn't choose one
std::optional<std::string> MainWindow::ChooseTerrain(const std::string& project)
{
    const ProjectFile file(project);
    if (file.Elements().size() < 2)
        return std::string();
    wxArrayString names;
    for (const std::string& name : file.Elements())
        names.Add(Wide(name));
    wxSingleChoiceDialog dialog(this, Wide(TerrainName(project)) + " holds several terrains.", "Open a Terrain", names);
    if (dialog.ShowModal() != wxID_OK)
        return std::nullopt;
    return file.Elements()[static_cast<std::size_t>(dialog.GetSelection())];
}

void MainWindow::Load(const std::string& path)
{
    Load(path, {});
}

void MainWindow::Load(const std::string& path, const std::string& element)
{
    if (!viewer_ || !MayLeave())
        return;
    TerrainRequest terrain{.path = {}, .element = element, .reading = request_.reading};
    if (!path.empty()) {
        wxFileName name(Wide(path));
        name.MakeAbsolute();
        terrain.path = name.GetFullPath().utf8_string();
    }
    try {
        if (element.empty() && !terrain.path.empty() && IsProjectFile(terrain.path)) {
            const auto chosen = ChooseTerrain(terrain.path);
            if (!chosen)
                return;
            terrain.element = *chosen;
        }
    } catch (const std::exception& error) {
        ShowError(error.what());
        return;
    }
    Begin(std::move(terrain));
}

void MainWindow::Begin(TerrainRequest terrain)
{
    loader_ = nullptr;
    picture_->SetFlying(false);
    terrain.settings = viewer_->Settings();
    terrain.size = {picture_->PixelWidth(), picture_->PixelHeight()};
    loading_ = terrain.recoveredFor.value_or(terrain.path);
    left_ = StateOfWork();
    const std::string title = terrain.recoveredFor ? "Recovering the unsaved work"
                              : loading_.empty()   ? "Making the sample"
                                                   : "Reading " + TerrainName(loading_);
    loader_ = std::make_unique<TerrainLoader>(std::move(terrain));
    bar_->Begin(title, [this] {
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
    // A command with a dialog on the screen works on the old terrain.
    if (running_ > 0)
        return;
    if (!loader_->IsDone()) {
        ShowCoarse();
        return;
    }
    loadTimer_.Stop();
    const std::unique_ptr<TerrainLoader> done = std::move(loader_);
    bar_->End();
    try {
        auto terrain = done->Take();
        // What was done to the old terrain meanwhile has its own question.
        if (terrain && (viewer_->IsCoarse() || StateOfWork() == left_ || MayLeave()))
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
    recovery_.reset();
    if (picture_->MakeCurrent())
        viewer_->GiveUp();
    // A window without any terrain is of no use.
    if (!viewer_->HasTerrain() && !loading_.empty())
        Load({});
    Changed({true, true, true});
}

/// A first look at a large terrain, unless something was done to the old one meanwhile: that has its question later.
void MainWindow::ShowCoarse()
{
    if (StateOfWork() != left_ || !picture_->MakeCurrent())
        return;
    try {
        if (auto coarse = loader_->TakeCoarse()) {
            picture_->SetFlying(false);
            picture_->SetBrush(false);
            viewer_->ShowCoarse(std::move(*coarse));
        }
    } catch (const std::exception&) {
        // The terrain itself will come, or say what is wrong.
    }
}

void MainWindow::Opened(OpenedTerrain terrain)
{
    if (!picture_->MakeCurrent())
        return;
    const wxBusyCursor wait;
    std::string notes;
    for (const std::string& note : terrain.document->Data().notes)
        notes += (notes.empty() ? "" : "  ") + note;
    viewer_->Open(std::move(terrain));
    keeper_.Forget();
    if (recovery_)
        keeper_.Adopt(std::move(*recovery_));
    hasSource_ = HasSource(viewer_->Document().Session().Surface());
    const GroundFrame& ground = viewer_->Document().Session().Ground();
    const double across = std::max(ground.Width(), ground.Depth());
    sculptPage_->SetTerrainSize(across);
    Change([radii = BrushRadii(across)](ViewSettings& settings) {
        settings.brush.radius = radii.Nearest(settings.brush.radius);
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

/// Offers what a program that ended without being asked has left. \return whether work is being recovered
bool MainWindow::OfferRecovery()
{
    for (Recovery& each : FindRecoveries()) {
        const wxDateTime time(std::chrono::system_clock::to_time_t(each.Time()));
        const ProjectFile work(each.Path());
        const std::string terrain = KeptTerrain(work);
        const wxString subject = Wide(each.ProjectPath().empty() ? terrain : each.ProjectPath());
        wxMessageDialog question(this,
                                 "The viewer ended unexpectedly. Recover the unsaved work on " + subject +
                                     ", kept on " + time.FormatISODate() + " at " + time.FormatISOTime() + "?",
                                 "Tessara", wxYES_NO | wxCANCEL | wxICON_QUESTION);
        question.SetYesNoCancelLabels("&Recover", "&Discard", "&Later");
        const int answer = question.ShowModal();
        if (answer == wxID_NO)
            each.Discard();
        if (answer != wxID_YES)
            continue;
        TerrainRequest request{.path = each.Path(), .element = terrain, .recoveredFor = each.ProjectPath()};
        recovery_ = std::move(each);
        Begin(std::move(request));
        return true;
    }
    return false;
}

}  // namespace tessara

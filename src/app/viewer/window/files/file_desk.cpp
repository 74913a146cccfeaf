#include "app/viewer/window/files/file_desk.h"

#include "app/viewer/viewer.h"
#include "app/viewer/window/dialogs/messages.h"
#include "app/viewer/window/files/save_desk.h"
#include "app/viewer/window/files/settings_store.h"
#include "app/viewer/window/files/work_watch.h"
#include "app/viewer/window/panes/load_bar.h"
#include "app/viewer/window/panes/note_bar.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/panes/status_line.h"
#include "app/viewer/window/panes/window_panes.h"
#include "app/viewer/window/window_text.h"
#include "host/project/project_file.h"

#include <wx/choicdlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/utils.h>

#include <optional>
#include <utility>

namespace tessara {

namespace {

constexpr int kWatch = 40;  // milliseconds
constexpr char kFiles[] =
    "Projects and elevation files|*.tessara;*.[tT][iI][fF];*.[tT][iI][fF][fF];*.[hH][gG][tT];*.[aA][sS][cC];"
    "*.[dD][eE][mM];*.[pP][nN][gG];*.[iI][mM][gG];*.[bB][iI][lL];*.[fF][lL][tT];*.[dD][tT][012];*.[gG][rR][dD];"
    "*.[nN][cC];*.[vV][rR][tT];*.[xX][yY][zZ]|Tessara projects (*.tessara)|*.tessara|All files|*";

/// \return nothing when the user doesn't choose one
std::optional<std::string> ChooseTerrain(wxWindow& window, const std::string& project)
{
    const ProjectFile file(project);
    if (file.Elements().size() < 2)
        return std::string();
    wxArrayString names;
    for (const std::string& name : file.Elements())
        names.Add(Wide(name));
    wxSingleChoiceDialog dialog(&window, Wide(TerrainName(project)) + " holds several terrains.", "Open a Terrain",
                                names);
    if (dialog.ShowModal() != wxID_OK)
        return std::nullopt;
    return file.Elements()[static_cast<std::size_t>(dialog.GetSelection())];
}

std::string AbsolutePath(const std::string& path)
{
    if (path.empty())
        return path;
    wxFileName name(Wide(path));
    name.MakeAbsolute();
    return name.GetFullPath().utf8_string();
}

std::string TitleFor(const TerrainRequest& terrain)
{
    if (terrain.recoveredFor)
        return "Recovering the unsaved work";
    return terrain.path.empty() ? "Making the sample" : "Reading " + TerrainName(terrain.path);
}

}  // namespace

FileDesk::FileDesk(const Neighbours& neighbours, ElevationReadOptions reading, Listener listener)
    : to_(neighbours), reading_(std::move(reading)), listener_(std::move(listener))
{
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { WatchLoader(); });
}

void FileDesk::Start(const std::string& path, const std::string& element)
{
    if (auto recovered = to_.watch.Start())
        Begin(std::move(*recovered));
    else
        Load(path, element);
}

void FileDesk::AskAndOpen()
{
    const wxString folder =
        to_.store.Recent().empty() ? wxString() : wxFileName(Wide(to_.store.Recent().front())).GetPath();
    wxFileDialog dialog(&to_.window, "Open", folder, wxEmptyString, kFiles, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog.ShowModal() == wxID_OK)
        Load(dialog.GetPath().utf8_string());
}

void FileDesk::LoadRecent(std::size_t index)
{
    if (index < to_.store.Recent().size())
        Load(std::string(to_.store.Recent()[index]));
}

void FileDesk::Load(const std::string& path, const std::string& element)
{
    if (!to_.saves.MayLeave())
        return;
    TerrainRequest terrain{.path = AbsolutePath(path), .element = element, .reading = reading_};
    try {
        if (element.empty() && !terrain.path.empty() && IsProjectFile(terrain.path)) {
            const auto chosen = ChooseTerrain(to_.window, terrain.path);
            if (!chosen)
                return;
            terrain.element = *chosen;
        }
    } catch (const std::exception& error) {
        ShowError(&to_.window, error.what());
        return;
    }
    Begin(std::move(terrain));
}

/// A loader that is in the middle of a long step ends it before it notices: nobody waits for that.
void FileDesk::DropLoader()
{
    if (!loader_)
        return;
    loader_->Cancel();
    leaving_.push_back(std::move(loader_));
}

void FileDesk::Begin(TerrainRequest terrain)
{
    DropLoader();
    to_.panes.Picture().SetFlying(false);
    terrain.settings = to_.viewer.Settings();
    terrain.size = {to_.panes.Picture().PixelWidth(), to_.panes.Picture().PixelHeight()};
    loading_ = terrain.recoveredFor.value_or(terrain.path);
    recovering_ = terrain.recoveredFor.has_value();
    left_ = StateOfWork();
    to_.panes.Progress().Begin(TitleFor(terrain), [this] { Cancel(); });
    loader_ = std::make_unique<TerrainLoader>(std::move(terrain));
    timer_.Start(kWatch);
}

void FileDesk::Cancel()
{
    if (loader_)
        loader_->Cancel();
}

void FileDesk::WatchLoader()
{
    std::erase_if(leaving_, [](const auto& loader) { return loader->IsDone(); });
    if (!loader_) {
        if (leaving_.empty())
            timer_.Stop();
        return;
    }
    to_.panes.Progress().Step(loader_->Fraction());
    // A command with a dialog on the screen works on the old terrain.
    if (listener_.isBusy())
        return;
    if (!loader_->IsDone()) {
        ShowCoarse();
        return;
    }
    const std::unique_ptr<TerrainLoader> done = std::move(loader_);
    to_.panes.Progress().End();
    try {
        auto terrain = done->Take();
        // What was done to the old terrain meanwhile has its own question.
        if (terrain && (to_.viewer.IsCoarse() || StateOfWork() == left_ || to_.saves.MayLeave()))
            Open(std::move(*terrain));
        else
            to_.status.Tell("Cancelled");
    } catch (const std::bad_alloc&) {
        ShowError(&to_.window,
                  "There is not enough memory to open " + (loading_.empty() ? "the sample" : loading_) + ".");
    } catch (const std::exception& error) {
        to_.store.RemoveRecent(loading_);
        ShowError(&to_.window, error.what());
    }
    if (to_.panes.Picture().MakeCurrent())
        to_.viewer.GiveUp();
    // A window without a terrain is useless.
    if (!to_.viewer.HasTerrain() && !loading_.empty())
        Load({});
    listener_.changed();
}

void FileDesk::ShowCoarse()
{
    PicturePane& picture = to_.panes.Picture();
    if (StateOfWork() != left_ || !picture.MakeCurrent())
        return;
    try {
        if (auto coarse = loader_->TakeCoarse()) {
            picture.SetFlying(false);
            picture.SetBrush(false);
            to_.viewer.ShowCoarse(std::move(*coarse));
        }
    } catch (const std::exception&) {
        // The terrain itself will come, or say what is wrong.
    }
}

std::optional<WorkState> FileDesk::StateOfWork() const
{
    return to_.viewer.HasTerrain() ? std::optional(to_.viewer.Work().State()) : std::nullopt;
}

void FileDesk::Open(OpenedTerrain terrain)
{
    if (!to_.panes.Picture().MakeCurrent())
        return;
    const wxBusyCursor wait;
    std::string notes;
    for (const std::string& note : terrain.document->Data().notes)
        notes += (notes.empty() ? "" : "  ") + note;
    to_.viewer.Open(std::move(terrain));
    to_.watch.Opened(recovering_);
    listener_.opened();
    if (!loading_.empty())
        to_.store.AddRecent(loading_);
    to_.panes.Notes().Tell(notes);
    to_.status.Tell({});
    to_.panes.Picture().SetFocus();
}

}  // namespace tessara

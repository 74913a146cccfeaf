#include "app/viewer/window/main_window.h"

#include "app/viewer/window/commands/command.h"
#include "app/viewer/window/commands/window_keys.h"
#include "app/viewer/window/dialogs/messages.h"
#include "app/viewer/window/pages/settings_book.h"
#include "app/viewer/window/panes/legend_pane.h"
#include "app/viewer/window/panes/map_pane.h"
#include "app/viewer/window/panes/viewer_stage.h"
#include "app/viewer/window/panes/window_panes.h"
#include "app/viewer/window/window_text.h"
#include "app/viewer/window/workbench.h"

#include <gtk/gtk.h>
#include <wx/display.h>
#include <wx/dnd.h>
#include <wx/splitter.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace tessara {

namespace {

/// Files that are dropped on the window.
class FileTarget final : public wxFileDropTarget {
public:
    explicit FileTarget(MainWindow& window) : window_(window) {}

    bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& paths) override
    {
        if (paths.empty())
            return false;
        const std::string path = paths[0].utf8_string();
        // The desktop waits for the answer.
        window_.CallAfter([&window = window_, path] { window.Load(path); });
        return true;
    }

private:
    MainWindow& window_;
};

KeptSettings WithRequest(KeptSettings kept, const ViewRequest& request)
{
    if (request.exaggeration > 0.0)
        kept.view.exaggeration = request.exaggeration;
    return kept;
}

}  // namespace

MainWindow::MainWindow(const ViewRequest& request, const KeptSettings& kept)
    : wxFrame(nullptr, wxID_ANY, "Tessara"),
      request_(request),
      store_(WithRequest(kept, request)),
      menus_(*this),
      status_(*this),
      panes_(MakePanes())
{
    Place();
    BindEvents();
    menus_.ShowRecent(store_.Recent());
}

MainWindow::~MainWindow() = default;

WindowPanes* MainWindow::MakePanes()
{
    const SettingsListener settings = {[this](const auto& change) {
                                           if (bench_)
                                               bench_->settings.Change(change);
                                       },
                                       [this](int command) { Run(command); },
                                       [this](double low, double high) {
                                           if (bench_)
                                               bench_->settings.SetColors(low, high);
                                       },
                                       [this] {
                                           if (bench_)
                                               bench_->settings.ResetColors();
                                       }};
    return new WindowPanes(this,
                           {[this] {
                                if (bench_)
                                    status_.ShowPlace(bench_->viewer);
                            },
                            [this] { ShowFrame(); }, [this] { RequestState(); }},
                           settings);
}

/// Puts the window where it stood last time, unless that place is off today's screens.
void MainWindow::Place()
{
    const WindowPlace& place = store_.Kept().window;
    SetMinSize(FromDIP(wxSize(560, 420)));
    const wxRect screen = wxDisplay(static_cast<unsigned>(0)).GetClientArea();
    SetSize(std::min(place.width, screen.width), std::min(place.height, screen.height));
    const wxPoint corner(place.x, place.y);
    if (place.x >= 0 && place.y >= 0 && wxDisplay::GetFromPoint(corner) != wxNOT_FOUND)
        SetPosition(corner);
    if (place.maximised)
        Maximize();
    panes_->Arrange(place);
}

void MainWindow::BindEvents()
{
    store_.Listen({[this] { Keep(); }, [this] { menus_.ShowRecent(store_.Recent()); }});
    const auto changed = [this](wxEvent& event) {
        store_.Changed();
        event.Skip();
    };
    Bind(wxEVT_MOVE, changed);
    Bind(wxEVT_SIZE, changed);
    Bind(wxEVT_SPLITTER_SASH_POS_CHANGED, changed);
    Bind(wxEVT_CLOSE_WINDOW, &MainWindow::OnClose, this);
    Bind(wxEVT_CHAR_HOOK, &MainWindow::OnKey, this);
    // A bar that was closed or a pane that was hidden leaves the keyboard nowhere, and then no key would act.
    Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
        event.Skip();
        if (!gtk_window_get_focus(GTK_WINDOW(GetHandle())))
            panes_->Picture().SetFocus();
    });
    Bind(
        wxEVT_MENU, [this](wxCommandEvent& event) { Run(event.GetId()); }, kOpen, kRecentEnd);
    SetDropTarget(new FileTarget(*this));
    // OpenGL can be started when the pane is on the screen.
    panes_->Picture().Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
        event.Skip();
        if (!stage_ && !failed_)
            CallAfter([this] { Start(); });
    });
}

void MainWindow::Start()
{
    if (stage_ || failed_)
        return;
    try {
        stage_ = std::make_unique<ViewerStage>(*this, *panes_, store_.Kept().view,
                                               [this](const ViewerChange& change) { Changed(change); });
    } catch (const std::runtime_error& error) {
        failed_ = true;
        ShowError(this, error.what());
        Close(true);
        return;
    }
    bench_ = std::make_unique<Workbench>(
        *this, stage_->Viewer(), *panes_, status_, store_, request_, [this] { return running_ > 0; },
        [this] { RequestState(); });
    ShowState();
    menus_.Show();
    panes_->Picture().SetFocus();
    bench_->files.Start(request_.file, request_.element);
}

void MainWindow::OnClose(wxCloseEvent& event)
{
    if (event.CanVeto() && bench_ && !bench_->saves.MayLeave()) {
        event.Veto();
        return;
    }
    panes_->Picture().SetFlying(false);
    if (!failed_)
        store_.Write();
    Destroy();
}

/// Remembers what the next start needs.
void MainWindow::Keep()
{
    WindowPlace place = store_.Kept().window;
    place.maximised = IsMaximized();
    if (!IsMaximized() && !IsFullScreen() && !IsIconized()) {
        place.x = std::max(GetPosition().x, 0);
        place.y = std::max(GetPosition().y, 0);
        place.width = GetSize().x;
        place.height = GetSize().y;
    }
    panes_->Keep(place);
    store_.Keep(place);
    if (bench_)
        store_.Keep(bench_->viewer.Settings());
}

void MainWindow::OnKey(wxKeyEvent& event)
{
    const KeyMeaning meaning = bench_ ? HandleKey(*bench_, event) : KeyMeaning();
    if (!meaning.done)
        event.Skip();
    else if (meaning.command != 0)
        Run(meaning.command);
}

void MainWindow::Run(int command)
{
    ++running_;
    try {
        Do(command);
    } catch (const std::bad_alloc&) {
        ShowError(this, "There is not enough memory.");
    } catch (const std::exception& error) {
        ShowError(this, error.what());
    }
    --running_;
    RequestState();
}

void MainWindow::Do(int id)
{
    // Whatever draws needs the context.
    if (!bench_ || !panes_->Picture().MakeCurrent())
        return;
    const Command* const command = FindCommand(id);
    if (command && command->run && command->IsEnabled(*bench_))
        command->run(*bench_);
    else if (id == kClearRecent)
        store_.ClearRecent();
    else if (id > kRecent && id < kRecentEnd)
        bench_->files.LoadRecent(static_cast<std::size_t>(id - kRecent - 1));
}

void MainWindow::Load(const std::string& path)
{
    if (bench_)
        bench_->files.Load(path);
}

bool MainWindow::IsLoading() const noexcept
{
    return bench_ && bench_->files.IsLoading();
}

tessara::Viewer* MainWindow::GetViewer() const noexcept
{
    return bench_ ? &bench_->viewer : nullptr;
}

PicturePane& MainWindow::Picture() const noexcept
{
    return panes_->Picture();
}

MapPane& MainWindow::Map() const noexcept
{
    return panes_->Map();
}

void MainWindow::Changed(const ViewerChange& change)
{
    if (change.picture)
        panes_->Picture().RequestDraw();
    else if (change.brush)
        panes_->Picture().RequestBrush();
    if (change.map)
        panes_->Map().RequestDraw();
    if (change.state)
        RequestState();
}

void MainWindow::RequestState()
{
    if (std::exchange(stateRequested_, true))
        return;
    CallAfter([this] {
        stateRequested_ = false;
        ShowState();
    });
}

void MainWindow::ShowState()
{
    if (!bench_)
        return;
    tessara::Viewer& viewer = bench_->viewer;
    panes_->Settings().ShowState(viewer, bench_->picture, bench_->textures.HasSource());
    menus_.ShowState(*bench_);
    store_.Changed();
    wxString title = "Tessara";
    if (viewer.HasTerrain()) {
        panes_->Legend().Show(viewer.Colors());
        title = Wide(bench_->saves.NameOfWork()) + Wide(viewer.HasUnsavedWork() ? "* – " : " – ") + title;
    }
    if (GetTitle() != title)
        SetTitle(title);
}

void MainWindow::ShowFrame()
{
    if (!bench_)
        return;
    status_.ShowFigures(bench_->viewer, bench_->picture);
    panes_->Settings().ShowFigures(bench_->viewer, bench_->picture);
}

}  // namespace tessara

#include "app/viewer/window/main_window.h"

#include "app/viewer/window/legend_pane.h"
#include "app/viewer/window/load_bar.h"
#include "app/viewer/window/map_pane.h"
#include "app/viewer/window/pages/colors_page.h"
#include "app/viewer/window/pages/debug_page.h"
#include "app/viewer/window/pages/sculpt_page.h"
#include "app/viewer/window/pages/view_page.h"
#include "app/viewer/window/pane_splitter.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/settings_file.h"
#include "app/viewer/window/smooth_frame.h"
#include "app/viewer/window/status_progress.h"
#include "app/viewer/window/status_texts.h"
#include "app/viewer/window/text_textures.h"
#include "app/viewer/window/window_commands.h"
#include "app/viewer/window/window_text.h"
#include "host/kvo_host.h"
#include "host/textures/texture_service.h"
#include "platform/gl/entry_point.h"

#include <wx/display.h>
#include <wx/dnd.h>
#include <wx/infobar.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/statusbr.h>

#include <algorithm>

namespace tessara {

namespace {

constexpr int kLeastSide = 250;
constexpr int kLeastMap = 110;

/// A small window keeps room for the terrain and for the settings.
constexpr double kMostSide = 0.4;
constexpr double kMostMap = 0.42;
constexpr int kKeepEvery = 60000;  // milliseconds

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

}  // namespace

MainWindow::MainWindow(const ViewRequest& request, const KeptSettings& kept)
    : wxFrame(nullptr, wxID_ANY, "Tessara"), request_(request), kept_(kept)
{
    if (request.exaggeration > 0.0)
        kept_.view.exaggeration = request.exaggeration;
    SetMenuBar(MakeMenuBar());
    GetMenuBar()->Hide();  // a window that is being shown passes through sizes that are too small for it
    MakePanes();
    MakeStatus();
    Place();
    BindEvents();
    ShowRecent();
}

MainWindow::~MainWindow()
{
    loadTimer_.Stop();
    keepTimer_.Stop();
    loader_ = nullptr;
    if (progress_)
        progress_->Detach();
    if (context_ && picture_->MakeCurrent()) {
        // Textures go while their context is still there.
        picture_->Show(nullptr, nullptr, nullptr);
        map_->Show(nullptr, nullptr);
        smooth_ = nullptr;
        text_ = nullptr;
        viewer_ = nullptr;
    }
    picture_->SetContext(nullptr);
    map_->SetContext(nullptr);
}

void MainWindow::MakePanes()
{
    root_ = new wxPanel(this);
    auto* column = new wxBoxSizer(wxVERTICAL);
    notes_ = new wxInfoBar(root_);
    panes_ = new PaneSplitter(root_, kMostSide);
    bar_ = new LoadBar(root_);
    column->Add(notes_, wxSizerFlags().Expand());
    column->Add(panes_, wxSizerFlags(1).Expand());
    column->Add(bar_, wxSizerFlags().Expand());
    root_->SetSizer(column);

    picture_ = new PicturePane(panes_, {[this] {
                                            if (viewer_)
                                                texts_->ShowPlace(*viewer_);
                                        },
                                        [this] { ShowFrame(); },
                                        [this] {
                                            Changed({false, false, true});
                                        }});
    side_ = new PaneSplitter(panes_, kMostMap);
    pages_ = new wxNotebook(side_, wxID_ANY);
    const SettingsListener listener = MakeListener();
    pages_->AddPage(viewPage_ = new ViewPage(pages_, listener), "View");
    pages_->AddPage(colorsPage_ = new ColorsPage(pages_, listener), "Colours");
    pages_->AddPage(sculptPage_ = new SculptPage(pages_, listener), "Sculpt");
    pages_->AddPage(debugPage_ = new DebugPage(pages_, listener), "Debug");

    mapPanel_ = new wxPanel(side_);
    auto* mapColumn = new wxBoxSizer(wxVERTICAL);
    map_ = new MapPane(mapPanel_);
    legend_ = new LegendPane(mapPanel_);
    mapColumn->Add(map_, wxSizerFlags(1).Expand());
    mapColumn->Add(legend_, wxSizerFlags().Expand());
    mapPanel_->SetSizer(mapColumn);
}

void MainWindow::MakeStatus()
{
    wxStatusBar* status = CreateStatusBar(4, wxSTB_ELLIPSIZE_END | wxSTB_SHOW_TIPS);
    texts_ = std::make_unique<StatusTexts>(*status);
    status->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        texts_->Fit();
        event.Skip();
    });
}

/// Puts the window where it stood the last time, as far as that is on a screen of today.
void MainWindow::Place()
{
    const WindowPlace& place = kept_.window;
    SetMinSize(FromDIP(wxSize(560, 420)));
    const wxRect screen = wxDisplay(static_cast<unsigned>(0)).GetClientArea();
    SetSize(std::min(place.width, screen.width), std::min(place.height, screen.height));
    const wxPoint corner(place.x, place.y);
    if (place.x >= 0 && place.y >= 0 && wxDisplay::GetFromPoint(corner) != wxNOT_FOUND)
        SetPosition(corner);
    if (place.maximised)
        Maximize();
    int least = FromDIP(kLeastSide);
    for (std::size_t i = 0; i < pages_->GetPageCount(); ++i)
        least = std::max(least, static_cast<SettingsPage*>(pages_->GetPage(i))->LeastWidth());
    panes_->SetMinimumPaneSize(least);
    side_->SetMinimumPaneSize(FromDIP(kLeastMap));
    panes_->Show(wxSPLIT_VERTICAL, picture_, side_, place.sideWidth);
    side_->Show(wxSPLIT_HORIZONTAL, pages_, mapPanel_, place.mapHeight);
    SetMapShown(place.mapShown);
    SetSideShown(place.sideShown);
}

void MainWindow::BindEvents()
{
    Bind(wxEVT_CLOSE_WINDOW, &MainWindow::OnClose, this);
    Bind(wxEVT_CHAR_HOOK, &MainWindow::OnKey, this);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent& event) { Run(event.GetId()); }, kOpen, kRecentEnd);
    keepTimer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { KeepWork(); });
    loadTimer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { WatchLoader(); });
    SetDropTarget(new FileTarget(*this));
    // OpenGL can be started when the pane is on the screen.
    picture_->Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
        event.Skip();
        if (!viewer_ && !failed_)
            CallAfter([this] { Start(); });
    });
}

void MainWindow::Start()
{
    if (viewer_ || failed_)
        return;
    if (!StartDrawing()) {
        failed_ = true;
        Close(true);
        return;
    }
    GetMenuBar()->Show();
    picture_->SetFocus();
    keepTimer_.Start(kKeepEvery);
    if (!OfferRecovery())
        Load(request_.file, request_.element);
}

bool MainWindow::StartDrawing()
{
    context_ = picture_->MakeContext();
    if (!context_) {
        ShowError("The viewer needs OpenGL, which this display doesn't offer.");
        return false;
    }
    picture_->SetContext(context_.get());
    map_->SetContext(context_.get());
    picture_->MakeCurrent();
    progress_ = MakeObject<StatusProgress>(*this, *bar_, [this] { picture_->DrawNow(); });
    const auto host = MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()),
                                          ComPtr<IProgressWindow>(progress_.Get()));
    try {
        viewer_ = std::make_unique<tessara::Viewer>(
            ComPtr<IKvoHost>(host.Get()), &wglGetProcAddress, kept_.view,
            [this](const ViewerChange& change) { Changed(change); },
            [this] {
                CallAfter([this] {
                    if (viewer_ && picture_->MakeCurrent())
                        viewer_->TakeLight();
                });
            });
    } catch (const std::runtime_error& error) {
        ShowError(error.what());
        return false;
    }
    text_ = std::make_unique<TextTextures>(GetFont(), picture_->Factor());
    smooth_ = std::make_unique<SmoothFrame>(viewer_->Gl());
    picture_->Show(viewer_.get(), text_.get(), smooth_.get());
    map_->Show(viewer_.get(), text_.get());
    ShowState();
    return true;
}

void MainWindow::OnClose(wxCloseEvent& event)
{
    if (event.CanVeto() && !MayLeave()) {
        event.Veto();
        return;
    }
    picture_->SetFlying(false);
    if (!failed_)
        Keep();
    Destroy();
}

/// Remembers what the next start shall know.
void MainWindow::Keep()
{
    WindowPlace& place = kept_.window;
    place.maximised = IsMaximized();
    if (!IsMaximized() && !IsFullScreen() && !IsIconized()) {
        place.x = std::max(GetPosition().x, 0);
        place.y = std::max(GetPosition().y, 0);
        place.width = GetSize().x;
        place.height = GetSize().y;
    }
    place.sideWidth = panes_->SecondSize();
    place.mapHeight = side_->SecondSize();
    if (viewer_)
        kept_.view = viewer_->Settings();
    SaveSettings(kept_);
}

void MainWindow::SetMapShown(bool shown)
{
    kept_.window.mapShown = shown;
    if (shown == side_->IsSplit())
        return;
    if (shown)
        side_->Show(wxSPLIT_HORIZONTAL, pages_, mapPanel_, side_->SecondSize());
    else
        side_->Unsplit(mapPanel_);
}

void MainWindow::SetSideShown(bool shown)
{
    kept_.window.sideShown = shown;
    if (shown == panes_->IsSplit())
        return;
    if (shown)
        panes_->Show(wxSPLIT_VERTICAL, picture_, side_, panes_->SecondSize());
    else
        panes_->Unsplit(side_);
}

}  // namespace tessara

#include "app/viewer/window/key_help.h"
#include "app/viewer/window/main_window.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/table_dialog.h"
#include "app/viewer/window/window_commands.h"
#include "app/viewer/work/setting_table.h"

#include <wx/aboutdlg.h>
#include <wx/generic/aboutdlgg.h>

#include <algorithm>
#include <exception>

namespace tessara {

namespace {

constexpr double kBrushStep = 1.2;

}  // namespace

void MainWindow::Run(int command)
{
    ++running_;
    try {
        Do(command);
    } catch (const std::bad_alloc&) {
        ShowError("There is not enough memory.");
    } catch (const std::exception& error) {
        ShowError(error.what());
    }
    --running_;
    Changed({false, false, true});
}

void MainWindow::Do(int command)
{
    if (command == kQuit) {
        Close();
        return;
    }
    // Whatever draws needs the context.
    if (!viewer_ || !picture_->MakeCurrent())
        return;
    DoFile(command) || DoEdit(command) || DoView(command) || DoTerrain(command) || DoHelp(command);
}

bool MainWindow::DoFile(int command)
{
    const bool open = viewer_->HasTerrain();
    if (command > kRecent && command < kRecentEnd) {
        const auto index = static_cast<std::size_t>(command - kRecent - 1);
        if (index < kept_.recent.Paths().size())
            Load(std::string(kept_.recent.Paths()[index]));
        return true;
    }
    switch (command) {
    case kOpen:
        AskAndOpen();
        return true;
    case kOpenSample:
        Load({});
        return true;
    case kClearRecent:
        kept_.recent = {};
        ShowRecent();
        return true;
    case kSaveProject:
    case kSaveProjectAs:
        if (open)
            SaveProject(command == kSaveProjectAs);
        return true;
    case kSaveHeights:
        if (open)
            AskAndSaveHeights();
        return true;
    case kSavePicture:
        if (open)
            AskAndSavePicture();
        return true;
    case kExportTriangles:
        if (open)
            AskAndExport();
        return true;
    default:
        return false;
    }
}

bool MainWindow::DoEdit(int command)
{
    const bool open = viewer_->HasTerrain();
    switch (command) {
    case kUndo:
        if (open)
            viewer_->Sculptor().Undo();
        return true;
    case kRedo:
        if (open)
            viewer_->Sculptor().Redo();
        return true;
    case kBrushAway:
    case kBrushRaise:
    case kBrushLower:
    case kBrushSmooth:
    case kBrushFlatten:
        SetBrush(command);
        return true;
    case kBrushSmaller:
        ScaleBrush(1.0 / kBrushStep);
        return true;
    case kBrushLarger:
        ScaleBrush(kBrushStep);
        return true;
    default:
        return false;
    }
}

bool MainWindow::DoView(int command)
{
    const auto flip = [this](bool ViewSettings::*field) {
        Change([field](ViewSettings& settings) { settings.*field = !(settings.*field); });
        return true;
    };
    const auto move = [this](void (CameraController::*how)()) {
        if (viewer_->HasTerrain())
            (viewer_->Camera().*how)();
        return true;
    };
    switch (command) {
    case kFilled:
    case kWireframe:
    case kPoints:
        Change([command](ViewSettings& settings) { settings.fill = static_cast<FillMode>(command - kFilled); });
        return true;
    case kShowAll:
        return move(&CameraController::ShowAll);
    case kNorthUp:
        return move(&CameraController::NorthUp);
    case kFromTop:
        return move(&CameraController::FromTop);
    case kFly:
        picture_->SetFlying(!picture_->IsFlying());
        return true;
    case kLevelColors:
        return flip(&ViewSettings::levelColors);
    case kNodeBoxes:
        return flip(&ViewSettings::nodeBoxes);
    case kFreeze:
        return flip(&ViewSettings::frozen);
    case kShowMap:
        SetMapShown(!kept_.window.mapShown);
        return true;
    case kShowSide:
        SetSideShown(!kept_.window.sideShown);
        return true;
    case kFullScreen:
        ShowFullScreen(!IsFullScreen(), wxFULLSCREEN_NOCAPTION | wxFULLSCREEN_NOBORDER);
        return true;
    default:
        return false;
    }
}

bool MainWindow::DoTerrain(int command)
{
    switch (command) {
    case kImportSource:
        ImportSource();
        return true;
    case kSourceTexture:
        if (hasSource_)
            Change([](ViewSettings& settings) { settings.sourceTexture = !settings.sourceTexture; });
        return true;
    case kTerrainDetail:
        OpenDetailDialog();
        return true;
    case kVertexColors:
        Change([](ViewSettings& settings) { settings.vertexColors = !settings.vertexColors; });
        return true;
    case kRealTime:
        SetRealTime(!viewer_->Settings().realTime);
        return true;
    case kResetSettings:
        picture_->SetBrush(false);
        Change([](ViewSettings& settings) { settings = {}; });
        if (viewer_->HasTerrain())
            viewer_->ResetColors();
        return true;
    case kInformation:
        if (viewer_->HasTerrain())
            ShowInformation();
        return true;
    default:
        return false;
    }
}

bool MainWindow::DoHelp(int command)
{
    switch (command) {
    case kKeys:
        ShowKeys();
        return true;
    case kAbout: {
        wxAboutDialogInfo about;
        about.SetName("Tessara");
        about.SetVersion(TESSARA_VERSION);
        about.SetDescription("Terrain from elevation files,\nwith as much detail as the view needs.");
        wxGenericAboutBox(about, this);
        return true;
    }
    default:
        return false;
    }
}

void MainWindow::ShowKeys()
{
    std::vector<TableRow> rows;
    for (const KeyHelp& each : AllKeys())
        rows.push_back({each.keys, each.effect});
    ShowTable(this, "Keys and Mouse", rows);
}

void MainWindow::SetRealTime(bool on)
{
    Change([on](ViewSettings& settings) { settings.realTime = on; });
}

/// A brush only works in the real-time mode.
void MainWindow::SetBrush(int command)
{
    if (command == kBrushAway) {
        picture_->SetBrush(false);
        return;
    }
    Change([command](ViewSettings& settings) {
        settings.realTime = true;
        settings.brush.kind = static_cast<BrushKind>(command - kBrushRaise);
    });
    picture_->SetBrush(true);
}

void MainWindow::ScaleBrush(double factor)
{
    if (!viewer_->HasTerrain())
        return;
    const GroundFrame& ground = viewer_->Document().Session().Ground();
    const double across = std::max(ground.Width(), ground.Depth());
    Change([radii = BrushRadii(across), factor](ViewSettings& settings) {
        settings.brush.radius = radii.Nearest(settings.brush.radius * factor);
    });
}

}  // namespace tessara

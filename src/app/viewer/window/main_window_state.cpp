#include "app/viewer/window/legend_pane.h"
#include "app/viewer/window/main_window.h"
#include "app/viewer/window/map_pane.h"
#include "app/viewer/window/pages/colors_page.h"
#include "app/viewer/window/pages/debug_page.h"
#include "app/viewer/window/pages/sculpt_page.h"
#include "app/viewer/window/pages/view_page.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/status_texts.h"
#include "app/viewer/window/window_commands.h"
#include "app/viewer/window/window_text.h"

#include <wx/filename.h>
#include <wx/menu.h>

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

constexpr auto kBetweenFigures = std::chrono::milliseconds(200);

}  // namespace

std::string TerrainName(const std::string& path)
{
    return path.empty() ? "Sample" : wxFileName(Wide(path)).GetFullName().utf8_string();
}

SettingsListener MainWindow::MakeListener()
{
    return {[this](const std::function<void(ViewSettings&)>& change) { Change(change); },
            [this](int command) { Run(command); },
            [this](double low, double high) {
                if (viewer_ && viewer_->HasTerrain() && picture_->MakeCurrent())
                    viewer_->SetColors(low, high);
            },
            [this] {
                if (viewer_ && viewer_->HasTerrain() && picture_->MakeCurrent())
                    viewer_->ResetColors();
            }};
}

void MainWindow::Change(const std::function<void(ViewSettings&)>& change)
{
    if (!viewer_ || !picture_->MakeCurrent())
        return;
    ViewSettings settings = viewer_->Settings();
    change(settings);
    const bool realTime = viewer_->Settings().realTime;
    viewer_->Apply(settings);
    // The mode is of use with a brush.
    if (settings.realTime != realTime)
        picture_->SetBrush(settings.realTime);
    Changed({false, false, true});
}

void MainWindow::Changed(const ViewerChange& change)
{
    if (change.picture)
        picture_->RequestDraw();
    if (change.map)
        map_->RequestDraw();
    if (change.state && !std::exchange(stateRequested_, true)) {
        CallAfter([this] {
            stateRequested_ = false;
            ShowState();
        });
    }
}

void MainWindow::ShowState()
{
    if (!viewer_)
        return;
    viewPage_->Show(viewer_->Settings());
    colorsPage_->ShowState(*viewer_, hasSource_);
    sculptPage_->ShowState(*viewer_, picture_->HasBrush());
    debugPage_->ShowState(viewer_->Settings(), picture_->Figures(), picture_->FramesPerSecond());
    if (viewer_->HasTerrain())
        legend_->Show(viewer_->Colors());
    ShowMenus();
    ShowTitle();
}

void MainWindow::ShowMenus()
{
    const ViewSettings& settings = viewer_->Settings();
    const bool open = viewer_->HasTerrain();
    const std::pair<int, bool> checks[] = {
        {kFilled + static_cast<int>(settings.fill), true},
        {picture_->HasBrush() ? kBrushRaise + static_cast<int>(settings.brush.kind) : kBrushAway, true},
        {kFly, picture_->IsFlying()},
        {kLevelColors, settings.levelColors},
        {kNodeBoxes, settings.nodeBoxes},
        {kFreeze, settings.frozen},
        {kShowMap, kept_.window.mapShown},
        {kShowSide, kept_.window.sideShown},
        {kFullScreen, IsFullScreen()},
        {kSourceTexture, hasSource_ && settings.sourceTexture},
        {kVertexColors, settings.vertexColors},
        {kRealTime, settings.realTime},
    };
    wxMenuBar& bar = *GetMenuBar();
    for (const auto& [command, checked] : checks)
        bar.Check(command, checked);
    for (const int command : {kShowAll, kNorthUp, kFromTop, kFly, kInformation})
        bar.Enable(command, open);
    for (const int command : {kSaveProject, kSaveProjectAs, kSaveHeights, kSavePicture, kExportTriangles, kImportSource,
                              kTerrainDetail, kRealTime, kBrushRaise, kBrushLower, kBrushSmooth, kBrushFlatten})
        bar.Enable(command, open && !viewer_->IsCoarse());
    bar.Enable(kSourceTexture, hasSource_);
    bar.Enable(kUndo, open && viewer_->Sculptor().CanUndo());
    bar.Enable(kRedo, open && viewer_->Sculptor().CanRedo());
}

void MainWindow::ShowRecent()
{
    wxMenu& menu = *GetMenuBar()->FindItem(kRecent)->GetSubMenu();
    while (menu.GetMenuItemCount() > 0)
        menu.Destroy(menu.FindItemByPosition(0));
    int command = kRecent + 1;
    for (const std::string& path : kept_.recent.Paths()) {
        // Ampersands would become underlines.
        wxString label = Wide(path);
        label.Replace("&", "&&");
        menu.Append(command, wxString::Format("&%d  ", command - kRecent) + label);
        ++command;
    }
    if (command > kRecent + 1)
        menu.AppendSeparator();
    menu.Append(kClearRecent, "&Clear the List")->Enable(!kept_.recent.Paths().empty());
}

void MainWindow::ShowTitle()
{
    wxString title = "Tessara";
    if (viewer_->HasTerrain())
        title = Wide(NameOfWork()) + Wide(viewer_->HasUnsavedWork() ? "* – " : " – ") + title;
    if (GetTitle() != title)
        SetTitle(title);
}

/// Figures change faster than anybody reads, while the picture moves.
void MainWindow::ShowFrame()
{
    const auto now = std::chrono::steady_clock::now();
    if (viewer_->Picture().WantsFrame() && now - lastFigures_ < kBetweenFigures)
        return;
    lastFigures_ = now;
    texts_->ShowFigures(picture_->Figures(), picture_->FramesPerSecond());
    if (debugPage_->IsShownOnScreen())
        debugPage_->ShowState(viewer_->Settings(), picture_->Figures(), picture_->FramesPerSecond());
}

}  // namespace tessara

#include "app/viewer/picture/view_text.h"
#include "app/viewer/window/main_window.h"
#include "app/viewer/window/picture_pane.h"
#include "app/viewer/window/table_dialog.h"
#include "app/viewer/window/window_text.h"
#include "surface/itessara.h"

#include <wx/msgdlg.h>
#include <wx/statusbr.h>

namespace tessara {

void MainWindow::ShowError(const std::string& message)
{
    wxMessageBox(Wide(message), "Tessara", wxOK | wxICON_ERROR, this);
}

void MainWindow::Tell(const std::string& message)
{
    SetStatusText(Wide(message));
}

/// The surface asks for the file, and tells what is wrong with it.
void MainWindow::ImportSource()
{
    if (!viewer_->HasTerrain())
        return;
    const bool imported = SUCCEEDED(viewer_->Document().Session().Surface().ImportTextureSource(nullptr));
    if (!imported || !picture_->MakeCurrent())
        return;
    hasSource_ = true;
    Change([](ViewSettings& settings) { settings.sourceTexture = true; });
    viewer_->Work().TexturesChanged();
}

void MainWindow::OpenDetailDialog()
{
    if (!viewer_->HasTerrain())
        return;
    const HRESULT result = viewer_->Document().Session().Surface().TextureDetailDlg();
    if (FAILED(result))
        ShowError("The dialog for detail textures couldn't be opened.");
    else if (result == S_OK)
        viewer_->Work().TexturesChanged();
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

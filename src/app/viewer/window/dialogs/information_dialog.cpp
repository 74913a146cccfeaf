#include "app/viewer/window/dialogs/information_dialog.h"

#include "app/viewer/picture/view_text.h"
#include "app/viewer/terrain/terrain_document.h"
#include "app/viewer/window/dialogs/table_dialog.h"

namespace tessara {

void ShowInformation(wxWindow* parent, const TerrainDocument& document)
{
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
    ShowTable(parent, "Terrain Information", rows);
}

}  // namespace tessara

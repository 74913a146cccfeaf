#include "app/viewer/window/window_commands.h"

#include <gtk/gtk.h>
#include <wx/menu.h>

#include <cctype>

namespace tessara {

namespace {

using Kind = MenuLine::Kind;

constexpr int kMenu = -1;
constexpr int kLine = 0;

constexpr MenuLine kLines[] = {
    {kMenu, "&File", ""},
    {kOpen, "&Open...\tCtrl+O", "Open an elevation file or a project"},
    {kOpenSample, "Open the Sa&mple", "Open the terrain that comes with the program"},
    {kRecent, "Open &Recent", "", Kind::Submenu},
    {kLine, "", ""},
    {kSaveProject, "&Save Project\tCtrl+S", "Save the terrain with its colours, textures and camera"},
    {kSaveProjectAs, "Save Project &As...\tCtrl+Shift+S", "Save the project under another name"},
    {kSaveHeights, "Save &Heights...\tCtrl+H", "Save the heights as a GeoTIFF, an ASCII grid or a 16-bit PNG"},
    {kLine, "", ""},
    {kSavePicture, "Save &Picture...\tCtrl+P", "Save what the window shows as a picture of any size"},
    {kExportTriangles, "&Export Triangles...\tCtrl+E", "Write the triangles of this view as text, OBJ, PLY or STL"},
    {kLine, "", ""},
    {kQuit, "&Quit\tCtrl+Q", "Close the window"},

    {kMenu, "&Edit", ""},
    {kUndo, "&Undo\tCtrl+Z", "Take the last stroke of the brush back"},
    {kRedo, "&Redo\tCtrl+Y", "Repeat what was taken back"},
    {kLine, "", ""},
    {kBrushAway, "&No Brush", "The left mouse button turns the terrain", Kind::Radio},
    {kBrushRaise, "R&aise", "The left mouse button raises the ground", Kind::Radio},
    {kBrushLower, "&Lower", "The left mouse button lowers the ground", Kind::Radio},
    {kBrushSmooth, "&Smooth", "The left mouse button smooths the ground", Kind::Radio},
    {kBrushFlatten, "&Flatten", "The left mouse button levels the ground where the stroke begins", Kind::Radio},
    {kLine, "", ""},
    {kBrushSmaller, "S&maller Brush", "Make the brush smaller", Kind::Plain, '['},
    {kBrushLarger, "Lar&ger Brush", "Make the brush larger", Kind::Plain, ']'},

    {kMenu, "&View", ""},
    {kFilled, "&Filled", "Draw the surface", Kind::Radio, '1'},
    {kWireframe, "&Wireframe", "Draw the edges of the triangles", Kind::Radio, '2'},
    {kPoints, "&Points", "Draw the corners of the triangles", Kind::Radio, '3'},
    {kLine, "", ""},
    {kShowAll, "Show &All", "Show all of the terrain", Kind::Plain, WXK_HOME},
    {kNorthUp, "&North Up", "Turn until north is at the top", Kind::Plain, 'N'},
    {kFromTop, "From the &Top", "Look straight down", Kind::Plain, 'T'},
    {kFly, "Fl&y", "Fly with W, A, S, D and the mouse; Esc lands", Kind::Check, 'F'},
    {kLine, "", ""},
    {kLevelColors, "&Level Colours", "Colour triangles by the size of their nodes", Kind::Check, 'L'},
    {kNodeBoxes, "Node &Boxes", "Draw the boxes of the nodes that are drawn", Kind::Check, 'B'},
    {kFreeze, "Free&ze the Detail", "Keep the detail while the camera moves on", Kind::Check, 'Z'},
    {kLine, "", ""},
    {kShowMap, "Show the &Map", "Show or hide the map", Kind::Check, 'M'},
    {kShowSide, "Show the &Side Panel\tF9", "Show or hide the settings and the map", Kind::Check},
    {kFullScreen, "F&ull Screen\tF11", "Fill the screen", Kind::Check},

    {kMenu, "&Terrain", ""},
    {kImportSource, "&Import Source Texture...\tCtrl+I", "Stretch a picture over the terrain"},
    {kSourceTexture, "Show Source Te&xture", "Show or hide the picture on the terrain", Kind::Check},
    {kTerrainDetail, "Terrain &Detail...\tCtrl+D", "Choose and tune the detail texture"},
    {kVertexColors, "Height &Colours", "Colour the terrain by its heights", Kind::Check, 'C'},
    {kLine, "", ""},
    {kRealTime, "&Real-Time Mode", "Let the heights be changed", Kind::Check, 'R'},
    {kLine, "", ""},
    {kResetSettings, "R&eset All Settings", "Give every setting its first value"},
    {kInformation, "I&nformation...", "Size, place and heights of the terrain"},

    {kMenu, "&Help", ""},
    {kKeys, "&Keys and Mouse\tF1", "List all keys"},
    {kAbout, "&About Tessara", "Version of the program"},
};

/// Shows a key beside a menu line. The toolkit itself must not know it: it would take it away from fields in which
/// somebody types.
void ShowKey(wxMenuItem& item, int key)
{
    GtkWidget* const label = gtk_bin_get_child(GTK_BIN(item.GetMenuItem()));
    if (!GTK_IS_ACCEL_LABEL(label))
        return;
    const guint shown = key == WXK_HOME ? GDK_KEY_Home : static_cast<guint>(std::tolower(key));
    gtk_accel_label_set_accel(GTK_ACCEL_LABEL(label), shown, static_cast<GdkModifierType>(0));
}

void Append(wxMenu& menu, const MenuLine& line)
{
    switch (line.kind) {
    case Kind::Submenu:
        menu.Append(line.id, line.label, new wxMenu, line.help);
        return;
    case Kind::Plain:
        menu.Append(line.id, line.label, line.help);
        break;
    case Kind::Check:
        menu.AppendCheckItem(line.id, line.label, line.help);
        break;
    case Kind::Radio:
        menu.AppendRadioItem(line.id, line.label, line.help);
        break;
    }
    if (line.key != 0)
        ShowKey(*menu.FindItem(line.id), line.key);
}

}  // namespace

std::span<const MenuLine> MenuLines()
{
    return kLines;
}

wxMenuBar* MakeMenuBar()
{
    auto* bar = new wxMenuBar;
    wxMenu* menu = nullptr;
    for (const MenuLine& line : kLines) {
        if (line.id == kMenu)
            bar->Append(menu = new wxMenu, line.label);
        else if (line.id == kLine)
            menu->AppendSeparator();
        else
            Append(*menu, line);
    }
    return bar;
}

int CommandOfKey(int key)
{
    for (const MenuLine& line : kLines) {
        if (line.key != 0 && line.key == std::toupper(key))
            return line.id;
    }
    return 0;
}

}  // namespace tessara

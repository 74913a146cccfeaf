#include "dialog/detail_resources.h"

#include "dialog/detail_pictures.h"

namespace tessara {

namespace {

constexpr const char* kBrightness[] = {"Low", "High"};

using enum ControlKind;

// In tab order; sizes in dialog units.
constexpr ControlTemplate kControls[] = {
    {kShowBox, CheckBox, "Show", 169, 125, 34, 10, true},
    {kTilingXField, Edit, "", 85, 126, 40, 14, true},
    {.id = kTilingXSpin,
     .kind = Spin,
     .text = "Spin1",
     .x = 111,
     .y = 119,
     .width = 10,
     .height = 14,
     .buddy = kTilingXField},
    {kTilingYField, Edit, "", 85, 143, 40, 14, true},
    {.id = kTilingYSpin,
     .kind = Spin,
     .text = "Spin2",
     .x = 109,
     .y = 149,
     .width = 10,
     .height = 14,
     .buddy = kTilingYField},
    {.id = kBrightnessList,
     .kind = DropList,
     .text = "",
     .x = 169,
     .y = 144,
     .width = 35,
     .height = 45,
     .tabStop = true,
     .rows = kBrightness},
    {kNameField, Edit, "", 79, 96, 78, 14, true},
    {kImportButton, Button, "Import", 158, 97, 36, 12, true},
    {kDeleteButton, Button, "Delete", 49, 68, 36, 12, true},
    {.id = kElementList,
     .kind = ListBox,
     .text = "",
     .x = 126,
     .y = 13,
     .width = 78,
     .height = 50,
     .tabStop = true,
     .multipleSelection = true},
    {kDatabaseList, DropList, "", 129, 68, 71, 44, true},
    {kPreview, Viewport, "", 59, 13, 56, 51},
    {kApplyButton, Button, "Apply", 88, 68, 36, 12, true},
    {IDOK, DefaultButton, "OK", 110, 166, 50, 14, true},
    {IDCANCEL, Button, "Cancel", 166, 166, 50, 14, true},
    {0, Label, "Horizontal", 49, 129, 34, 8},
    {0, Label, "Vertical", 49, 146, 26, 8},
    {0, Label, "Brightness", 133, 146, 34, 8},
    {kNameLabel, Label, "Name", 51, 99, 19, 8},
    {0, GroupBox, "Tiling", 46, 117, 170, 45},
    {.id = 0, .kind = Picture, .text = "", .x = 2, .y = 2, .width = 40, .height = 123, .picture = &MakeSidePicture},
    {0, WhiteRectangle, "", 2, 124, 40, 57},
    {0, GroupBox, "Import: select the user database", 46, 87, 170, 28},
    {0, Label, "Element", 46, 2, 26, 8},
    {0, EtchedLine, "", 76, 6, 138, 1},
};

constexpr DialogTemplate kTemplates[] = {{kDetailTemplate, "Terrain Detail", 219, 183, 8, false, kControls}};

constexpr BitmapResource kBitmaps[] = {{kSidePicture, &MakeSidePicture}, {kIconStrip, &MakeIconStrip}};

constexpr StringResource kStrings[] = {
    {kProductName, "Tessara"},
    {kReplaceQuestion, "The element already exist!\nDo you want to replace it?"},
    {kDeleteQuestion, "There is not undo for this operation, do you want to proceed?"},
    {kNameMissing, "First: enter a name for the element to import"},
    {kNoPreview, "The dialog needs OpenGL for its preview, and there is none to be had."},
    {kNoImageReader, "The image can't be imported: there is no reader for image files."},
    {kNoUserDatabase, "The image can't be imported: there is no user database."},
    {kDatabaseTip, "<h5>Database</h5>\n<hr color=gray><br>Select the database you wish to use. "
                   "<a msg=\"0\">More...</a>"},
    {kDatabaseHelp, "<h5>Database</h5>\n<hr color=gray><br><h5>System database: </h5>you will find different kind of "
                    "terrain textures.<br><br><h5>User database: </h5> is where you import your elements (TGA, JPEG "
                    "or BMP)."},
    {kDeleteTip, "<h5>Delete Object</h5>\n<hr color=gray><br>Delete the selected object from the User database."},
    {kNameTip, "<h5>Terrain Texture Name</h5>\n<hr color=gray><br>This will be used as the terrain texture name for "
               "the imported element."},
    {kImportTip, "<h5>Import Terrain Texture</h5>\n<hr color=gray><br>Select the location of the file you want to "
                 "import from your computer. <a msg=\"1\">More...</a>"},
    {kImportHelp, "<h5>Import Terrain Texture</h5>\n<hr color=gray><br>You must enter a name for the new "
                  "element.<br><br><h5>Important: </h5> For transparency use Targa files with an alpha channel "
                  "(TGA-32 bits)."},
    {kApplyTip, "<h5>Import Terrain Texture</h5>\n<hr color=gray><br>Apply the texture on the terrain."},
    {kShowTip, "<h5>Show Texture</h5>\n<hr color=gray><br>Show or hide the texture detail."},
    {kTilingXTip, "<h5>Texture Tiling</h5>\n<hr color=gray><br>Tiling of the texture along the X axe."},
    {kTilingYTip, "<h5>Texture Tiling</h5>\n<hr color=gray><br>Tiling of the texture along the Y axe."},
    {kBrightnessTip, "<h5>Texture Brightness</h5>\n<hr color=gray><br>Set the texture's brightness."},
};

}  // namespace

std::span<const DialogTemplate> DetailTemplates() noexcept
{
    return kTemplates;
}

std::span<const BitmapResource> DetailBitmaps() noexcept
{
    return kBitmaps;
}

std::span<const StringResource> DetailStrings() noexcept
{
    return kStrings;
}

}  // namespace tessara

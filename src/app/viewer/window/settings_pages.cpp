#include "app/viewer/window/settings_pages.h"

#include "app/scene/palettes.h"
#include "app/viewer/view_text.h"
#include "app/viewer/viewer.h"
#include "app/viewer/window/window_commands.h"
#include "app/viewer/window/window_text.h"
#include "platform/system/number_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/slider.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cctype>
#include <cmath>

namespace tessara {

namespace {

std::string PixelsText(double pixels)
{
    return FixedText(pixels, pixels < 10.0 ? 2 : 1) + " pixels";
}

std::string FactorText(double factor)
{
    return "× " + FixedText(factor, 2);
}

std::string DegreesText(double degrees)
{
    return FixedText(degrees, 0) + "°";
}

std::string PercentText(double share)
{
    return FixedText(share * 100.0, 0) + " %";
}

std::string Capitalised(std::string text)
{
    if (!text.empty())
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

/// A value near a mark takes the mark, so that true proportions can be found again.
double Snapped(double value, double mark, double share)
{
    return std::fabs(value / mark - 1.0) < share ? mark : value;
}

wxButton* AddButton(wxWindow* parent, wxSizer& row, const char* label, const char* help, std::function<void()> pressed)
{
    auto* button = new wxButton(parent, wxID_ANY, label);
    button->SetToolTip(help);
    button->Bind(wxEVT_BUTTON, [pressed = std::move(pressed)](wxCommandEvent&) { pressed(); });
    row.Add(button, wxSizerFlags(1).Border(wxTOP, parent->FromDIP(8)));
    return button;
}

}  // namespace

ViewPage::ViewPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent)
{
    const auto slider = [&](const char* title, const char* help, SliderField::Scale scale,
                            double ViewSettings::*field) {
        return std::make_unique<SliderField>(this, Column(), title, help, std::move(scale),
                                             [change = listener.change, field](double value) {
                                                 change([&](ViewSettings& settings) { settings.*field = value; });
                                             });
    };
    AddHeading(this, Column(), "Terrain");
    detail_ = slider("Error allowed", "Level of detail: height errors smaller than this stay. To the left it is finer.",
                     {0.25, 32.0, true, 200, &PixelsText}, &ViewSettings::errorPixels);
    exaggeration_ = std::make_unique<SliderField>(
        this, Column(), "Exaggeration", "Factor on the heights; 1 shows true proportions",
        SliderField::Scale{0.1, 10.0, true, 200, &FactorText}, [change = listener.change](double value) {
            change([&](ViewSettings& settings) { settings.exaggeration = Snapped(value, 1.0, 0.03); });
        });
    fill_ = AddChoice(this, Column(), "Draw", "Surface, edges or corners of the triangles",
                      {"Filled", "Wireframe", "Points"}, [run = listener.run](int choice) { run(kFilled + choice); });
    AddHeading(this, Column(), "Light and air");
    azimuth_ = slider("Sun from", "Compass direction that the sun shines from", {0.0, 360.0, false, 72, &DegreesText},
                      &ViewSettings::sunAzimuth);
    height_ = slider("Height of the sun", "Degrees above the horizon", {1.0, 90.0, false, 89, &DegreesText},
                     &ViewSettings::sunHeight);
    fog_ = slider("Fog", "How much of what is far fades", {0.0, 1.0, false, 100, &PercentText}, &ViewSettings::fog);
    Finish();
}

void ViewPage::Show(const ViewSettings& settings)
{
    detail_->Show(settings.errorPixels);
    exaggeration_->Show(settings.exaggeration);
    fill_->SetSelection(static_cast<int>(settings.fill));
    azimuth_->Show(settings.sunAzimuth);
    height_->Show(settings.sunHeight);
    fog_->Show(settings.fog);
}

ColorsPage::ColorsPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent)
{
    AddHeading(this, Column(), "Colours of the heights");
    colors_ = AddCheck(this, Column(), "Colour by height", "Without, it is white", [change = listener.change](bool on) {
        change([on](ViewSettings& settings) { settings.vertexColors = on; });
    });
    std::vector<std::string> names;
    for (const std::string& name : PaletteNames())
        names.push_back(Capitalised(name));
    ramp_ =
        AddChoice(this, Column(), "Ramp", "Colours from low to high", names, [change = listener.change](int choice) {
            change([&](ViewSettings& settings) { settings.ramp = PaletteNames()[static_cast<std::size_t>(choice)]; });
        });
    low_ = AddHeight("From", "Height in metres that gets the first colour");
    high_ = AddHeight("To", "Height in metres that gets the last colour");
    const auto apply = [this, colors = listener.colors] {
        if (low_->IsModified() || high_->IsModified())
            colors(LeadingNumber(low_->GetValue().utf8_string()), LeadingNumber(high_->GetValue().utf8_string()));
        low_->DiscardEdits();
        high_->DiscardEdits();
    };
    for (wxTextCtrl* each : {low_, high_}) {
        each->Bind(wxEVT_TEXT_ENTER, [apply](wxCommandEvent&) { apply(); });
        each->Bind(wxEVT_KILL_FOCUS, [apply](wxFocusEvent& event) {
            event.Skip();
            apply();
        });
    }
    auto* reset = new wxBoxSizer(wxHORIZONTAL);
    AddButton(this, *reset, "All Heights", "From the lowest to the highest point of the terrain", listener.resetColors);
    Column().Add(reset, wxSizerFlags().Expand());
    AddHeading(this, Column(), "Picture on the ground");
    source_ = AddCheck(this, Column(), "Show the source texture", "Show or hide the picture on the terrain",
                       [run = listener.run](bool) { run(kSourceTexture); });
    auto* import = new wxBoxSizer(wxHORIZONTAL);
    AddButton(this, *import, "Import...", "Stretch a picture over the terrain",
              [run = listener.run] { run(kImportSource); });
    AddButton(this, *import, "Detail...", "Choose and tune the detail texture",
              [run = listener.run] { run(kTerrainDetail); });
    Column().Add(import, wxSizerFlags().Expand());
    Finish();
}

wxTextCtrl* ColorsPage::AddHeight(const std::string& title, const std::string& help)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(this, wxID_ANY, Wide(title)), wxSizerFlags(1).CenterVertical());
    auto* field = new wxTextCtrl(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                 wxTE_PROCESS_ENTER | wxTE_RIGHT);
    field->SetToolTip(Wide(help));
    field->SetName(Wide(title));
    row->Add(field, wxSizerFlags(2).CenterVertical());
    row->Add(new wxStaticText(this, wxID_ANY, "m"), wxSizerFlags().CenterVertical().Border(wxLEFT, FromDIP(6)));
    Column().Add(row, wxSizerFlags().Expand().Border(wxTOP, FromDIP(6)));
    return field;
}

void ColorsPage::Show(const Viewer& viewer, bool hasSource)
{
    const ViewSettings& settings = viewer.Settings();
    colors_->SetValue(settings.vertexColors);
    const std::vector<std::string> names = PaletteNames();
    // A project may have colours of its own, which are none of these.
    const auto ramp = std::find(names.begin(), names.end(), settings.ramp);
    ramp_->SetSelection(ramp == names.end() ? wxNOT_FOUND : static_cast<int>(ramp - names.begin()));
    const auto show = [](wxTextCtrl& field, double value) {
        const wxString text = Wide(FixedText(value, 1));
        if (!field.IsModified() && field.GetValue() != text)
            field.ChangeValue(text);
    };
    show(*low_, viewer.Colors().low);
    show(*high_, viewer.Colors().high);
    source_->SetValue(hasSource && settings.sourceTexture);
    source_->Enable(hasSource);
}

SculptPage::SculptPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent)
{
    AddHeading(this, Column(), "Brush");
    realTime_ = AddCheck(this, Column(), "Real-time mode", "Let the heights be changed",
                         [run = listener.run](bool) { run(kRealTime); });
    brush_ = AddChoice(this, Column(), "Brush", "What the left mouse button does",
                       {"None", "Raise", "Lower", "Smooth", "Flatten"},
                       [run = listener.run](int choice) { run(kBrushAway + choice); });
    radius_ = std::make_unique<SliderField>(
        this, Column(), "Radius", "How far the brush reaches", SliderField::Scale{10.0, 5000.0, true, 200, &LengthText},
        [change = listener.change](double value) {
            change([value](ViewSettings& settings) { settings.brush.radius = value; });
        });
    strength_ = std::make_unique<SliderField>(
        this, Column(), "Strength", "How quickly it works", SliderField::Scale{0.01, 1.0, false, 99, &PercentText},
        [change = listener.change](double value) {
            change([value](ViewSettings& settings) { settings.brush.strength = value; });
        });
    AddHeading(this, Column(), "Heights");
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    undo_ = AddButton(this, *row, "Undo", "Take the last stroke back", [run = listener.run] { run(kUndo); });
    redo_ = AddButton(this, *row, "Redo", "Repeat what was taken back", [run = listener.run] { run(kRedo); });
    Column().Add(row, wxSizerFlags().Expand());
    auto* second = new wxBoxSizer(wxHORIZONTAL);
    save_ = AddButton(this, *second, "Save Heights...", "Save the heights as a GeoTIFF",
                      [run = listener.run] { run(kSaveHeights); });
    Column().Add(second, wxSizerFlags().Expand());
    Finish();
}

void SculptPage::SetTerrainSize(double across)
{
    radius_->SetRange(std::max(across * 0.002, 0.01), std::max(across * 0.25, 0.1));
}

void SculptPage::Show(Viewer& viewer, bool brushAtHand)
{
    const ViewSettings& settings = viewer.Settings();
    realTime_->SetValue(settings.realTime);
    brush_->SetSelection(brushAtHand ? 1 + static_cast<int>(settings.brush.kind) : 0);
    radius_->Show(settings.brush.radius);
    strength_->Show(settings.brush.strength);
    undo_->Enable(viewer.HasTerrain() && viewer.Document().CanUndo());
    redo_->Enable(viewer.HasTerrain() && viewer.Document().CanRedo());
    save_->Enable(viewer.HasTerrain());
}

DebugPage::DebugPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent)
{
    AddHeading(this, Column(), "Detail of the terrain");
    levels_ = AddCheck(this, Column(), "Colours of the levels", "Colour triangles by the size of their nodes",
                       [run = listener.run](bool) { run(kLevelColors); });
    boxes_ = AddCheck(this, Column(), "Boxes of the drawn nodes", "Draw the boxes of the nodes that are drawn",
                      [run = listener.run](bool) { run(kNodeBoxes); });
    freeze_ = AddCheck(this, Column(), "Freeze the detail", "Keep the detail while the camera moves on",
                       [run = listener.run](bool) { run(kFreeze); });
    AddHeading(this, Column(), "Last frame");
    for (const char* title : {"Frames per second", "Triangles", "Active nodes", "Update", "Draw"}) {
        auto* row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(new wxStaticText(this, wxID_ANY, title), wxSizerFlags().CenterVertical());
        figures_.push_back(new wxStaticText(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                            wxALIGN_RIGHT | wxST_NO_AUTORESIZE));
        row->Add(figures_.back(), wxSizerFlags(1).CenterVertical());
        Column().Add(row, wxSizerFlags().Expand().Border(wxTOP, FromDIP(6)));
    }
    Finish();
}

void DebugPage::Show(const ViewSettings& settings, const FrameFigures& figures, double framesPerSecond)
{
    levels_->SetValue(settings.levelColors);
    boxes_->SetValue(settings.nodeBoxes);
    freeze_->SetValue(settings.frozen);
    const std::string texts[] = {FixedText(framesPerSecond, 0), CountText(figures.triangles),
                                 figures.activeNodes > 0 ? CountText(figures.activeNodes) : "–",
                                 FixedText(figures.update, 1) + " ms", FixedText(figures.draw, 1) + " ms"};
    for (std::size_t i = 0; i < figures_.size(); ++i)
        figures_[i]->SetLabel(Wide(texts[i]));
}

}  // namespace tessara

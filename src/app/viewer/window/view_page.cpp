#include "app/viewer/window/view_page.h"

#include "app/viewer/window/window_commands.h"
#include "platform/system/number_text.h"

#include <wx/choice.h>

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

/// A value near a mark takes the mark, so that true proportions can be found again.
double Snapped(double value, double mark, double share)
{
    return std::fabs(value / mark - 1.0) < share ? mark : value;
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

}  // namespace tessara

#pragma once

#include "app/viewer/window/setting_controls.h"
#include "app/viewer/window/settings_listener.h"

#include <memory>

class wxChoice;

namespace tessara {

/// Detail, proportions, sun and air.
class ViewPage final : public SettingsPage {
public:
    ViewPage(wxWindow* parent, const SettingsListener& listener);
    void Show(const ViewSettings& settings);

private:
    std::unique_ptr<SliderField> detail_;
    std::unique_ptr<SliderField> exaggeration_;
    wxChoice* fill_;
    std::unique_ptr<SliderField> azimuth_;
    std::unique_ptr<SliderField> height_;
    std::unique_ptr<SliderField> fog_;
};

}  // namespace tessara

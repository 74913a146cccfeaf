#pragma once

#include "app/viewer/window/pages/settings_page.h"

namespace tessara {

/// Detail, proportions, sun and air.
class ViewPage final : public SettingsPage {
public:
    ViewPage(wxWindow* parent, const SettingsListener& listener) : SettingsPage(parent, listener)
    {
        AddGroup("Terrain", SettingGroup::Terrain);
        AddGroup("Light and air", SettingGroup::Light);
        Finish();
    }
};

}  // namespace tessara

#pragma once

class wxWindow;

namespace tessara {

class PicturePane;
class SettingsDesk;
class Viewer;

/// The pictures on the ground: the source texture and the detail texture, which the surface itself asks for.
class TextureDesk {
public:
    /// \param window,viewer,picture,settings outlive this object
    TextureDesk(wxWindow& window, Viewer& viewer, PicturePane& picture, SettingsDesk& settings);

    /// Whether a picture is stretched over the terrain.
    bool HasSource() const noexcept { return hasSource_; }

    void Import();
    void OpenDialog();

    /// Another terrain is open.
    void TerrainOpened();

private:
    wxWindow& window_;
    Viewer& viewer_;
    PicturePane& picture_;
    SettingsDesk& settings_;
    bool hasSource_ = false;
};

}  // namespace tessara

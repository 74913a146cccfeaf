#pragma once

#include "app/viewer/window/panes/gl_pane.h"

#include <wx/timer.h>

namespace tessara {

class TextPainter;
class Viewer;

/// The terrain as a map. A click goes there.
class MapPane final : public GlPane {
public:
    explicit MapPane(wxWindow* parent);

    /// \param viewer,text outlive their use; null ends it
    void Show(Viewer* viewer, TextPainter* text);

protected:
    void Draw(int width, int height, double factor) override;

private:
    void Go(const wxMouseEvent& event);

    Viewer* viewer_ = nullptr;
    TextPainter* text_ = nullptr;
    wxTimer renewal_;
};

}  // namespace tessara

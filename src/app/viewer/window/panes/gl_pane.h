#pragma once

#include "app/viewer/camera/camera_controller.h"

#include <wx/glcanvas.h>

#include <memory>
#include <string>

namespace tessara {

/// A pane of a window that OpenGL draws into. All panes of a window share one context, so that what was made for one
/// can be drawn into each.
class GlPane : public wxGLCanvas {
public:
    /// Whether the display can show such panes at all.
    static bool CanShow();

    explicit GlPane(wxWindow* parent);

    /// A context for this pane and its like. \return null where the driver makes none
    std::unique_ptr<wxGLContext> MakeContext();

    /// From now on the pane draws, in this context, which outlives its use; null ends it.
    void SetContext(wxGLContext* context) noexcept { context_ = context; }

    /// \return false where the pane isn't on the screen yet
    bool MakeCurrent();

    // Size in pixels, and how many of them make up one unit of the desktop.
    int PixelWidth() const;
    int PixelHeight() const;
    double Factor() const { return GetContentScaleFactor(); }

    /// Draws soon, once however often it is asked for.
    virtual void RequestDraw();

    /// Draws before it returns.
    void DrawNow();

protected:
    /// Draws into the frame, with the context current.
    virtual void Draw(int width, int height, double factor) = 0;

    /// The frame is on the screen.
    virtual void Drawn() {}

    PicturePoint PixelAt(const wxPoint& place) const;

private:
    wxGLContext* context_ = nullptr;
    bool drawing_ = false;
    bool requested_ = false;
};

}  // namespace tessara

#include "app/viewer/window/panes/gl_pane.h"

#include <gdk/gdkx.h>
#include <wx/dcclient.h>
#include <wx/log.h>

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {

wxGLAttributes Attributes()
{
    wxGLAttributes attributes;
    attributes.PlatformDefaults().RGBA().DoubleBuffer().Depth(24).EndList();
    return attributes;
}

}  // namespace

bool GlPane::CanShow()
{
    // The canvas speaks GLX, whatever kind of display the toolkit found.
    return GDK_IS_X11_DISPLAY(gdk_display_get_default()) && wxGLCanvas::IsDisplaySupported(Attributes());
}

GlPane::GlPane(wxWindow* parent)
    : wxGLCanvas(parent, Attributes(), wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS)
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        const wxPaintDC validated(this);
        DrawNow();
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        RequestDraw();
        event.Skip();
    });
}

std::unique_ptr<wxGLContext> GlPane::MakeContext()
{
    wxGLContextAttrs attributes;
    attributes.PlatformDefaults().CompatibilityProfile().OGLVersion(2, 1).EndList();
    const wxLogNull quiet;
    auto context = std::make_unique<wxGLContext>(this, nullptr, &attributes);
    return context->IsOK() ? std::move(context) : nullptr;
}

bool GlPane::MakeCurrent()
{
    return context_ && IsShownOnScreen() && SetCurrent(*context_);
}

int GlPane::PixelWidth() const
{
    return std::max(static_cast<int>(std::lround(GetClientSize().x * GetContentScaleFactor())), 1);
}

int GlPane::PixelHeight() const
{
    return std::max(static_cast<int>(std::lround(GetClientSize().y * GetContentScaleFactor())), 1);
}

PicturePoint GlPane::PixelAt(const wxPoint& place) const
{
    return {place.x * Factor(), place.y * Factor()};
}

/// A request that comes while a frame is drawn would get lost if the pane were marked at once.
void GlPane::RequestDraw()
{
    if (requested_)
        return;
    requested_ = true;
    CallAfter([this] {
        requested_ = false;
        Refresh(false);
    });
}

void GlPane::DrawNow()
{
    if (drawing_ || !MakeCurrent())
        return;
    drawing_ = true;
    Draw(PixelWidth(), PixelHeight(), Factor());
    SwapBuffers();
    drawing_ = false;
    Drawn();
}

}  // namespace tessara

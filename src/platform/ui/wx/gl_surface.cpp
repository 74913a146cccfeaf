#include "platform/ui/wx/gl_surface.h"

#include <gdk/gdkx.h>
#include <wx/dcclient.h>
#include <wx/glcanvas.h>
#include <wx/log.h>

#include <cmath>
#include <utility>

namespace tessara {

namespace {

class Canvas final : public wxGLCanvas {
public:
    using wxGLCanvas::wxGLCanvas;
    bool AcceptsFocus() const override { return false; }
};

}  // namespace

std::unique_ptr<GlSurface> GlSurface::Make(wxWindow* parent, const wxRect& place, std::function<void()> paint)
{
    // The canvas speaks GLX, whatever kind of display the toolkit found.
    if (!GDK_IS_X11_DISPLAY(gdk_display_get_default()))
        return nullptr;
    wxGLAttributes attributes;
    attributes.PlatformDefaults().RGBA().DoubleBuffer().Depth(24).EndList();
    if (!wxGLCanvas::IsDisplaySupported(attributes))
        return nullptr;
    auto* canvas = new Canvas(parent, attributes, wxID_ANY, place.GetPosition(), place.GetSize());
    canvas->Bind(wxEVT_PAINT, [canvas, paint = std::move(paint)](wxPaintEvent&) {
        const wxPaintDC validated(canvas);
        paint();
    });
    return std::unique_ptr<GlSurface>(new GlSurface(canvas));
}

GlSurface::GlSurface(wxGLCanvas* canvas) noexcept : canvas_(canvas) {}

GlSurface::~GlSurface()
{
    DestroyGl();
}

wxWindow& GlSurface::Window() const noexcept
{
    return *canvas_;
}

int GlSurface::Width() const
{
    return static_cast<int>(std::lround(canvas_->GetClientSize().x * canvas_->GetContentScaleFactor()));
}

int GlSurface::Height() const
{
    return static_cast<int>(std::lround(canvas_->GetClientSize().y * canvas_->GetContentScaleFactor()));
}

bool GlSurface::CreateGl()
{
    if (context_)
        return false;
    const ContextKeeper keeper;
    CurrentContext::Clear();
    wxGLContextAttrs attributes;
    attributes.PlatformDefaults().CompatibilityProfile().OGLVersion(2, 1).EndList();
    const wxLogNull quiet;
    auto context = std::make_unique<wxGLContext>(canvas_, nullptr, &attributes);
    if (!context->IsOK())
        return false;
    context_ = std::move(context);
    return true;
}

void GlSurface::DestroyGl()
{
    if (!context_)
        return;
    if (CurrentContext::Take() == own_)
        before_.Restore();
    const ContextKeeper keeper;
    CurrentContext::Clear();
    context_.reset();
    own_ = CurrentContext();
}

bool GlSurface::MakeCurrent()
{
    if (!context_)
        return false;
    const CurrentContext before = CurrentContext::Take();
    CurrentContext::Clear();
    if (!context_->SetCurrent(*canvas_)) {
        before.Restore();
        return false;
    }
    own_ = CurrentContext::Take();
    before_ = before;
    return true;
}

void GlSurface::ReleaseCurrent()
{
    before_.Restore();
}

/// With the context current: a driver may otherwise show a frame that it hasn't finished.
void GlSurface::SwapBuffers()
{
    const CurrentContext before = CurrentContext::Take();
    if (context_ && before != own_) {
        CurrentContext::Clear();
        context_->SetCurrent(*canvas_);
    }
    canvas_->SwapBuffers();
    before.Restore();
}

}  // namespace tessara

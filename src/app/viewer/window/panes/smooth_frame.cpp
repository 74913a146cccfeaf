#include "app/viewer/window/panes/smooth_frame.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string_view>

namespace tessara {

namespace {

/// Leaves time for the rest of the window at thirty frames a second.
constexpr double kBudget = 0.026;

/// Whether the processor does the work of the graphics card.
bool IsSoftware()
{
    const auto* name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    const std::string_view renderer = name ? name : "";
    return renderer.find("llvmpipe") != std::string_view::npos || renderer.find("softpipe") != std::string_view::npos ||
           renderer.find("swrast") != std::string_view::npos || renderer.find("SWR") != std::string_view::npos;
}

int Scaled(int size, double scale)
{
    return std::max(static_cast<int>(std::lround(size * scale)), 1);
}

}  // namespace

SmoothFrame::SmoothFrame(const GlFunctions& gl) : gl_(gl), governor_(kBudget), quick_(!IsSoftware()) {}

bool SmoothFrame::Begin(int width, int height)
{
    width_ = width;
    height_ = height;
    return Bind(smooth_, width, height, true);
}

bool SmoothFrame::BeginCoarse(int width, int height)
{
    const double scale = governor_.Scale();
    if (scale >= 1.0)
        return false;
    width_ = width;
    height_ = height;
    return Bind(coarse_, Scaled(width, scale), Scaled(height, scale), false);
}

bool SmoothFrame::Bind(std::unique_ptr<RenderTarget>& target, int width, int height, bool smooth)
{
    if (failed_)
        return false;
    try {
        if (!target || target->Width() != width || target->Height() != height) {
            target = nullptr;
            target = std::make_unique<RenderTarget>(gl_, width, height, smooth);
        }
    } catch (const std::runtime_error&) {
        failed_ = true;
        return false;
    }
    target->Bind();
    drawn_ = target.get();
    return true;
}

void SmoothFrame::Keep()
{
    if (quick_)
        return;
    RenderTarget* const drawn = drawn_;
    if (Bind(kept_, width_, height_, false))
        drawn->CopyTo(*kept_);
    drawn->Bind();
    drawn_ = drawn;
}

void SmoothFrame::End()
{
    Show(*drawn_);
}

bool SmoothFrame::ShowKept(int width, int height)
{
    if (!kept_ || kept_->Width() != width || kept_->Height() != height)
        return false;
    width_ = width;
    height_ = height;
    Show(*kept_);
    return true;
}

void SmoothFrame::Show(const RenderTarget& target) const
{
    target.Show(width_, height_);
    glViewport(0, 0, width_, height_);
}

}  // namespace tessara

#include "app/viewer/window/panes/smooth_frame.h"

#include <stdexcept>
#include <string_view>

namespace tessara {

namespace {

/// Whether the processor does the work of the graphics card.
bool IsSoftware()
{
    const auto* name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    const std::string_view renderer = name ? name : "";
    return renderer.find("llvmpipe") != std::string_view::npos || renderer.find("softpipe") != std::string_view::npos ||
           renderer.find("swrast") != std::string_view::npos || renderer.find("SWR") != std::string_view::npos;
}

}  // namespace

SmoothFrame::SmoothFrame(const GlFunctions& gl) : gl_(gl), quick_(!IsSoftware()) {}

bool SmoothFrame::Begin(int width, int height)
{
    if (failed_)
        return false;
    try {
        if (!target_ || target_->Width() != width || target_->Height() != height) {
            target_ = nullptr;
            target_ = std::make_unique<RenderTarget>(gl_, width, height, true);
        }
    } catch (const std::runtime_error&) {
        failed_ = true;
        return false;
    }
    target_->Bind();
    return true;
}

void SmoothFrame::End()
{
    target_->Show();
}

}  // namespace tessara

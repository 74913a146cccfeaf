#pragma once

#include "app/viewer/viewer.h"
#include "app/viewer/window/files/status_progress.h"

#include <wx/frame.h>

#include <functional>
#include <memory>

class wxGLContext;

namespace tessara {

class SmoothFrame;
class TextTextures;
class WindowPanes;

/// What draws into the panes of a window: the OpenGL context that they share, the viewer, and what belongs to that
/// context. It goes in an order that leaves nothing behind.
class ViewerStage {
public:
    /// Begins to draw; for when the panes are on the screen. \param frame,panes outlive this object
    /// \param changed hears of the viewer's changes \throws std::runtime_error for the user where that can't be done
    ViewerStage(wxFrame& frame, WindowPanes& panes, const ViewSettings& settings,
                std::function<void(const ViewerChange&)> changed);
    ViewerStage(const ViewerStage&) = delete;
    ViewerStage& operator=(const ViewerStage&) = delete;
    ~ViewerStage();

    tessara::Viewer& Viewer() const noexcept { return *viewer_; }

private:
    void TakeDown();

    WindowPanes& panes_;
    std::unique_ptr<wxGLContext> context_;
    ComPtr<StatusProgress> progress_;
    std::unique_ptr<tessara::Viewer> viewer_;
    std::unique_ptr<TextTextures> text_;
    std::unique_ptr<SmoothFrame> smooth_;
};

}  // namespace tessara

#include "app/viewer/window/panes/viewer_stage.h"

#include "app/viewer/window/panes/map_pane.h"
#include "app/viewer/window/panes/picture_pane.h"
#include "app/viewer/window/panes/smooth_frame.h"
#include "app/viewer/window/panes/text_textures.h"
#include "app/viewer/window/panes/window_panes.h"
#include "host/kvo_host.h"
#include "host/textures/texture_service.h"
#include "platform/gl/entry_point.h"

#include <stdexcept>
#include <utility>

namespace tessara {

ViewerStage::ViewerStage(wxFrame& frame, WindowPanes& panes, const ViewSettings& settings,
                         std::function<void(const ViewerChange&)> changed)
    : panes_(panes), context_(panes.Picture().MakeContext())
{
    if (!context_)
        throw std::runtime_error("The viewer needs OpenGL, which this display doesn't offer.");
    PicturePane& picture = panes.Picture();
    picture.SetContext(context_.get());
    panes.Map().SetContext(context_.get());
    picture.MakeCurrent();
    progress_ = MakeObject<StatusProgress>(frame, panes.Progress(), [&picture] { picture.DrawNow(); });
    const auto host = MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()),
                                          ComPtr<IProgressWindow>(progress_.Get()));
    const auto takeLight = [this] {
        if (viewer_ && panes_.Picture().MakeCurrent())
            viewer_->TakeLight();
    };
    try {
        viewer_ =
            std::make_unique<tessara::Viewer>(ComPtr<IKvoHost>(host.Get()), &wglGetProcAddress, settings,
                                              std::move(changed), [&frame, takeLight] { frame.CallAfter(takeLight); });
        text_ = std::make_unique<TextTextures>(frame.GetFont(), picture.Factor());
        smooth_ = std::make_unique<SmoothFrame>(viewer_->Gl());
    } catch (...) {
        TakeDown();
        throw;
    }
    picture.Show(viewer_.get(), text_.get(), smooth_.get());
    panes.Map().Show(viewer_.get(), text_.get());
}

ViewerStage::~ViewerStage()
{
    TakeDown();
}

void ViewerStage::TakeDown()
{
    if (progress_)
        progress_->Detach();
    // Textures go while their context is still there.
    panes_.Picture().MakeCurrent();
    panes_.Picture().Show(nullptr, nullptr, nullptr);
    panes_.Map().Show(nullptr, nullptr);
    smooth_ = nullptr;
    text_ = nullptr;
    viewer_ = nullptr;
    panes_.Picture().SetContext(nullptr);
    panes_.Map().SetContext(nullptr);
}

}  // namespace tessara

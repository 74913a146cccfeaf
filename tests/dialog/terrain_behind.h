#pragma once

#include "host/camera.h"
#include "host/host_classes.h"
#include "host/kvo_host.h"
#include "host/terrain_session.h"
#include "platform/gl/current_context.h"
#include "platform/gl/offscreen_context.h"
#include "platform/gl/render_target.h"
#include "support/scratch_folder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessara::test {

/// The progress display of a host that draws its terrain when it is asked to.
class ViewProgress;

/// A terrain of the real component, drawn off the screen by a host that isn't built on the desktop's toolkit, with the
/// installed system database and an empty one of the user's.
class TerrainBehind {
public:
    TerrainBehind();
    TerrainBehind(const TerrainBehind&) = delete;
    TerrainBehind& operator=(const TerrainBehind&) = delete;
    ~TerrainBehind();

    ITessara& Surface() const { return session_->Surface(); }

    /// Draws the terrain: three bytes a pixel.
    const std::vector<std::uint8_t>& Draw();

    /// The picture of the last drawing, whoever asked for it.
    const std::vector<std::uint8_t>& Picture() const { return picture_; }

    /// Whether the terrain's context is the current one.
    bool HasContext() const { return CurrentContext::Take() == context_; }

    /// Number of elements in a database.
    std::size_t Count(bool user) const;

    /// Writes a picture of one colour, or any bytes. \return the file's path
    std::string WriteImage(const std::string& name) const;
    std::string WriteFile(const std::string& name, const std::string& bytes) const
    {
        return folder_.Write(name, bytes);
    }

    std::vector<std::string> messages;  ///< shown by the progress display

private:
    friend class ViewProgress;

    ScratchFolder folder_;
    OffscreenContext offscreen_;
    CurrentContext context_ = CurrentContext::Take();
    GlFunctions gl_;
    std::unique_ptr<RenderTarget> target_;
    HostClasses classes_ = RegisterHostClasses();
    ComPtr<IKvoHost> host_;
    ComPtr<Camera> camera_ = MakeObject<Camera>();
    std::unique_ptr<TerrainSession> session_;
    std::vector<std::uint8_t> picture_;
};

}  // namespace tessara::test

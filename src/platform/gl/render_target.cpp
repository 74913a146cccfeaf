#include "platform/gl/render_target.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace tessara {

namespace {

constexpr GLsizei kSamples = 8;

/// Averages squares of scale x scale pixels, and puts the top row first.
std::vector<std::uint8_t> ScaleDown(const std::vector<std::uint8_t>& pixels, std::size_t width, std::size_t height,
                                    std::size_t scale)
{
    std::vector<std::uint8_t> result(width * height * 3);
    for (std::size_t y = 0; y < height; ++y) {
        std::uint8_t* row = result.data() + (height - 1 - y) * width * 3;
        for (std::size_t i = 0; i < width * 3; ++i) {
            std::size_t sum = scale * scale / 2;
            for (std::size_t dy = 0; dy < scale; ++dy) {
                for (std::size_t dx = 0; dx < scale; ++dx)
                    sum += pixels[((y * scale + dy) * width * scale + i / 3 * scale + dx) * 3 + i % 3];
            }
            row[i] = static_cast<std::uint8_t>(sum / (scale * scale));
        }
    }
    return result;
}

}  // namespace

RenderTarget::RenderTarget(const GlFunctions& gl, int width, int height, bool antialias)
    : gl_(gl), width_(width), height_(height)
{
    GLint samples = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &samples);
    samples = antialias ? std::min<GLint>(samples, kSamples) : 0;
    if (samples > 1 && Create(drawn_, samples, true) && Create(resolved_, 0, false))
        return;
    Destroy(drawn_);
    Destroy(resolved_);
    scale_ = antialias ? 2 : 1;
    if (Create(drawn_, 0, true))
        return;
    Destroy(drawn_);
    throw std::runtime_error("OpenGL can't hold a picture of " + std::to_string(width) + " x " +
                             std::to_string(height) + " pixels.");
}

RenderTarget::~RenderTarget()
{
    Destroy(drawn_);
    Destroy(resolved_);
}

void RenderTarget::Bind() const
{
    gl_.BindFramebuffer(GL_FRAMEBUFFER, drawn_.framebuffer);
    glViewport(0, 0, width_ * scale_, height_ * scale_);
}

/// Leaves the frame with one sample a pixel bound for reading.
void RenderTarget::Resolve() const
{
    gl_.BindFramebuffer(GL_READ_FRAMEBUFFER, drawn_.framebuffer);
    if (resolved_.framebuffer == 0)
        return;
    gl_.BindFramebuffer(GL_DRAW_FRAMEBUFFER, resolved_.framebuffer);
    gl_.BlitFramebuffer(0, 0, width_, height_, 0, 0, width_, height_, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    gl_.BindFramebuffer(GL_DRAW_FRAMEBUFFER, drawn_.framebuffer);
    gl_.BindFramebuffer(GL_READ_FRAMEBUFFER, resolved_.framebuffer);
}

void RenderTarget::Show(int width, int height) const
{
    CopyInto(0, width, height);
    gl_.BindFramebuffer(GL_FRAMEBUFFER, 0);
}

void RenderTarget::CopyTo(const RenderTarget& other) const
{
    CopyInto(other.drawn_.framebuffer, width_, height_);
    gl_.BindFramebuffer(GL_FRAMEBUFFER, drawn_.framebuffer);
}

void RenderTarget::CopyInto(GLuint framebuffer, int width, int height) const
{
    Resolve();
    const bool same = width == width_ * scale_ && height == height_ * scale_;
    gl_.BindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer);
    gl_.BlitFramebuffer(0, 0, width_ * scale_, height_ * scale_, 0, 0, width, height, GL_COLOR_BUFFER_BIT,
                        same ? GL_NEAREST : GL_LINEAR);
}

std::vector<std::uint8_t> RenderTarget::ReadPixels() const
{
    Resolve();
    const auto width = static_cast<std::size_t>(width_);
    const auto height = static_cast<std::size_t>(height_);
    const auto scale = static_cast<std::size_t>(scale_);
    std::vector<std::uint8_t> pixels(width * height * scale * scale * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width_ * scale_, height_ * scale_, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    gl_.BindFramebuffer(GL_READ_FRAMEBUFFER, drawn_.framebuffer);
    return ScaleDown(pixels, width, height, scale);
}

bool RenderTarget::Create(Frame& frame, GLsizei samples, bool withDepth) const
{
    GLint limit = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &limit);
    if (width_ > limit / scale_ || height_ > limit / scale_)
        return false;
    const auto attach = [&](GLuint& buffer, GLenum format, GLenum place) {
        gl_.GenRenderbuffers(1, &buffer);
        gl_.BindRenderbuffer(GL_RENDERBUFFER, buffer);
        gl_.RenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width_ * scale_, height_ * scale_);
        gl_.FramebufferRenderbuffer(GL_FRAMEBUFFER, place, GL_RENDERBUFFER, buffer);
    };
    gl_.GenFramebuffers(1, &frame.framebuffer);
    gl_.BindFramebuffer(GL_FRAMEBUFFER, frame.framebuffer);
    attach(frame.color, GL_RGBA8, GL_COLOR_ATTACHMENT0);
    if (withDepth)
        attach(frame.depth, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
    return glGetError() == GL_NO_ERROR && gl_.CheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void RenderTarget::Destroy(Frame& frame) const
{
    gl_.DeleteFramebuffers(1, &frame.framebuffer);
    gl_.DeleteRenderbuffers(1, &frame.color);
    gl_.DeleteRenderbuffers(1, &frame.depth);
    frame = {};
}

}  // namespace tessara

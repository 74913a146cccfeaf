#include "app/viewer/picture/frame_probe.h"

#include "host/detail_camera.h"
#include "surface/itessara.h"

#include <algorithm>

namespace tessara {

namespace {

constexpr char kVertexShader[] = R"(#version 120
varying vec3 captured;
void main()
{
    captured = gl_Vertex.xyz;
    gl_Position = vec4(0.0);
}
)";

}  // namespace

/// Transform feedback of OpenGL 3.0, and buffers.
struct FrameProbe::Functions {
    PFNGLTRANSFORMFEEDBACKVARYINGSPROC transformFeedbackVaryings = nullptr;
    PFNGLBEGINTRANSFORMFEEDBACKPROC beginTransformFeedback = nullptr;
    PFNGLENDTRANSFORMFEEDBACKPROC endTransformFeedback = nullptr;
    PFNGLBINDBUFFERBASEPROC bindBufferBase = nullptr;
    PFNGLGENBUFFERSPROC genBuffers = nullptr;
    PFNGLDELETEBUFFERSPROC deleteBuffers = nullptr;
    PFNGLBINDBUFFERPROC bindBuffer = nullptr;
    PFNGLBUFFERDATAPROC bufferData = nullptr;
    PFNGLGETBUFFERSUBDATAPROC getBufferSubData = nullptr;

    bool Load(GlLookup lookup)
    {
        bool complete = true;
        const auto find = [&](auto& function, const char* name) {
            function = reinterpret_cast<std::decay_t<decltype(function)>>(lookup(name));
            complete = complete && function;
        };
        find(transformFeedbackVaryings, "glTransformFeedbackVaryings");
        find(beginTransformFeedback, "glBeginTransformFeedback");
        find(endTransformFeedback, "glEndTransformFeedback");
        find(bindBufferBase, "glBindBufferBase");
        find(genBuffers, "glGenBuffers");
        find(deleteBuffers, "glDeleteBuffers");
        find(bindBuffer, "glBindBuffer");
        find(bufferData, "glBufferData");
        find(getBufferSubData, "glGetBufferSubData");
        return complete;
    }
};

FrameProbe::FrameProbe(const GlFunctions& gl, GlLookup lookup) : gl_(gl), counter_(gl)
{
    auto functions = std::make_unique<Functions>();
    if (!functions->Load(lookup))
        return;
    const GLuint shader = gl_.CreateShader(GL_VERTEX_SHADER);
    const char* source = kVertexShader;
    gl_.ShaderSource(shader, 1, &source, nullptr);
    gl_.CompileShader(shader);
    program_ = gl_.CreateProgram();
    gl_.AttachShader(program_, shader);
    const char* varying = "captured";
    functions->transformFeedbackVaryings(program_, 1, &varying, GL_INTERLEAVED_ATTRIBS);
    gl_.LinkProgram(program_);
    gl_.DeleteShader(shader);
    GLint linked = GL_FALSE;
    gl_.GetProgramiv(program_, GL_LINK_STATUS, &linked);
    if (linked == GL_FALSE)
        return;
    functions->genBuffers(1, &buffer_);
    feedback_ = std::move(functions);
}

FrameProbe::~FrameProbe()
{
    if (program_ != 0)
        gl_.DeleteProgram(program_);
    if (feedback_)
        feedback_->deleteBuffers(1, &buffer_);
}

std::vector<DrawnVertex> FrameProbe::Capture(ITessara& surface, DetailCamera& camera, std::uint32_t expected)
{
    std::vector<DrawnVertex> vertices;
    if (!feedback_)
        return vertices;
    const std::uint32_t capacity = std::max(expected, 1000u) * 5 / 4;
    const std::uint32_t drawn = CaptureInto(vertices, surface, camera, capacity);
    if (drawn > capacity)
        CaptureInto(vertices, surface, camera, drawn * 5 / 4);
    return vertices;
}

/// \return triangles that were drawn, of which `capacity` at most were captured
std::uint32_t FrameProbe::CaptureInto(std::vector<DrawnVertex>& vertices, ITessara& surface, DetailCamera& camera,
                                      std::uint32_t capacity)
{
    feedback_->bindBuffer(GL_TRANSFORM_FEEDBACK_BUFFER, buffer_);
    const std::size_t size = std::size_t{capacity} * 3 * sizeof(DrawnVertex);
    feedback_->bufferData(GL_TRANSFORM_FEEDBACK_BUFFER, static_cast<GLsizeiptr>(size), nullptr, GL_STREAM_READ);
    feedback_->bindBufferBase(GL_TRANSFORM_FEEDBACK_BUFFER, 0, buffer_);
    gl_.UseProgram(program_);
    glPushAttrib(GL_ENABLE_BIT | GL_POLYGON_BIT);
    glEnable(GL_RASTERIZER_DISCARD);
    counter_.Begin();
    feedback_->beginTransformFeedback(GL_TRIANGLES);
    surface.Draw3D(&camera);
    feedback_->endTransformFeedback();
    const std::uint32_t drawn = counter_.End();
    glDisable(GL_RASTERIZER_DISCARD);
    glPopAttrib();
    gl_.UseProgram(0);
    vertices.resize(std::size_t{std::min(drawn, capacity)} * 3);
    if (!vertices.empty())
        feedback_->getBufferSubData(GL_TRANSFORM_FEEDBACK_BUFFER, 0,
                                    static_cast<GLsizeiptr>(vertices.size() * sizeof(DrawnVertex)), vertices.data());
    feedback_->bindBufferBase(GL_TRANSFORM_FEEDBACK_BUFFER, 0, 0);
    return drawn;
}

}  // namespace tessara

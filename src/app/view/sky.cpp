#include "app/view/sky.h"

#include "app/view/atmosphere.h"
#include "host/camera.h"
#include "platform/gl/gl.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace tessara {

namespace {

constexpr int kBands = 96;

constexpr char kVertexShader[] = R"(#version 120
void main()
{
    gl_FrontColor = gl_Color;
    gl_Position = ftransform();
}
)";

/// Noise of one step hides the border between two steps.
constexpr char kFragmentShader[] = R"(#version 120
void main()
{
    float noise = fract(52.9829189 * fract(dot(gl_FragCoord.xy, vec2(0.06711056, 0.00583715))));
    gl_FragColor = vec4(gl_Color.rgb + (noise - 0.5) / 255.0, 1.0);
}
)";

/// Angle of the middle of the picture above the horizon.
double Pitch(const Camera& camera)
{
    return std::asin(std::clamp(camera.Forward().y, -1.0, 1.0));
}

/// Lifts the view of a camera that looks down so far that the horizon would leave the picture: a model of a landscape
/// stands before a sky in any case.
double HorizonShift(const Camera& camera)
{
    const double lowest = Pitch(camera) + 0.45 * std::atan(camera.HalfHeight());
    return std::max(-lowest, 0.0);
}

}  // namespace

Sky::Sky(const GlFunctions& gl, bool withShaders) : gl_(gl)
{
    if (!withShaders)
        return;
    try {
        dither_ = std::make_unique<ShaderProgram>(gl, kVertexShader, kFragmentShader);
    } catch (const std::runtime_error&) {
        dither_ = nullptr;  // the steps stay
    }
}

void Sky::Draw(const Atmosphere& atmosphere, const Camera& camera) const
{
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glPushAttrib(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT);
    glDisable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    const double shift = HorizonShift(camera);
    if (dither_)
        dither_->Use();
    glBegin(GL_QUAD_STRIP);
    for (int band = 0; band <= kBands; ++band) {
        const double y = 2.0 * band / kBands - 1.0;
        const double angle = Pitch(camera) + std::atan(y * camera.HalfHeight()) + shift;
        const Vector3 color = atmosphere.Sky(std::sin(angle));
        glColor3d(EncodeLight(color.x), EncodeLight(color.y), EncodeLight(color.z));
        glVertex2d(-1.0, y);
        glVertex2d(1.0, y);
    }
    glEnd();
    if (dither_)
        gl_.UseProgram(0);
    glPopAttrib();
}

}  // namespace tessara

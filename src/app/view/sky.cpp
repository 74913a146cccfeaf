#include "app/view/sky.h"

#include "app/view/atmosphere.h"
#include "host/camera.h"
#include "platform/gl/gl.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace tessara {

namespace {

/// Of the grid whose corners get the sky's colours.
constexpr int kColumns = 32;
constexpr int kRows = 64;

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

/// Direction that a place of the picture looks in, with the horizon lifted. \param x,y -1 to 1
Vector3 DirectionOf(const Camera& camera, double x, double y, double shift)
{
    const double pitch = Pitch(camera) + std::atan(y * camera.HalfHeight()) + shift;
    const double compass = std::atan2(camera.Right().z, camera.Right().x) + std::atan(x * camera.HalfWidth());
    return {std::cos(pitch) * std::sin(compass), std::sin(pitch), -std::cos(pitch) * std::cos(compass)};
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
    const auto corner = [&](int column, int row) {
        const double x = 2.0 * column / kColumns - 1.0;
        const double y = 2.0 * row / kRows - 1.0;
        const Vector3 color = atmosphere.Sky(DirectionOf(camera, x, y, shift));
        glColor3d(EncodeLight(color.x), EncodeLight(color.y), EncodeLight(color.z));
        glVertex2d(x, y);
    };
    for (int column = 0; column < kColumns; ++column) {
        glBegin(GL_QUAD_STRIP);
        for (int row = 0; row <= kRows; ++row) {
            corner(column, row);
            corner(column + 1, row);
        }
        glEnd();
    }
    if (dither_)
        gl_.UseProgram(0);
    glPopAttrib();
}

}  // namespace tessara

#include "app/viewer/picture/view_overlay.h"

#include "app/viewer/camera/camera_controller.h"
#include "app/viewer/picture/text_painter.h"
#include "app/viewer/picture/view_text.h"
#include "platform/gl/gl.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessara {

namespace {

constexpr double kMargin = 14.0;
constexpr double kLongestBar = 160.0;
constexpr double kNeedle = 20.0;

void Rectangle(double left, double top, double right, double bottom)
{
    glBegin(GL_QUADS);
    glVertex2d(left, top);
    glVertex2d(right, top);
    glVertex2d(right, bottom);
    glVertex2d(left, bottom);
    glEnd();
}

/// A triangle from the middle of the compass, turned by an angle.
void HalfNeedle(double x, double y, double angle, double length, double width)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    glBegin(GL_TRIANGLES);
    glVertex2d(x + s * length, y - c * length);
    glVertex2d(x + c * width, y + s * width);
    glVertex2d(x - c * width, y - s * width);
    glEnd();
}

}  // namespace

PixelSpace::PixelSpace(int width, int height)
{
    glPushAttrib(GL_ENABLE_BIT | GL_TRANSFORM_BIT | GL_CURRENT_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_COLOR_BUFFER_BIT |
                 GL_SCISSOR_BIT);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0.0, width, height, 0.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
}

PixelSpace::~PixelSpace()
{
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopAttrib();
}

void DrawScaleBar(int width, int height, double metresPerPixel, double factor, TextPainter& text)
{
    const double most = std::min(kLongestBar * factor, width * 0.4);
    if (!(metresPerPixel > 0.0) || most < 1.0)
        return;
    const double metres = RoundLength(most * metresPerPixel);
    const double length = metres / metresPerPixel;
    const double left = kMargin * factor;
    const double bottom = height - kMargin * factor;
    const double thick = 4.0 * factor;
    const PixelSpace space(width, height);
    glColor4f(0.0f, 0.0f, 0.0f, 0.75f);
    Rectangle(left - factor, bottom - thick - factor, left + length + factor, bottom + factor);
    for (int part = 0; part < 4; ++part) {
        part % 2 == 0 ? glColor3f(1.0f, 1.0f, 1.0f) : glColor3f(0.25f, 0.25f, 0.28f);
        Rectangle(left + length * part / 4, bottom - thick, left + length * (part + 1) / 4, bottom);
    }
    const std::string label = LengthText(metres);
    text.Write(static_cast<int>(left + (length - text.WidthOf(label)) / 2),
               static_cast<int>(bottom - thick - 3.0 * factor) - text.LineHeight(), label);
}

void DrawCompass(int width, int height, double azimuth, double factor, TextPainter& text)
{
    const PixelSpace space(width, height);
    const double size = kNeedle * factor;
    const double x = width - kMargin * factor - size;
    const double y = kMargin * factor + size + text.LineHeight() * 0.6;
    const double angle = -azimuth * std::numbers::pi / 180.0;
    glColor4f(0.0f, 0.0f, 0.0f, 0.35f);
    glBegin(GL_TRIANGLE_FAN);
    constexpr int kCorners = 48;
    for (int i = 0; i < kCorners; ++i) {
        const double turn = 2.0 * std::numbers::pi * i / kCorners;
        glVertex2d(x + std::cos(turn) * size * 1.15, y + std::sin(turn) * size * 1.15);
    }
    glEnd();
    glColor3f(0.90f, 0.25f, 0.20f);
    HalfNeedle(x, y, angle, size * 0.95, size * 0.28);
    glColor3f(0.92f, 0.92f, 0.92f);
    HalfNeedle(x, y, angle + std::numbers::pi, size * 0.95, size * 0.28);
    const double distance = size * 1.15 + text.LineHeight() * 0.55;
    const std::string label = "N";
    text.Write(static_cast<int>(x + std::sin(angle) * distance - text.WidthOf(label) * 0.5),
               static_cast<int>(y - std::cos(angle) * distance - text.LineHeight() * 0.5), label);
}

double MetresPerPixel(const CameraController& camera, int width)
{
    const double distance = Length(camera.Focus() - camera.Position());
    const double across = 2.0 * distance * std::tan(camera.FieldOfView() * std::numbers::pi / 360.0);
    return across / std::max(width, 1);
}

}  // namespace tessara

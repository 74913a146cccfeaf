#pragma once

namespace tessara {

class CameraController;
class TextPainter;

/// Makes pixels of the viewport the unit of drawing for as long as it lives, from the left and the top edge.
class PixelSpace {
public:
    PixelSpace(int width, int height);
    PixelSpace(const PixelSpace&) = delete;
    PixelSpace& operator=(const PixelSpace&) = delete;
    ~PixelSpace();
};

/// A scale bar in the lower left corner of a picture. \param metresPerPixel where it holds \param factor pixels of the
/// picture for one of the desktop's
void DrawScaleBar(int width, int height, double metresPerPixel, double factor, TextPainter& text);

/// A compass in the upper right corner. \param azimuth direction that the picture looks in, in degrees
void DrawCompass(int width, int height, double azimuth, double factor, TextPainter& text);

/// Metres across a pixel in the middle of a camera's picture.
double MetresPerPixel(const CameraController& camera, int width);

}  // namespace tessara

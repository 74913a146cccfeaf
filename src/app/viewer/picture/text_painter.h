#pragma once

#include <string>

namespace tessara {

/// Writes text over a picture, in pixels from its left and top edge, with the matrices and the context of the picture.
class TextPainter {
public:
    virtual int WidthOf(const std::string& text) = 0;
    virtual int LineHeight() = 0;

    /// \param x,y left upper corner
    virtual void Write(int x, int y, const std::string& text) = 0;

protected:
    ~TextPainter() = default;
};

}  // namespace tessara

#pragma once

#include "app/viewer/picture/text_painter.h"
#include "platform/gl/gl.h"

#include <wx/font.h>

#include <map>

namespace tessara {

/// Writes text into an OpenGL picture with the desktop's font, white with a dark shade around it. Keeps what it wrote
/// last. Belongs to one OpenGL context.
class TextTextures final : public TextPainter {
public:
    /// \param factor pixels of the picture for one of the desktop
    TextTextures(const wxFont& font, double factor);
    TextTextures(const TextTextures&) = delete;
    TextTextures& operator=(const TextTextures&) = delete;
    ~TextTextures();

    int WidthOf(const std::string& text) override;
    int LineHeight() override;
    void Write(int x, int y, const std::string& text) override;

private:
    struct Line {
        GLuint texture = 0;
        int width = 0;
        int height = 0;
    };

    const Line& Find(const std::string& text);
    Line Make(const std::string& text) const;
    void Clear();

    wxFont font_;
    std::map<std::string, Line> lines_;
};

}  // namespace tessara

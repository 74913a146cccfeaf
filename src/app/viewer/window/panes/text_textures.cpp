#include "app/viewer/window/panes/text_textures.h"

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

#include <algorithm>
#include <vector>

namespace tessara {

namespace {

constexpr std::size_t kMostLines = 64;
constexpr int kShade = 2;  // pixels of shade around the letters

}  // namespace

TextTextures::TextTextures(const wxFont& font, double factor) : font_(font)
{
    font_.SetFractionalPointSize(font.GetFractionalPointSize() * factor);
}

TextTextures::~TextTextures()
{
    Clear();
}

void TextTextures::Clear()
{
    for (const auto& [text, line] : lines_)
        glDeleteTextures(1, &line.texture);
    lines_.clear();
}

int TextTextures::WidthOf(const std::string& text)
{
    return Find(text).width;
}

int TextTextures::LineHeight()
{
    return Find("N").height;
}

const TextTextures::Line& TextTextures::Find(const std::string& text)
{
    const auto found = lines_.find(text);
    if (found != lines_.end())
        return found->second;
    if (lines_.size() >= kMostLines)
        Clear();
    return lines_[text] = Make(text);
}

/// Brightness of the letters becomes opacity; the brightest neighbour within reach makes the shade.
TextTextures::Line TextTextures::Make(const std::string& text) const
{
    const wxString label = wxString::FromUTF8(text);
    wxMemoryDC measure;
    measure.SetFont(font_);
    const wxSize size = measure.GetTextExtent(label) + wxSize(2 * kShade, 2 * kShade);
    wxBitmap bitmap(size.x, size.y, 24);
    {
        wxMemoryDC dc(bitmap);
        dc.SetBackground(*wxBLACK_BRUSH);
        dc.Clear();
        dc.SetFont(font_);
        dc.SetTextForeground(*wxWHITE);
        dc.DrawText(label, kShade, kShade);
    }
    const wxImage image = bitmap.ConvertToImage();
    const auto bright = [&](int x, int y) -> int {
        return x < 0 || y < 0 || x >= size.x || y >= size.y ? 0 : image.GetGreen(x, y);
    };
    std::vector<GLubyte> pixels;
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            int shade = 0;
            for (int dy = -kShade; dy <= kShade; ++dy) {
                for (int dx = -kShade; dx <= kShade; ++dx)
                    shade = std::max(shade, bright(x + dx, y + dy) - 45 * (std::abs(dx) + std::abs(dy)));
            }
            const int letter = bright(x, y);
            pixels.push_back(static_cast<GLubyte>(letter));
            pixels.push_back(static_cast<GLubyte>(std::max(letter, shade)));
        }
    }
    Line line{0, size.x, size.y};
    glGenTextures(1, &line.texture);
    glBindTexture(GL_TEXTURE_2D, line.texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE_ALPHA, size.x, size.y, 0, GL_LUMINANCE_ALPHA, GL_UNSIGNED_BYTE,
                 pixels.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glBindTexture(GL_TEXTURE_2D, 0);
    return line;
}

void TextTextures::Write(int x, int y, const std::string& text)
{
    const Line line = Find(text);
    glPushAttrib(GL_ENABLE_BIT | GL_TEXTURE_BIT | GL_CURRENT_BIT);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, line.texture);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glBegin(GL_QUADS);
    for (const auto& corner : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
        glTexCoord2i(corner.first, corner.second);
        glVertex2i(x + corner.first * line.width, y + corner.second * line.height);
    }
    glEnd();
    glPopAttrib();
}

}  // namespace tessara

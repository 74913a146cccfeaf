#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tessara {

class PolygonText;

/// Reads the triangles of a frame's text: lines "x<tab>y<tab>z", three lines a triangle.
class TriangleReader {
public:
    using Vertex = std::array<float, 3>;
    using Triangle = std::array<Vertex, 3>;

    /// \param text must outlive this object
    explicit TriangleReader(const PolygonText& text) : text_(text) {}

    /// \return false at the end \throws std::runtime_error for text that ends within a triangle or holds anything but
    ///         numbers
    bool Next(Triangle& triangle);

private:
    bool NextVertex(Vertex& vertex);
    bool NextLine(std::string_view& line);

    const PolygonText& text_;
    std::size_t piece_ = 0;
    std::size_t at_ = 0;
};

}  // namespace tessara

#pragma once

#include <array>
#include <fstream>
#include <string>

namespace tessara {

/// Reads the triangles of a polygon dump: lines "x<tab>y<tab>z", three lines a triangle.
class TriangleReader {
public:
    using Vertex = std::array<float, 3>;
    using Triangle = std::array<Vertex, 3>;

    /// \throws std::runtime_error for a file that can't be read
    explicit TriangleReader(const std::string& path);

    /// \return false at the end of the file \throws std::runtime_error for a file that ends within a triangle or holds
    ///         anything but numbers, as after a full disk
    bool Next(Triangle& triangle);

private:
    bool NextVertex(Vertex& vertex);
    [[noreturn]] void FailDamaged() const;

    std::string path_;
    std::ifstream file_;
    std::string line_;
};

}  // namespace tessara

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

/// The triangles of a frame as the component writes them: one vertex a line, three lines a triangle, x, y and z in tree
/// units with the normalised height in y.
class PolygonText {
public:
    void Append(std::string_view text);

    /// Pieces of the text, in order. All but the last one end with a line.
    const std::vector<std::string>& Pieces() const noexcept { return pieces_; }

    std::uint64_t Triangles() const noexcept { return lines_ / 3; }

private:
    void Begin();

    std::vector<std::string> pieces_;  // a large frame has room nowhere as a whole
    std::uint64_t lines_ = 0;
};

}  // namespace tessara

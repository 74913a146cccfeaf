#include "app/output/triangle_reader.h"

#include "app/output/polygon_text.h"

#include <charconv>
#include <stdexcept>
#include <system_error>

namespace tessara {

namespace {

[[noreturn]] void FailDamaged()
{
    throw std::runtime_error("The terrain component gave something other than triangles.");
}

}  // namespace

bool TriangleReader::Next(Triangle& triangle)
{
    if (!NextVertex(triangle[0]))
        return false;
    if (!NextVertex(triangle[1]) || !NextVertex(triangle[2]))
        FailDamaged();
    return true;
}

bool TriangleReader::NextLine(std::string_view& line)
{
    const auto& pieces = text_.Pieces();
    while (piece_ < pieces.size() && at_ == pieces[piece_].size()) {
        ++piece_;
        at_ = 0;
    }
    if (piece_ == pieces.size())
        return false;
    const std::string_view rest = std::string_view(pieces[piece_]).substr(at_);
    const std::size_t length = rest.find('\n');
    if (length == std::string_view::npos)
        FailDamaged();
    line = rest.substr(0, length);
    at_ += length + 1;
    return true;
}

bool TriangleReader::NextVertex(Vertex& vertex)
{
    std::string_view line;
    if (!NextLine(line))
        return false;
    const char* at = line.data();
    const char* end = at + line.size();
    for (float& number : vertex) {
        const auto parsed = std::from_chars(at, end, number);
        if (parsed.ec != std::errc())
            FailDamaged();
        at = parsed.ptr;
        if (at != end)
            ++at;
    }
    if (at != end)
        FailDamaged();
    return true;
}

}  // namespace tessara

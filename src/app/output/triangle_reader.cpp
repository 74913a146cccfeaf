#include "app/output/triangle_reader.h"

#include <charconv>
#include <stdexcept>
#include <system_error>

namespace tessara {

TriangleReader::TriangleReader(const std::string& path) : path_(path), file_(path, std::ios::binary)
{
    if (!file_)
        throw std::runtime_error("The file " + path + " can't be read.");
}

bool TriangleReader::Next(Triangle& triangle)
{
    if (!NextVertex(triangle[0]))
        return false;
    if (!NextVertex(triangle[1]) || !NextVertex(triangle[2]))
        FailDamaged();
    return true;
}

bool TriangleReader::NextVertex(Vertex& vertex)
{
    if (!std::getline(file_, line_))
        return false;
    const char* at = line_.data();
    const char* end = at + line_.size();
    for (float& number : vertex) {
        const auto parsed = std::from_chars(at, end, number);
        if (parsed.ec != std::errc())
            FailDamaged();
        at = parsed.ptr;
        if (at != end)
            ++at;
    }
    if (at != end || file_.eof())  // every line ends with a line feed
        FailDamaged();
    return true;
}

void TriangleReader::FailDamaged() const
{
    throw std::runtime_error("The triangles in " + path_ + " are incomplete: is the disk full?");
}

}  // namespace tessara

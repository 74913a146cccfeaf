#include "app/output/mesh_file.h"

#include "app/output/polygon_text.h"
#include "app/output/triangle_mesh.h"
#include "platform/system/replacement_stream.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <charconv>
#include <cstring>
#include <filesystem>

namespace tessara {

namespace {

/// Puts text and little-endian numbers into a stream.
class Writer {
public:
    explicit Writer(std::ostream& stream) : stream_(stream) {}

    void Text(std::string_view text) { stream_.write(text.data(), static_cast<std::streamsize>(text.size())); }

    /// The number as a float has it, with as few digits as tell it.
    void Number(double value)
    {
        char digits[64];
        const auto end =
            std::to_chars(digits, digits + sizeof digits, static_cast<float>(value), std::chars_format::fixed);
        Text({digits, static_cast<std::size_t>(end.ptr - digits)});
    }

    void Integer(std::uint64_t value) { Text(std::to_string(value)); }

    template <class T>
    void Binary(T value)
    {
        char bytes[sizeof(T)];
        std::memcpy(bytes, &value, sizeof value);
        if constexpr (std::endian::native == std::endian::big)
            std::reverse(bytes, bytes + sizeof bytes);
        stream_.write(bytes, sizeof bytes);
    }

    void Point(const Vector3& point)
    {
        for (const double number : {point.x, point.y, point.z})
            Binary(static_cast<float>(number));
    }

private:
    std::ostream& stream_;
};

void WriteObj(Writer& out, const TriangleMesh& mesh, std::string_view units)
{
    out.Text("# ");
    out.Text(units);
    out.Text("\n");
    for (const Vector3& point : mesh.points) {
        out.Text("v");
        for (const double number : {point.x, point.y, point.z}) {
            out.Text(" ");
            out.Number(number);
        }
        out.Text("\n");
    }
    for (const TriangleMesh::Triangle& triangle : mesh.triangles) {
        out.Text("f");
        for (const std::uint32_t corner : triangle) {
            out.Text(" ");
            out.Integer(std::uint64_t{corner} + 1);
        }
        out.Text("\n");
    }
}

void WritePly(Writer& out, const TriangleMesh& mesh, std::string_view units)
{
    out.Text("ply\nformat binary_little_endian 1.0\ncomment ");
    out.Text(units);
    out.Text("\nelement vertex ");
    out.Integer(mesh.points.size());
    out.Text("\nproperty float x\nproperty float y\nproperty float z\nelement face ");
    out.Integer(mesh.triangles.size());
    out.Text("\nproperty list uchar int vertex_indices\nend_header\n");
    for (const Vector3& point : mesh.points)
        out.Point(point);
    for (const TriangleMesh::Triangle& triangle : mesh.triangles) {
        out.Binary(std::uint8_t{3});
        for (const std::uint32_t corner : triangle)
            out.Binary(static_cast<std::int32_t>(corner));
    }
}

void WriteStl(Writer& out, const TriangleMesh& mesh, std::string_view units)
{
    std::string head(units);
    head.resize(80, ' ');
    out.Text(head);
    out.Binary(static_cast<std::uint32_t>(mesh.triangles.size()));
    for (const auto& [a, b, c] : mesh.triangles) {
        const Vector3 corners[3] = {mesh.points[a], mesh.points[b], mesh.points[c]};
        out.Point(Normalised(Cross(corners[1] - corners[0], corners[2] - corners[0])));
        for (const Vector3& corner : corners)
            out.Point(corner);
        out.Binary(std::uint16_t{0});
    }
}

}  // namespace

MeshFormat MeshFormatOf(const std::string& path)
{
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    if (ending == ".obj")
        return MeshFormat::Obj;
    if (ending == ".ply")
        return MeshFormat::Ply;
    return ending == ".stl" ? MeshFormat::Stl : MeshFormat::Text;
}

void WriteMesh(const TriangleMesh& mesh, const std::string& path, MeshFormat format, std::string_view units)
{
    ReplacementStream file(path);
    Writer out(file.Stream());
    if (format == MeshFormat::Obj)
        WriteObj(out, mesh, units);
    else if (format == MeshFormat::Ply)
        WritePly(out, mesh, units);
    else
        WriteStl(out, mesh, units);
    file.PutInPlace();
}

void WritePolygons(const PolygonText& polygons, const std::string& path)
{
    ReplacementStream file(path);
    for (const std::string& piece : polygons.Pieces())
        file.Stream() << piece;
    file.PutInPlace();
}

}  // namespace tessara

#include "app/output/mesh_file.h"

#include "app/output/polygon_text.h"
#include "app/output/triangle_reader.h"
#include "host/ground_frame.h"
#include "platform/system/replacement_stream.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <unordered_map>
#include <vector>

namespace tessara {

namespace {

using Vertex = TriangleReader::Vertex;
using Triangle = TriangleReader::Triangle;

/// Puts text and little-endian numbers into a stream.
class Writer {
public:
    explicit Writer(std::ostream& stream) : stream_(stream) {}

    void Text(std::string_view text) { stream_.write(text.data(), static_cast<std::streamsize>(text.size())); }

    void Number(double value)
    {
        char digits[64];
        const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 3);
        Text({digits, static_cast<std::size_t>(end.ptr - digits)});
    }

    void Integer(std::uint64_t value)
    {
        char digits[20];
        const auto end = std::to_chars(digits, digits + sizeof digits, value);
        Text({digits, static_cast<std::size_t>(end.ptr - digits)});
    }

    template <class T>
    void Binary(T value)
    {
        char bytes[sizeof(T)];
        std::memcpy(bytes, &value, sizeof value);
        if constexpr (std::endian::native == std::endian::big)
            std::reverse(bytes, bytes + sizeof bytes);
        stream_.write(bytes, sizeof bytes);
    }

private:
    std::ostream& stream_;
};

/// Triangles over a list of vertices without repeats.
struct IndexedMesh {
    std::vector<Vertex> vertices;
    std::vector<std::uint32_t> indices;
};

struct VertexHash {
    std::size_t operator()(const Vertex& vertex) const noexcept
    {
        std::size_t hash = 0;
        for (const float number : vertex)
            hash = (hash ^ std::bit_cast<std::uint32_t>(number)) * 0x9E3779B97F4A7C15u;
        return hash ^ hash >> 32;
    }
};

IndexedMesh ReadIndexed(const PolygonText& polygons)
{
    IndexedMesh mesh;
    std::unordered_map<Vertex, std::uint32_t, VertexHash> known;
    TriangleReader reader(polygons);
    for (Triangle triangle; reader.Next(triangle);) {
        for (const Vertex& vertex : triangle) {
            const auto [entry, isNew] = known.try_emplace(vertex, static_cast<std::uint32_t>(mesh.vertices.size()));
            if (isNew)
                mesh.vertices.push_back(vertex);
            mesh.indices.push_back(entry->second);
        }
    }
    return mesh;
}

/// Tree units and a normalised height to metres on the map.
Vector3 ToMap(const GroundFrame& ground, const Vertex& vertex)
{
    const Vector3 units = ground.DrawUnits();
    return {static_cast<double>(vertex[0]) * units.x, ground.Depth() - static_cast<double>(vertex[2]) * units.z,
            ground.Metres(static_cast<double>(vertex[1]))};
}

std::vector<Vector3> PointsOf(const IndexedMesh& mesh, const GroundFrame& ground)
{
    std::vector<Vector3> points;
    points.reserve(mesh.vertices.size());
    for (const Vertex& vertex : mesh.vertices)
        points.push_back(ToMap(ground, vertex));
    return points;
}

void WriteObj(Writer& out, const PolygonText& polygons, const GroundFrame& ground)
{
    const IndexedMesh mesh = ReadIndexed(polygons);
    out.Text("# metres: x east and y north of the south-west corner, z the height\n");
    for (const Vector3& point : PointsOf(mesh, ground)) {
        out.Text("v ");
        out.Number(point.x);
        out.Text(" ");
        out.Number(point.y);
        out.Text(" ");
        out.Number(point.z);
        out.Text("\n");
    }
    for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
        out.Text(i % 3 == 0 ? "f " : " ");
        out.Integer(std::uint64_t{mesh.indices[i]} + 1);
        if (i % 3 == 2)
            out.Text("\n");
    }
}

void WritePoint(Writer& out, const Vector3& point)
{
    out.Binary(static_cast<float>(point.x));
    out.Binary(static_cast<float>(point.y));
    out.Binary(static_cast<float>(point.z));
}

void WritePly(Writer& out, const PolygonText& polygons, const GroundFrame& ground)
{
    const IndexedMesh mesh = ReadIndexed(polygons);
    const std::uint64_t triangles = mesh.indices.size() / 3;
    out.Text("ply\nformat binary_little_endian 1.0\n"
             "comment metres: x east and y north of the south-west corner, z the height\nelement vertex ");
    out.Integer(mesh.vertices.size());
    out.Text("\nproperty float x\nproperty float y\nproperty float z\nelement face ");
    out.Integer(triangles);
    out.Text("\nproperty list uchar int vertex_indices\nend_header\n");
    for (const Vector3& point : PointsOf(mesh, ground))
        WritePoint(out, point);
    for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
        if (i % 3 == 0)
            out.Binary(std::uint8_t{3});
        out.Binary(static_cast<std::int32_t>(mesh.indices[i]));
    }
}

void WriteStl(Writer& out, const PolygonText& polygons, const GroundFrame& ground)
{
    std::string header = "metres: x east and y north of the south-west corner, z the height";
    header.resize(80, ' ');
    out.Text(header);
    out.Binary(static_cast<std::uint32_t>(polygons.Triangles()));
    Triangle triangle;
    for (TriangleReader reader(polygons); reader.Next(triangle);) {
        const Vector3 points[3] = {ToMap(ground, triangle[0]), ToMap(ground, triangle[1]), ToMap(ground, triangle[2])};
        WritePoint(out, Normalised(Cross(points[1] - points[0], points[2] - points[0])));
        for (const Vector3& point : points)
            WritePoint(out, point);
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

void WriteMesh(const PolygonText& polygons, const std::string& path, const GroundFrame& ground)
{
    ReplacementStream file(path);
    Writer out(file.Stream());
    switch (MeshFormatOf(path)) {
    case MeshFormat::Obj:
        WriteObj(out, polygons, ground);
        break;
    case MeshFormat::Ply:
        WritePly(out, polygons, ground);
        break;
    case MeshFormat::Stl:
        WriteStl(out, polygons, ground);
        break;
    case MeshFormat::Text:
        for (const std::string& piece : polygons.Pieces())
            out.Text(piece);
    }
    file.PutInPlace();
}

}  // namespace tessara

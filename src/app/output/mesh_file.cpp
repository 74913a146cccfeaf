#include "app/output/mesh_file.h"

#include "app/output/output_file.h"
#include "app/output/triangle_reader.h"
#include "host/ground_frame.h"

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

IndexedMesh ReadIndexed(const std::string& dumpPath)
{
    IndexedMesh mesh;
    std::unordered_map<Vertex, std::uint32_t, VertexHash> known;
    TriangleReader reader(dumpPath);
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

std::uint64_t WriteObj(Writer& out, const std::string& dumpPath, const GroundFrame& ground)
{
    const IndexedMesh mesh = ReadIndexed(dumpPath);
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
    return mesh.indices.size() / 3;
}

void WritePoint(Writer& out, const Vector3& point)
{
    out.Binary(static_cast<float>(point.x));
    out.Binary(static_cast<float>(point.y));
    out.Binary(static_cast<float>(point.z));
}

std::uint64_t WritePly(Writer& out, const std::string& dumpPath, const GroundFrame& ground)
{
    const IndexedMesh mesh = ReadIndexed(dumpPath);
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
    return triangles;
}

/// The count stands before the triangles, so the dump is read twice.
std::uint64_t WriteStl(Writer& out, const std::string& dumpPath, const GroundFrame& ground)
{
    std::uint32_t count = 0;
    Triangle triangle;
    for (TriangleReader counted(dumpPath); counted.Next(triangle);)
        ++count;
    std::string header = "metres: x east and y north of the south-west corner, z the height";
    header.resize(80, ' ');
    out.Text(header);
    out.Binary(count);
    for (TriangleReader reader(dumpPath); reader.Next(triangle);) {
        const Vector3 points[3] = {ToMap(ground, triangle[0]), ToMap(ground, triangle[1]), ToMap(ground, triangle[2])};
        WritePoint(out, Normalised(Cross(points[1] - points[0], points[2] - points[0])));
        for (const Vector3& point : points)
            WritePoint(out, point);
        out.Binary(std::uint16_t{0});
    }
    return count;
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

std::uint64_t WriteMesh(const std::string& dumpPath, const std::string& path, MeshFormat format,
                        const GroundFrame& ground)
{
    OutputFile file(path);
    Writer out(file.Stream());
    std::uint64_t triangles = 0;
    switch (format) {
    case MeshFormat::Obj:
        triangles = WriteObj(out, dumpPath, ground);
        break;
    case MeshFormat::Ply:
        triangles = WritePly(out, dumpPath, ground);
        break;
    default:
        triangles = WriteStl(out, dumpPath, ground);
    }
    file.Commit();
    return triangles;
}

}  // namespace tessara

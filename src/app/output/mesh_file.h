#pragma once

#include <string>
#include <string_view>

namespace tessara {

class PolygonText;
struct TriangleMesh;

/// What a file of triangles looks like, by the ending of its name.
enum class MeshFormat { Text, Obj, Ply, Stl };

/// \return Obj for ".obj", Ply for ".ply", Stl for ".stl", in small or capital letters, and Text for everything else
MeshFormat MeshFormatOf(const std::string& path);

/// Writes triangles, in full or not at all. Obj and ply share points; ply and stl are binary.
/// \param format not Text \param units what the numbers are, for the file's head \throws FileError
void WriteMesh(const TriangleMesh& mesh, const std::string& path, MeshFormat format, std::string_view units);

/// Writes the triangles of a frame as they are, likewise.
void WritePolygons(const PolygonText& polygons, const std::string& path);

}  // namespace tessara

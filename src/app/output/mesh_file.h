#pragma once

#include <string>

namespace tessara {

class GroundFrame;
class PolygonText;

/// What a file of triangles looks like, by the ending of its name.
enum class MeshFormat { Text, Obj, Ply, Stl };

/// \return Obj for ".obj", Ply for ".ply", Stl for ".stl", in small or capital letters, and Text for everything else
MeshFormat MeshFormatOf(const std::string& path);

/// Writes the triangles of a frame, in full or not at all, in the form that the file's ending says. Text stays as it
/// is. In the other forms coordinates are metres: x east and y north of the terrain's south-west corner, z the height.
/// Triangles are counter-clockwise seen from above. Obj and ply share vertices, ply and stl are binary.
/// \throws std::runtime_error with one sentence for the user
void WriteMesh(const PolygonText& polygons, const std::string& path, const GroundFrame& ground);

}  // namespace tessara

#pragma once

#include <cstdint>
#include <string>

namespace tessara {

class GroundFrame;

/// What a file of triangles looks like, by the ending of its name.
enum class MeshFormat { Text, Obj, Ply, Stl };

/// \return Obj for ".obj", Ply for ".ply", Stl for ".stl", in small or capital letters, and Text for everything else
MeshFormat MeshFormatOf(const std::string& path);

/// Makes a mesh file of a polygon dump, in full or not at all. Coordinates are metres: x east and y north of the
/// terrain's south-west corner, z the height. Triangles are counter-clockwise seen from above. Obj and ply share
/// vertices, ply and stl are binary.
/// \param format not Text \return the number of triangles \throws std::runtime_error with one sentence for the user
std::uint64_t WriteMesh(const std::string& dumpPath, const std::string& path, MeshFormat format,
                        const GroundFrame& ground);

}  // namespace tessara

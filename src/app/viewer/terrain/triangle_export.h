#pragma once

#include <cstdint>
#include <string>

namespace tessara {

class Camera;
class TerrainDocument;

/// Adapts a terrain of its own to a camera and writes the triangles, as the program's command for that does.
/// \return the number of triangles \throws std::runtime_error with one sentence that names the file
std::uint64_t ExportTriangles(const TerrainDocument& document, const std::string& path, Camera& camera,
                              double levelOfDetail);

}  // namespace tessara

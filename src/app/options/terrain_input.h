#pragma once

#include "host/elevation/elevation_file.h"

#include <string>

namespace CLI {
class App;
}

namespace tessara {

class ConsoleProgress;

/// Which terrain a command works on.
struct TerrainInput {
    std::string file;  ///< empty for the built-in sample
    ElevationReadOptions reading;
    double exaggeration = 1.0;
};

/// Adds FILE and its options to a command. \param input outlives the command
void AddTerrainInput(CLI::App& command, TerrainInput& input);

/// Reads the file, or makes the sample, and tells the user what had to be done to it.
/// \throws std::runtime_error with one sentence that names the file
ElevationData LoadTerrain(const TerrainInput& input, ConsoleProgress& progress);

/// How messages call the terrain.
std::string NameOf(const TerrainInput& input);

}  // namespace tessara

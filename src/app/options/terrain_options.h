#pragma once

namespace CLI {
class App;
}

namespace tessara {

struct TerrainInput;

/// Adds FILE and its options to a command. \param input outlives the command
void AddTerrainInput(CLI::App& command, TerrainInput& input);

/// Refuses options that have no effect on what is to be read. \throws CLI::ValidationError
void RefuseIdleOptions(const TerrainInput& input);

}  // namespace tessara

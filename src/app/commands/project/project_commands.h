#pragma once

namespace CLI {
class App;
class Validator;
}  // namespace CLI

namespace tessara {

/// Each adds one command below "tessara project".
void AddProjectCreate(CLI::App& project);
void AddProjectInfo(CLI::App& project);
void AddProjectSet(CLI::App& project);
void AddProjectExport(CLI::App& project);

/// Accepts the names that a terrain can have.
CLI::Validator GoodTerrainName();

}  // namespace tessara

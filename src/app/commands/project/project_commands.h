#pragma once

namespace CLI {
class App;
}

namespace tessara {

/// Each adds one command below "tessara project".
void AddProjectCreate(CLI::App& project);
void AddProjectInfo(CLI::App& project);
void AddProjectSet(CLI::App& project);
void AddProjectExport(CLI::App& project);

}  // namespace tessara

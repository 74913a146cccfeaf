#pragma once

namespace CLI {
class App;
}

namespace tessara {

/// Each adds one command of the program, with its options, and what it does. A command that can't be carried out throws
/// std::runtime_error with one sentence for the user.
void AddRenderCommand(CLI::App& program);
void AddDumpCommand(CLI::App& program);
void AddInfoCommand(CLI::App& program);
void AddSampleCommand(CLI::App& program);
void AddMapCommand(CLI::App& program);
void AddTexturesCommand(CLI::App& program);
void AddViewCommand(CLI::App& program);
void AddProjectCommand(CLI::App& program);

/// Adds the commands register, unregister and classes.
void AddRegistrationCommands(CLI::App& program);

}  // namespace tessara

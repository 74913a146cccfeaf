#include "app/commands/commands.h"
#include "app/options/usage_message.h"
#include "host/host_classes.h"
#include "platform/system/terminal_text.h"
#include "platform/system/unfinished_files.h"
#include "platform/ui/window_system.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string>

namespace tessara {

namespace {

constexpr int kUsageError = 2;

constexpr char kFooter[] = R"(
Examples:
  tessara view alps.tif                  a window to explore a file
  tessara render -o sample.png           a picture of the built-in sample
  tessara render alps.tif -o alps.png    a picture of a file
  tessara dump alps.tif -o alps.stl      its triangles, for a 3D printer
  tessara info alps.tif                  what the file holds
  tessara project create alps.tif -o alps.tessara --sun 135,30
                                         a project, which every command reads

tessara COMMAND --help tells the options of a command. A command that writes a
file prints the file's path as its last line.

Exit codes: 0 done, 1 the command failed (the reason stands on the standard
error output), 2 wrong usage.)";

int Run(int argc, char** argv)
{
    const HostClasses classes = RegisterHostClasses();
    // Commands run unattended; the one that opens a window asks for the desktop's windows itself.
    SetWindowSystem(&NullWindowSystem());
    CLI::App program("Tessara shows terrain from elevation files, with as much detail as the view needs.", "tessara");
    program.get_formatter()->column_width(28);
    program.get_formatter()->label("SUBCOMMAND", "COMMAND");
    program.set_version_flag("--version", "tessara " TESSARA_VERSION, "Print the version and exit");
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.failure_message(UsageMessage);
    program.require_subcommand(1);
    AddViewCommand(program);
    AddRenderCommand(program);
    AddDumpCommand(program);
    AddInfoCommand(program);
    AddSampleCommand(program);
    AddMapCommand(program);
    AddTexturesCommand(program);
    AddRegistrationCommands(program);
    AddProjectCommand(program);
    program.footer(kFooter);
    if (argc < 2) {
        std::cerr << program.help();
        return kUsageError;
    }
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? EXIT_SUCCESS : kUsageError;
    }
    return EXIT_SUCCESS;
}

}  // namespace

}  // namespace tessara

int main(int argc, char** argv)
{
    tessara::RemoveUnfinishedFilesWhenInterrupted();
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is told in words
    try {
        const int code = tessara::Run(argc, argv);
        std::cout.flush();
        if (std::cout)
            return code;
        std::cerr << "tessara: The standard output can't be written: is the disk full?\n";
    } catch (const std::bad_alloc&) {
        std::cerr << "tessara: There is not enough memory.\n";
    } catch (const std::exception& error) {
        std::cerr << "tessara: " << tessara::TerminalText(error.what()) << '\n';
    }
    return EXIT_FAILURE;
}

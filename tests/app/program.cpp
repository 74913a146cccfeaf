#include "app/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>

extern char** environ;

namespace tessara {

namespace fs = std::filesystem;

ProgramRun RunTessara(const std::vector<std::string>& arguments, const std::string& device, std::atomic<pid_t>* started)
{
    const ScratchFolder scratch;
    const std::string output = device.empty() ? scratch / "output" : device;
    const std::string errors = scratch / "errors";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT, 0600);
    std::vector<std::string> words = {TESSARA_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    ProgramRun run;
    pid_t process = 0;
    int status = 0;
    const bool runs = posix_spawn(&process, TESSARA_PROGRAM, &actions, nullptr, argv.data(), environ) == 0;
    if (started)
        *started = process;
    if (runs && waitpid(process, &status, 0) == process && WIFEXITED(status))
        run.exitCode = WEXITSTATUS(status);
    posix_spawn_file_actions_destroy(&actions);
    if (device.empty())
        run.output = ReadText(output);
    run.errors = ReadText(errors);
    return run;
}

ScratchFolder::ScratchFolder()
{
    static std::atomic<int> next{0};
    path_ = fs::temp_directory_path() / ("tessara-test-" + std::to_string(getpid()) + "-" + std::to_string(next++));
    fs::create_directory(path_);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::vector<std::string> ScratchFolder::List() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string ReadText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void WriteText(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace tessara

#pragma once

#include <sys/types.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <vector>

namespace tessara {

/// What a run of the program left.
struct ProgramRun {
    int exitCode = -1;  ///< -1 when it didn't end by itself
    std::string output;
    std::string errors;
};

/// Runs the program. \param output where its standard output goes; empty stands for the result
/// \param started gets the process as soon as there is one; may be null
ProgramRun RunTessara(const std::vector<std::string>& arguments, const std::string& output = {},
                      std::atomic<pid_t>* started = nullptr);

/// A folder of its own for a test, gone at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    /// Path of a file in the folder.
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    /// Names of the files in it, sorted.
    std::vector<std::string> List() const;

private:
    std::filesystem::path path_;
};

std::string ReadText(const std::string& path);
void WriteText(const std::string& path, const std::string& text);

/// Writes an ESRI ASCII grid with cells of 10 m. \param height its column and row give a height in metres
template <class Function>
void WriteGrid(const std::string& path, int columns, int rows, Function height)
{
    std::string text = "ncols " + std::to_string(columns) + "\nnrows " + std::to_string(rows) +
                       "\nxllcorner 0\nyllcorner 0\ncellsize 10\nNODATA_value -9999\n";
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x)
            text += std::to_string(height(x, y)) + " ";
        text += "\n";
    }
    WriteText(path, text);
}

}  // namespace tessara

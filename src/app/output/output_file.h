#pragma once

#include "app/output/temporary_file.h"

#include <fstream>
#include <string>

namespace tessara {

/// A binary file that appears under its name in full or not at all.
class OutputFile {
public:
    /// \throws std::runtime_error with one sentence that names the file
    explicit OutputFile(const std::string& path);

    std::ostream& Stream() noexcept { return stream_; }

    /// Gives the file its name. \throws std::runtime_error, as when the disk was full
    void Commit();

private:
    std::string path_;
    TemporaryFile file_;
    std::ofstream stream_;
};

}  // namespace tessara

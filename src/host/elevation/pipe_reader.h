#pragma once

#include "host/elevation/progress_callback.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessara {

/// Why a pipe can't be read, to follow the name of the file.
class PipeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a pipe to its end.
/// \param path of the pipe; empty for the process's standard input \param patience seconds that a pipe may be without
/// anybody who writes to it before the first byte comes \param waiting called with 0 now and then; may throw
/// \throws PipeError
std::vector<std::uint8_t> ReadPipe(const std::string& path, double patience, const ProgressCallback& waiting);

}  // namespace tessara

#pragma once

#include <stdexcept>

namespace tessara {

/// A file of the host's own that can't be opened, read or written: one sentence that names the file.
class StorageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tessara

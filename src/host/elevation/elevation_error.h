#pragma once

#include <stdexcept>

namespace tessara {

/// An elevation file that can't be read or written. what() is one sentence for the user that names the file.
class ElevationError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tessara

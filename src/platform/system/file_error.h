#pragma once

#include "../com/types.h"

#include <stdexcept>
#include <string>

namespace tessara {

/// A file that can't be written: one sentence that names it.
class TESSARA_EXPORT FileError : public std::runtime_error {
public:
    /// \param path as the user knows it \param reason a clause, as in "it is a folder"
    FileError(const std::string& path, const std::string& reason)
        : std::runtime_error("The file " + path + " can't be written: " + reason + "."), reason_(reason)
    {
    }

    const std::string& Reason() const noexcept { return reason_; }

private:
    std::string reason_;
};

}  // namespace tessara

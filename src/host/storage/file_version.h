#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tessara {

/// Tells whether a file is still the one that it was: another one in its place, and any write to it, make it differ.
struct FileVersion {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    std::int64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    bool operator==(const FileVersion&) const = default;
};

/// \return nothing where there is no such file
std::optional<FileVersion> VersionOf(const std::string& path);

}  // namespace tessara

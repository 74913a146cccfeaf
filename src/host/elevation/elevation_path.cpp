#include "host/elevation/elevation_path.h"

#include "host/elevation/elevation_error.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace tessara {
namespace {

[[noreturn]] void Fail(const std::string& path, const std::string& reason)
{
    throw ElevationError("The file " + path + " can't be read: " + reason + ".");
}

/// Whether every virtual file system that the path names, one within another, is an archive.
bool NamesArchivesOnly(std::string_view path)
{
    constexpr std::string_view kMark = "/vsi";
    for (std::size_t at = path.find(kMark); at != std::string_view::npos; at = path.find(kMark, at + 1)) {
        const std::string_view name = path.substr(at + kMark.size(), path.find('/', at + 1) - at - kMark.size());
        if (name != "zip" && name != "gzip" && name != "tar" && name != "mem")
            return false;
    }
    return true;
}

void CheckOpens(const std::string& path)
{
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        Fail(path, "it can't be opened (" + std::generic_category().message(errno) + ")");
    if (file.peek() == std::ifstream::traits_type::eof())
        Fail(path, "it is empty");
}

}  // namespace

std::string CheckedElevationPath(const std::string& path)
{
    if (path.empty())
        throw ElevationError("An elevation file without a name can't be read.");
    if (path.find("://") != std::string::npos || (path.starts_with("/vsi") && !NamesArchivesOnly(path)))
        Fail(path, "only files of this machine are read, no addresses on a network");
    if (path.starts_with("/vsi"))
        return path;
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        Fail(path, "there is no such file");
    if (error)
        Fail(path, "it can't be opened (" + error.message() + ")");
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (std::filesystem::is_directory(status)) {
        if (std::filesystem::is_empty(path, error) || error)
            Fail(path, "it is a folder without elevation files");
        return absolute.string();
    }
    if (!std::filesystem::is_regular_file(status))
        Fail(path, "it is not a regular file");
    CheckOpens(path);
    // With its full path no file's name can be taken for one of GDAL's own notations.
    return error ? path : absolute.string();
}

}  // namespace tessara

#include "host/elevation/elevation_input.h"

#include "host/elevation/elevation_error.h"
#include "host/elevation/pipe_reader.h"

#include <cpl_vsi.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <new>
#include <string_view>
#include <system_error>

namespace tessara {
namespace {

/// GDAL's virtual file systems that stay on this machine.
constexpr std::string_view kLocalSystems[] = {"zip", "7z", "rar", "gzip", "tar", "mem", "subfile", "sparse", "crypt"};

/// Drivers in whose notation a grid of a file is named, as in NETCDF:"file.nc":height.
constexpr std::string_view kGridDrivers[] = {"NETCDF",    "HDF5", "HDF4_SDS", "HDF4_EOS", "HDF4_GR",
                                             "GTIFF_DIR", "BAG",  "GPKG",     "NITF_IM",  "ZARR"};

constexpr std::string_view kStandardInput = "/vsistdin/";

[[noreturn]] void Fail(const std::string& path, const std::string& reason)
{
    throw ElevationError("The file " + path + " can't be read: " + reason + ".");
}

template <std::size_t kCount>
bool IsAmong(const std::string_view (&list)[kCount], std::string_view word)
{
    return std::find(std::begin(list), std::end(list), word) != std::end(list);
}

bool IsAddress(std::string_view path)
{
    return path.starts_with("http://") || path.starts_with("https://") || path.starts_with("ftp://");
}

/// Whether one of the virtual file systems that the path names, one within another, is on a network.
bool NamesNetwork(std::string_view path)
{
    constexpr std::string_view kMark = "/vsi";
    for (std::size_t at = path.find(kMark); at != std::string_view::npos; at = path.find(kMark, at + 1)) {
        const std::size_t name = at + kMark.size();
        if (!IsAmong(kLocalSystems, path.substr(name, path.find_first_of("/{", name) - name)))
            return true;
    }
    return false;
}

void CheckOpens(const std::string& path, const std::string& shownPath)
{
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        Fail(shownPath, "it can't be opened (" + std::generic_category().message(errno) + ")");
    if (file.peek() == std::ifstream::traits_type::eof())
        Fail(shownPath, "it is empty");
}

/// With its full path no file's name can be taken for one of GDAL's own notations.
std::string Absolute(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.string();
}

/// The same notation with the full path of its file. \return empty where the path is no such notation
std::string GridNotation(const std::string& path)
{
    const std::size_t colon = path.find(':');
    if (colon == std::string::npos || !IsAmong(kGridDrivers, std::string_view(path).substr(0, colon)) ||
        std::filesystem::exists(path))
        return {};
    std::size_t begin = colon + 1;
    // GTIFF_DIR:2:file.tif and the like have a number first.
    if (const std::size_t digits = path.find_first_not_of("0123456789", begin);
        digits != begin && digits != std::string::npos && path[digits] == ':')
        begin = digits + 1;
    const bool isQuoted = path[begin] == '"';
    const std::size_t end = isQuoted ? path.find('"', begin + 1) : path.find(':', begin);
    const std::string file =
        path.substr(begin + (isQuoted ? 1 : 0), end == std::string::npos ? end : end - begin - (isQuoted ? 1 : 0));
    if (file.starts_with("/vsi"))
        return path;
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        Fail(path, "there is no such file");
    CheckOpens(file, path);
    const std::string rest = end == std::string::npos ? "" : path.substr(end + (isQuoted ? 1 : 0));
    const std::string quote = isQuoted ? "\"" : "";
    return path.substr(0, begin) + quote + Absolute(file) + quote + rest;
}

}  // namespace

ElevationInput::ElevationInput(const std::string& path, double patience, const ProgressCallback& waiting)
{
    if (path.empty())
        throw ElevationError("An elevation file without a name can't be read.");
    if (path == kStandardInput) {
        TakePipe({}, path, patience, waiting);
        return;
    }
    if (IsAddress(path) || path.starts_with("/vsi")) {
        name_ = IsAddress(path) ? "/vsicurl/" + path : path;
        isOnNetwork_ = NamesNetwork(name_);
        return;
    }
    name_ = GridNotation(path);
    if (!name_.empty()) {
        isOnNetwork_ = NamesNetwork(name_);
        return;
    }
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        Fail(path, "there is no such file");
    if (error)
        Fail(path, "it can't be opened (" + error.message() + ")");
    if (std::filesystem::is_fifo(status)) {
        TakePipe(path, path, patience, waiting);
        return;
    }
    if (std::filesystem::is_directory(status)) {
        if (std::filesystem::is_empty(path, error) || error)
            Fail(path, "it is a folder without elevation files");
    } else if (!std::filesystem::is_regular_file(status)) {
        Fail(path, "it is neither a file nor a folder nor a pipe");
    } else {
        CheckOpens(path, path);
    }
    name_ = Absolute(path);
}

void ElevationInput::TakePipe(const std::string& path, const std::string& shownPath, double patience,
                              const ProgressCallback& waiting)
{
    try {
        bytes_ = ReadPipe(path, patience, waiting);
    } catch (const PipeError& error) {
        Fail(shownPath, error.what());
    }
    if (bytes_.empty())
        Fail(shownPath, "it is empty");
    static std::atomic<unsigned> count{0};
    name_ = "/vsimem/tessara-pipe-" + std::to_string(++count);
    VSILFILE* file = VSIFileFromMemBuffer(name_.c_str(), bytes_.data(), bytes_.size(), FALSE);
    if (file == nullptr)
        throw std::bad_alloc();
    VSIFCloseL(file);
}

ElevationInput::~ElevationInput()
{
    if (!bytes_.empty())
        VSIUnlink(name_.c_str());
}

}  // namespace tessara

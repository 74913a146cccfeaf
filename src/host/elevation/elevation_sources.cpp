#include "host/elevation/elevation_sources.h"

#include "host/elevation/gdal_session.h"

#include <cpl_string.h>
#include <gdal_priv.h>

#include <filesystem>
#include <string_view>
#include <system_error>

namespace tessara {
namespace {

namespace fs = std::filesystem;

/// Where a path may begin or end within a name, as in /vsizip/archive.zip/heights.tif or NETCDF:"heights.nc":band.
constexpr std::string_view kMarks = "/:\"{}";

bool IsMark(char c)
{
    return kMarks.find(c) != std::string_view::npos;
}

/// Adds every part of a name, from mark to mark, that is a file.
void AddParts(const std::string& name, std::vector<std::string>& files)
{
    std::error_code error;
    if (fs::is_regular_file(name, error))
        files.push_back(name);
    std::vector<std::size_t> starts = {0};
    for (std::size_t end = 0; end <= name.size(); ++end) {
        if (end < name.size() && !IsMark(name[end]))
            continue;
        for (const std::size_t start : starts) {
            const std::string part = name.substr(start, end - start);
            if (part != name && fs::is_regular_file(part, error))
                files.push_back(part);
        }
        starts.push_back(end);      // an absolute path begins with the mark
        starts.push_back(end + 1);  // a relative one behind it
    }
}

}  // namespace

std::vector<std::string> FilesBehind(const std::string& name)
{
    std::vector<std::string> files;
    if (name.empty())
        return files;
    AddParts(name, files);
    std::error_code error;
    if (files.empty() && !fs::is_directory(name, error))
        return files;  // a stream, which must not be read for this
    const GdalSession quiet;
    const GDALDatasetUniquePtr dataset(GDALDataset::Open(name.c_str(), GDAL_OF_RASTER));
    const CPLStringList parts(dataset ? dataset->GetFileList() : nullptr);
    for (int i = 0; i < parts.size(); ++i)
        AddParts(parts[i], files);
    return files;
}

}  // namespace tessara

#pragma once

#include "host/elevation/elevation_data.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessara {

/// What a raster file to be made holds.
struct RasterSpec {
    std::string driver = "GTiff";
    std::string type = "Float32";
    int width = 0;
    int height = 0;
    std::vector<double> values;  ///< of the first band, in rows
    int bands = 1;
    double bandStep = 0.0;  ///< added to the values from one band to the next
    std::optional<double> noData;
    std::string unit;
    double scale = 1.0;
    double offset = 0.0;
    std::vector<double> transform;  ///< GDAL's six numbers, or none
    std::string reference;          ///< "EPSG:4326" and the like, or none
    bool palette = false;
    bool alpha = false;  ///< the last band says where there is data
    std::vector<std::string> options;
};

/// A temporary folder of its own, and raster files in it, made by GDAL and not by the reader under test.
class RasterFixture : public testing::Test {
protected:
    RasterFixture();
    ~RasterFixture() override;

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::vector<std::string> FolderEntries() const;

    /// \return the path
    std::string Make(const std::string& name, const RasterSpec& spec) const;
    /// A square GeoTIFF of bytes that claims its size but holds next to nothing.
    std::string MakeHollow(const std::string& name, int size, const std::vector<std::string>& options) const;
    std::string MakeText(const std::string& name, const std::string& text) const;

    /// Cuts a file off behind a share of its length.
    static void Truncate(const std::string& path, double share);

private:
    std::filesystem::path folder_;
};

/// width * height values by column and row.
std::vector<double> GridOf(int width, int height, const std::function<double(int x, int y)>& value);

/// Whether one of the notes holds a text.
testing::AssertionResult HasNote(const ElevationData& data, const std::string& text);

}  // namespace tessara

#pragma once

#include "host/elevation/gdal_session.h"
#include "host/elevation/height_unit.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class GDALDataset;
class GDALRasterBand;

namespace tessara {

/// The band of an elevation file that holds its heights.
class RasterSource {
public:
    /// \param noData a value of the file that means no data, besides what the file says
    /// \throws ElevationError for anything that is not an elevation file
    RasterSource(const std::string& path, std::optional<double> noData);
    ~RasterSource();
    RasterSource(const RasterSource&) = delete;
    RasterSource& operator=(const RasterSource&) = delete;

    /// Cells of the file.
    int Width() const;
    int Height() const;

    /// Must come before the first row. Reads from the smallest overview of the file, if it has any, that still has a
    /// size of width by height.
    /// \throws ElevationError when what is to be read is beyond reason in size
    void Prepare(int width, int height);

    /// Cells of what is read: the file's, or an overview's.
    int ReadWidth() const;
    int ReadHeight() const;

    /// Rows that are read best at once.
    int RowsAtOnce() const;

    /// Reads whole rows in the order of the file, in metres, not a number where there is no data.
    /// \param heights room for ReadWidth() * rows
    /// \throws ElevationError when the file is damaged
    void ReadRows(int first, int rows, float* heights);

    /// Sentences on how the heights were understood. Complete after the last row.
    std::vector<std::string> Notes() const;

    /// The value that stands for no data in the file, where it has one. Complete after the last row.
    std::optional<double> NoDataMark() const;

    /// The unit of the file's heights. What is read is in metres.
    const HeightUnit& Unit() const noexcept { return unit_; }

    GDALDataset& Dataset() const { return *dataset_; }

private:
    struct CloseDataset {
        void operator()(GDALDataset* dataset) const;
    };

    void Open();
    void OpenFirstPart();
    void ChooseBand();
    void LearnUnit();
    void CheckSize() const;
    float HeightOf(double value);
    bool IsUndeclaredMark(double value);
    [[noreturn]] void Fail(const std::string& reason) const;

    std::string path_;
    std::string name_;  // for GDAL
    GdalSession session_;
    std::unique_ptr<GDALDataset, CloseDataset> dataset_;
    GDALRasterBand* band_ = nullptr;    // of the dataset
    GDALRasterBand* reader_ = nullptr;  // the band, or an overview of it
    std::optional<double> noData_;
    bool declaresNoData_ = false;
    HeightUnit unit_;
    double scale_ = 1.0;  // metres = value * scale_ + offset_
    double offset_ = 0.0;
    std::vector<double> values_;
    std::vector<std::uint8_t> mask_;
    std::optional<double> undeclaredMark_;  // seen in the data
    std::vector<std::string> notes_;
};

}  // namespace tessara

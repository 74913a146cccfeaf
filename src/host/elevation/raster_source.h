#pragma once

#include "host/elevation/grid_frame.h"
#include "host/elevation/grid_part.h"
#include "host/elevation/height_unit.h"
#include "host/elevation/raster_file.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessara {

/// The heights of an elevation file, row by row and in metres.
class RasterSource {
public:
    /// \throws ElevationError for anything that is not an elevation file
    RasterSource(const std::string& path, const ElevationReadOptions& options, const ProgressCallback& waiting);

    /// Must come before the first row. Reads from the smallest overview of the file, if it has any, whose cells still
    /// are no fewer than width by height where the window lies.
    /// \param window in the order of the file, within it
    /// \return what is read of the whole file: the window, or as many whole cells of an overview as it touches
    /// \throws ElevationError when what is to be read is beyond reason in size
    GridFrame Prepare(const CellWindow& window, const GridFrame& whole, int width, int height, bool mayUseOverviews);

    /// Cells of what is read: the file's, or an overview's.
    int ReadWidth() const { return read_.columns; }
    int ReadHeight() const { return read_.rows; }

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

    GDALDataset& Dataset() const { return file_.Dataset(); }

    /// \throws ElevationError always, which names the file
    [[noreturn]] void Fail(const std::string& reason) const { file_.Fail(reason); }

private:
    void LearnUnit(const std::string& told);
    void CheckSize() const;
    float HeightOf(double value);
    bool IsUndeclaredMark(double value);

    RasterFile file_;
    GDALRasterBand* reader_;  // the file's band, or an overview of it
    CellWindow read_;         // of the reader's cells
    std::optional<double> noData_;
    bool declaresNoData_;
    HeightUnit unit_;
    double scale_ = 1.0;  // metres = value * scale_ + offset_
    double offset_ = 0.0;
    std::vector<double> values_;
    std::vector<std::uint8_t> mask_;
    std::optional<double> undeclaredMark_;  // seen in the data
};

}  // namespace tessara

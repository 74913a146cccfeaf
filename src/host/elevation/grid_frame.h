#pragma once

#include <array>

class GDALDataset;

namespace tessara {

/// What a grid's cells, or some of them, cover in the coordinates of their file.
struct GridFrame {
    bool isKnown = false;
    bool isTurned = false;     ///< against north; then west and north mean nothing
    bool flipRows = false;     ///< the first row is the southernmost
    bool flipColumns = false;  ///< the first column is the easternmost
    double columns = 0.0;      ///< whole ones, except where an overview's cells don't end where the file's do
    double rows = 0.0;
    double west = 0.0;  ///< edges of the outermost cells
    double north = 0.0;
    double stepX = 1.0;                 ///< from a column to the next, positive
    double stepY = 1.0;                 ///< from a row to the next, positive
    std::array<double, 6> transform{};  ///< the place of the first cell's corner, as GDAL has it

    double Width() const { return stepX * columns; }
    double Height() const { return stepY * rows; }
    double East() const { return west + Width(); }
    double South() const { return north - Height(); }
    double MiddleX() const { return west + 0.5 * Width(); }
    double MiddleY() const { return north - 0.5 * Height(); }

    /// That of a part. \param column,row of its first cell, in the order of the file
    GridFrame Part(double column, double row, double partColumns, double partRows) const;
};

/// That of a file's grid; not known where the file doesn't say or says nothing that can be.
GridFrame FrameOf(GDALDataset& dataset);

}  // namespace tessara

#include "host/elevation/grid_frame.h"

#include <gdal_priv.h>

#include <algorithm>
#include <cmath>

namespace tessara {
namespace {

/// \param transform all finite
GridFrame MakeFrame(const std::array<double, 6>& transform, double columns, double rows)
{
    GridFrame frame;
    frame.transform = transform;
    frame.columns = columns;
    frame.rows = rows;
    const auto [left, columnX, rowX, top, columnY, rowY] = transform;
    frame.stepX = std::hypot(columnX, columnY);
    frame.stepY = std::hypot(rowX, rowY);
    frame.isKnown = frame.stepX > 0.0 && frame.stepY > 0.0 && std::isfinite(frame.Width() + frame.Height());
    // Less than half a cell over the whole grid is no turn.
    frame.isTurned = frame.isKnown && (std::abs(columnY) * columns > 0.5 * std::abs(rowY) ||
                                       std::abs(rowX) * rows > 0.5 * std::abs(columnX));
    if (frame.isTurned) {
        frame.flipRows = columnX * rowY - rowX * columnY > 0.0;  // a mirror image otherwise
        return frame;
    }
    frame.flipColumns = columnX < 0.0;
    frame.flipRows = rowY > 0.0;
    frame.west = frame.flipColumns ? left - frame.Width() : left;
    frame.north = frame.flipRows ? top + frame.Height() : top;
    return frame;
}

}  // namespace

GridFrame GridFrame::Part(double column, double row, double partColumns, double partRows) const
{
    if (!isKnown) {
        GridFrame part = *this;
        part.columns = partColumns;
        part.rows = partRows;
        return part;
    }
    std::array<double, 6> moved = transform;
    moved[0] += column * transform[1] + row * transform[2];
    moved[3] += column * transform[4] + row * transform[5];
    return MakeFrame(moved, partColumns, partRows);
}

GridFrame FrameOf(GDALDataset& dataset)
{
    const double columns = dataset.GetRasterXSize();
    const double rows = dataset.GetRasterYSize();
    std::array<double, 6> transform{};
    if (dataset.GetGeoTransform(transform.data()) == CE_None &&
        std::all_of(transform.begin(), transform.end(), [](double value) { return std::isfinite(value); }))
        return MakeFrame(transform, columns, rows);
    GridFrame unknown;
    unknown.columns = columns;
    unknown.rows = rows;
    return unknown;
}

}  // namespace tessara

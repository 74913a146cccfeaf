#pragma once

#include "vector3.h"

#include <utility>

namespace tessara {

struct ElevationData;

/// Where a terrain lies on the ground and how it is drawn. Three spaces meet here:
///
/// - map: metres east and north of the south-west grid point, and the height in metres of the elevation file;
/// - true space, in which cameras stand: metres, x east and z south of the north-west grid point, y up from the lowest
///   point, heights multiplied by the exaggeration;
/// - draw space, in which the surface draws: x in columns, z in rows, y in columns.
class GroundFrame {
public:
    /// \param exaggeration 1 shows true proportions
    GroundFrame(const ElevationData& data, double exaggeration);

    /// \param range heights in metres that the normalised elevations 0 and 1 stand for, in place of the data's
    GroundFrame(const ElevationData& data, double exaggeration, const std::pair<float, float>& range);

    void SetExaggeration(double exaggeration) noexcept { exaggeration_ = exaggeration; }
    double Exaggeration() const noexcept { return exaggeration_; }

    /// Distance between the first and the last column, and between the first and the last row, in metres.
    double Width() const noexcept { return (columns_ - 1) * spacingX_; }
    double Depth() const noexcept { return (rows_ - 1) * spacingY_; }

    /// Drawn height of the highest point above the lowest one, in true space.
    double Relief() const noexcept { return range_ * exaggeration_; }

    /// Unit of draw space along its axes, in metres of true space.
    Vector3 DrawUnits() const noexcept { return {spacingX_, spacingX_, spacingY_}; }

    /// Drawn height of the normalised elevation 1.0 in draw space: what ITessara::SetElevationScale takes. Positive for
    /// a flat terrain too, so that the drawing transform stays invertible.
    double ElevationScale() const noexcept { return range_ > 0.0 ? Relief() / spacingX_ : 1.0; }

    /// Normalised elevation of a height in metres, 0 on a flat terrain.
    double Normalise(double metres) const noexcept { return range_ > 0.0 ? (metres - minimum_) / range_ : 0.0; }

    /// Height in metres of a normalised elevation.
    double Metres(double normalised) const noexcept { return minimum_ + normalised * range_; }

    Vector3 FromMap(double east, double north, double height) const noexcept;

    /// The map point of a point of true space.
    Vector3 ToMap(const Vector3& point) const noexcept;

    /// The grid point of a column and a row, at a height in metres.
    Vector3 FromGrid(int column, int row, double height) const noexcept;

private:
    int columns_;
    int rows_;
    double spacingX_;
    double spacingY_;
    double minimum_;
    double range_;
    double exaggeration_;
};

}  // namespace tessara

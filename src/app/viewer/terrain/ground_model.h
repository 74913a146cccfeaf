#pragma once

#include "host/vector3.h"

#include <optional>

namespace tessara {

class GroundFrame;
struct ElevationData;

/// The ground of a terrain, to be asked for heights: the grid's heights, interpolated in between, in true space. Beyond
/// its outermost points it goes on level for half a cell, and then ends.
class GroundModel {
public:
    /// \param data,ground outlive this object and may change
    GroundModel(const ElevationData& data, const GroundFrame& ground) : data_(data), ground_(ground) {}

    /// Height in true space at a place, which is moved to the edge where it lies beyond.
    double HeightAt(double x, double z) const;

    /// The same in metres as in the elevation file.
    double MetresAt(double x, double z) const;

    /// Steepness at a place in degrees, without exaggeration.
    double SlopeAt(double x, double z) const;

    /// Whether a place lies on the terrain.
    bool Contains(double x, double z) const;

    /// Where a ray from above the ground first meets it. \param direction of any length
    /// \return nothing where it meets none, starts below the ground or comes in below it through a side of the terrain
    std::optional<Vector3> Pick(const Vector3& origin, const Vector3& direction) const;

private:
    struct Ray;

    double Cell(int column, int row) const;
    double Metres(double column, double row) const;
    bool Clip(Ray& ray) const;
    std::optional<double> Walk(const Ray& ray) const;
    std::optional<double> MeetInCell(const Ray& ray, int column, int row, double from, double to) const;

    const ElevationData& data_;
    const GroundFrame& ground_;
};

}  // namespace tessara

#pragma once

#include "elevation_element.h"

#include <cstddef>
#include <cstdint>
#include <utility>

/// A rectangular, row-major array of elevations that the grid owns or borrows, with its elevation range. Element (x, y)
/// has the index x + y * width. Rectangles are half-open and name rows before columns.
class ElevationGrid {
public:
    ElevationGrid() = default;
    ElevationGrid(const ElevationGrid&) = delete;
    ElevationGrid& operator=(const ElevationGrid&) = delete;
    virtual ~ElevationGrid();

    /// The size takes effect at the next Allocate, which must follow before elements are reached. \return true
    bool SetWidth(std::int32_t columns);
    bool SetHeight(std::int32_t rows);
    bool GetWidth(std::int32_t* columns) const;
    bool GetHeight(std::int32_t* rows) const;

    bool SetElevationRange(float minimum, float maximum);
    bool GetElevationRange(float* minimum, float* maximum) const;

    /// Gives the grid its elements, all at 0.0. An external array, which must hold width * height elements, stays its
    /// owner's; its values are lost all the same. With null after an external array the grid drops that array without
    /// freeing it and owns the new one.
    /// \return false for a size that is not positive, with the old array kept, or when memory is short, with the old
    ///         array gone
    bool Allocate(ElevationElement* external);

    /// Frees an array that the grid owns; forgets nothing else. \return true
    bool Free();

    bool ClearElements();

    /// Size of the elements in bytes.
    std::int32_t GetByteSize() const;

    /// Copies one element. \return false, without a copy, when x or y is out of range
    bool GetElement(std::int32_t x, std::int32_t y, ElevationElement& element) const;

    /// \return null when x or y is out of range
    ElevationElement* ElementAt(std::int32_t x, std::int32_t y);
    const ElevationElement* ElementAt(std::int32_t x, std::int32_t y) const;

    /// Takes the range from a rectangle, which must lie inside the grid and hold an element. \return true
    bool ScanRange(std::int32_t firstRow, std::int32_t endRow, std::int32_t firstColumn, std::int32_t endColumn);

    /// Maps every value of a rectangle to the stored range, after a ScanRange of the same rectangle if `rescan`. A
    /// range without extent makes not-a-numbers. \return true
    bool NormaliseRange(std::int32_t firstRow, std::int32_t endRow, std::int32_t firstColumn, std::int32_t endColumn,
                        bool rescan);

    /// (elevation - minimum) / (maximum - minimum) of the stored range, not clamped.
    double Normalise(float elevation) const;

    /// The same in place, rounded to a float. \return true
    bool Normalise(float* elevation) const;

    /// The inverse of Normalise for the range low to high, in place. \return true
    bool Denormalise(float* elevation, float low, float high) const;

    /// \return false, with nothing written, when there is no array
    bool GetGrid(ElevationElement** first) const;

    /// Four values that the grid keeps for its holder.
    void SetProjection(std::int32_t value) { projection_ = value; }
    std::int32_t GetProjection() const { return projection_; }
    void SetVerticalScale(float scale) { verticalScale_ = scale; }
    float GetVerticalScale() const { return verticalScale_; }
    void SetOrigin(float x, float y) { origin_ = {x, y}; }
    std::pair<float, float> GetOrigin() const { return origin_; }
    void SetSpacing(float x, float y) { spacing_ = {x, y}; }
    std::pair<float, float> GetSpacing() const { return spacing_; }

private:
    bool isExternal = false;
    float minElevation;
    std::int32_t width = 0;
    std::int32_t height = 0;
    ElevationElement* elements = nullptr;
    float maxElevation;
    std::size_t held = 0;  // elements in the array, whatever the size set since says
    std::int32_t projection_ = 0;
    float verticalScale_ = 60.0f;
    std::pair<float, float> origin_{0.0f, 0.0f};
    std::pair<float, float> spacing_{1.0f, 1.0f};
};

#include "textures/elevation_grid.h"

#include <new>

ElevationGrid::~ElevationGrid()
{
    Free();
}

bool ElevationGrid::SetWidth(std::int32_t columns)
{
    width = columns;
    return true;
}

bool ElevationGrid::SetHeight(std::int32_t rows)
{
    height = rows;
    return true;
}

bool ElevationGrid::GetWidth(std::int32_t* columns) const
{
    *columns = width;
    return true;
}

bool ElevationGrid::GetHeight(std::int32_t* rows) const
{
    *rows = height;
    return true;
}

bool ElevationGrid::SetElevationRange(float minimum, float maximum)
{
    minElevation = minimum;
    maxElevation = maximum;
    return true;
}

bool ElevationGrid::GetElevationRange(float* minimum, float* maximum) const
{
    *minimum = minElevation;
    *maximum = maxElevation;
    return true;
}

bool ElevationGrid::Allocate(ElevationElement* external)
{
    if (width <= 0 || height <= 0)
        return false;
    Free();
    if (external) {
        isExternal = true;
        elements = external;
    } else {
        isExternal = false;
        elements = nullptr;
        held = 0;
        const auto count = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
        if (count > SIZE_MAX / sizeof(ElevationElement) / 2)
            return false;
        elements = new (std::nothrow) ElevationElement[count];
        if (!elements)
            return false;
    }
    held = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return ClearElements();
}

bool ElevationGrid::Free()
{
    if (!isExternal && elements) {
        delete[] elements;
        elements = nullptr;
        held = 0;
    }
    return true;
}

bool ElevationGrid::ClearElements()
{
    for (std::size_t i = 0; i < held; ++i)
        elements[i].ClearValue();
    return true;
}

std::int32_t ElevationGrid::GetByteSize() const
{
    return static_cast<std::int32_t>(std::int64_t{width} * height *
                                     static_cast<std::int64_t>(sizeof(ElevationElement)));
}

bool ElevationGrid::GetElement(std::int32_t x, std::int32_t y, ElevationElement& element) const
{
    const ElevationElement* found = ElementAt(x, y);
    if (!found)
        return false;
    element = *found;
    return true;
}

const ElevationElement* ElevationGrid::ElementAt(std::int32_t x, std::int32_t y) const
{
    if (x < 0 || x >= width || y < 0 || y >= height)
        return nullptr;
    const std::size_t index =
        static_cast<std::size_t>(x) + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    return index < held ? elements + index : nullptr;
}

ElevationElement* ElevationGrid::ElementAt(std::int32_t x, std::int32_t y)
{
    return const_cast<ElevationElement*>(std::as_const(*this).ElementAt(x, y));
}

bool ElevationGrid::ScanRange(std::int32_t firstRow, std::int32_t endRow, std::int32_t firstColumn,
                              std::int32_t endColumn)
{
    minElevation = maxElevation = ElementAt(firstColumn, firstRow)->value;
    for (std::int32_t y = firstRow; y < endRow; ++y) {
        const ElevationElement* row = ElementAt(0, y);
        for (std::int32_t x = firstColumn; x < endColumn; ++x) {
            if (row[x].value < minElevation)
                minElevation = row[x].value;
            if (row[x].value > maxElevation)
                maxElevation = row[x].value;
        }
    }
    return true;
}

bool ElevationGrid::NormaliseRange(std::int32_t firstRow, std::int32_t endRow, std::int32_t firstColumn,
                                   std::int32_t endColumn, bool rescan)
{
    if (rescan)
        ScanRange(firstRow, endRow, firstColumn, endColumn);
    for (std::int32_t y = firstRow; y < endRow; ++y) {
        ElevationElement* row = ElementAt(0, y);
        for (std::int32_t x = firstColumn; x < endColumn; ++x)
            Normalise(&row[x].value);
    }
    return true;
}

double ElevationGrid::Normalise(float elevation) const
{
    const double low = minElevation;
    return (static_cast<double>(elevation) - low) / (static_cast<double>(maxElevation) - low);
}

bool ElevationGrid::Normalise(float* elevation) const
{
    *elevation = static_cast<float>(Normalise(*elevation));
    return true;
}

bool ElevationGrid::Denormalise(float* elevation, float low, float high) const
{
    const double t = *elevation;
    *elevation = static_cast<float>(t * high - t * low + low);
    return true;
}

bool ElevationGrid::GetGrid(ElevationElement** first) const
{
    if (!elements)
        return false;
    *first = elements;
    return true;
}

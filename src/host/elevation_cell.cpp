#include "host/elevation_cell.h"

#include "host/elevation_matrix.h"

namespace tessara {

HRESULT ElevationCell::SetElevation(float elevation)
{
    ElevationElement* element = matrix_.ElementAt(x_, y_);
    if (!element)
        return E_UNEXPECTED;
    element->value = elevation;
    return S_OK;
}

HRESULT ElevationCell::GetElevation(float* elevation)
{
    if (!elevation)
        return E_POINTER;
    *elevation = 0.0f;
    const ElevationElement* element = matrix_.ElementAt(x_, y_);
    if (!element)
        return E_UNEXPECTED;
    *elevation = element->value;
    return S_OK;
}

void ElevationCell::FinalRelease() noexcept
{
    matrix_.TakeBack(this);
}

}  // namespace tessara

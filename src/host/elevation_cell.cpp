#include "host/elevation_cell.h"

#include "host/elevation_matrix.h"

namespace tessara {

HRESULT ElevationCell::QueryInterface(REFIID iid, void** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (!(iid == IID_IUnknown) && !(iid == InterfaceId<IElevationCell>))
        return E_NOINTERFACE;
    *out = static_cast<IElevationCell*>(this);
    AddRef();
    return S_OK;
}

ULONG ElevationCell::Release()
{
    const ULONG left = --count_;
    if (left == 0)
        matrix_.TakeBack(this);
    return left;
}

ElevationElement* ElevationCell::Element() noexcept
{
    if (generation_ != matrix_.Generation()) {
        element_ = matrix_.ElementAt(x_, y_);
        generation_ = matrix_.Generation();
    }
    return element_;
}

HRESULT ElevationCell::SetElevation(float elevation)
{
    ElevationElement* element = Element();
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
    const ElevationElement* element = Element();
    if (!element)
        return E_UNEXPECTED;
    *elevation = element->value;
    return S_OK;
}

}  // namespace tessara

#pragma once

/// One grid point of a terrain: a float behind a virtual table pointer, 16 bytes. The default constructor leaves the
/// value unset.
class ElevationElement {
public:
    ElevationElement() {}
    ElevationElement(const ElevationElement&) = default;
    ElevationElement& operator=(const ElevationElement&) = default;
    virtual ~ElevationElement() {}

    bool SetValue(float elevation)
    {
        value = elevation;
        return true;
    }

    bool GetValue(float* elevation) const
    {
        *elevation = value;
        return true;
    }

    bool ClearValue()
    {
        value = 0.0f;
        return true;
    }

    float value;  ///< normalised elevation: 0.0 at the lowest, 1.0 at the highest point of the terrain
};
static_assert(sizeof(ElevationElement) == 16);

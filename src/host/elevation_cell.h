#pragma once

#include "platform/com/com_object.h"
#include "services/elevation_matrix.h"

namespace tessara {

class ElevationMatrix;

/// One cell of an ElevationMatrix, by its place: after the matrix got new cells, it stands for the cell at the same
/// place in them. It keeps its matrix alive, and goes back to it at its last Release.
class ElevationCell final : public ComObject<IElevationCell> {
public:
    explicit ElevationCell(ElevationMatrix& matrix) noexcept : matrix_(matrix) {}
    ~ElevationCell() override = default;

    /// Makes this the cell at column x and row y.
    void MoveTo(LONG x, LONG y) noexcept
    {
        x_ = x;
        y_ = y;
    }

    /// Both give E_UNEXPECTED when the matrix has no longer a cell at this place.
    HRESULT STDMETHODCALLTYPE SetElevation(float elevation) override;
    HRESULT STDMETHODCALLTYPE GetElevation(float* elevation) override;

protected:
    void FinalRelease() noexcept override;

private:
    ElevationMatrix& matrix_;  // lives at least until FinalRelease
    LONG x_ = 0;
    LONG y_ = 0;
};

}  // namespace tessara

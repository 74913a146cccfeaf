#pragma once

#include "services/elevation_matrix.h"

namespace tessara {

class ElevationMatrix;

/// One cell of an ElevationMatrix, by its place: after the matrix got new cells, it stands for the cell at the same
/// place in them. It keeps its matrix alive, and goes back to it at its last Release.
///
/// A matrix hands one out for every height that somebody reads or writes, so a cell costs next to nothing: it counts
/// for one thread, which a matrix and its cells belong to, and finds its element once.
class ElevationCell final : public IElevationCell {
public:
    explicit ElevationCell(ElevationMatrix& matrix) noexcept : matrix_(matrix) {}
    ElevationCell(const ElevationCell&) = delete;
    ElevationCell& operator=(const ElevationCell&) = delete;

    /// Makes this the cell at column x and row y, with one reference.
    void HandOut(LONG x, LONG y, ElevationElement* element, ULONG generation) noexcept
    {
        x_ = x;
        y_ = y;
        element_ = element;
        generation_ = generation;
        count_ = 1;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count_; }
    ULONG STDMETHODCALLTYPE Release() override;

    /// Both give E_UNEXPECTED when the matrix has no longer a cell at this place.
    HRESULT STDMETHODCALLTYPE SetElevation(float elevation) override;
    HRESULT STDMETHODCALLTYPE GetElevation(float* elevation) override;

private:
    ElevationElement* Element() noexcept;

    ElevationMatrix& matrix_;  // lives at least until the last Release
    ElevationElement* element_ = nullptr;
    ULONG generation_ = 0;  // of the matrix's cells, when the element was found
    ULONG count_ = 0;
    LONG x_ = 0;
    LONG y_ = 0;
};

}  // namespace tessara

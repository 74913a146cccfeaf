#pragma once

#include "../platform/com/com_object.h"
#include "../services/elevation_matrix.h"
#include "../textures/elevation_grid.h"
#include "../textures/elevation_palette.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tessara {

class ElevationCell;

/// The height field of a terrain, class CLSID_ElevationMatrix. It starts without cells, with the elevation range 0 to 1
/// and with the default palette. A matrix and its cells belong to one thread.
class ElevationMatrix final : public ComObject<IElevationMatrix> {
public:
    /// \param outer the controlling object of an aggregate, or null \throws std::bad_alloc
    explicit ElevationMatrix(IUnknown* outer = nullptr);

    HRESULT STDMETHODCALLTYPE SetWidth(LONG width) override;
    HRESULT STDMETHODCALLTYPE SetHeight(LONG height) override;
    HRESULT STDMETHODCALLTYPE GetWidth(LONG* width) override;
    HRESULT STDMETHODCALLTYPE GetHeight(LONG* height) override;

    /// New cells stand at the elevation 0.0. A terrain that was built on the old ones may go on drawing until its next
    /// InitQuadTree: memory that GetGrid gave out lives as long as the matrix, and serves new cells that fit into it.
    /// \return E_INVALIDARG for a size that is not positive, with the cells kept; E_OUTOFMEMORY, with the cells gone
    HRESULT STDMETHODCALLTYPE AllocateCells() override;

    /// \return E_INVALIDARG for a place that has no cell
    HRESULT STDMETHODCALLTYPE GetCell(LONG x, LONG y, IElevationCell** cell) override;

    HRESULT STDMETHODCALLTYPE SetElevationRange(float minimum, float maximum) override;

    /// A terrain that was built with the old palette goes on drawing with it until its next InitQuadTree: a palette
    /// that GetPalette gave out lives as long as the matrix. \return E_POINTER for null, E_OUTOFMEMORY; the palette is
    /// kept and the new one stays the caller's
    HRESULT STDMETHODCALLTYPE SetPalette(ElevationPalette* palette) override;

    /// Palette and elevation range stay, and so does memory that GetGrid gave out.
    HRESULT STDMETHODCALLTYPE ResetMatrix() override;

    HRESULT STDMETHODCALLTYPE BeginUpdate(LONG reserved) override;

    /// \return E_UNEXPECTED without a BeginUpdate
    HRESULT STDMETHODCALLTYPE EndUpdate(LONG reserved) override;

    HRESULT STDMETHODCALLTYPE GetPalette(ElevationPalette** palette) override;

    /// \return E_FAIL, with null, when there are no cells
    HRESULT STDMETHODCALLTYPE GetGrid(ElevationElement** grid) override;

    /// The range of SetElevationRange: what the elevations 0.0 and 1.0 stand for.
    void GetElevationRange(float* minimum, float* maximum) const { grid_.GetElevationRange(minimum, maximum); }

    /// \return null for a place that has no cell
    ElevationElement* ElementAt(LONG x, LONG y) { return grid_.ElementAt(x, y); }

    /// Tells whether the cells are still the ones that they were.
    ULONG Generation() const noexcept { return generation_; }

    /// Takes a cell that nobody refers to any more.
    void TakeBack(ElevationCell* cell) noexcept;

protected:
    ~ElevationMatrix() override;
    void FinalRelease() noexcept override;

private:
    struct CellBlock {
        std::unique_ptr<ElevationElement[]> cells;
        std::size_t count = 0;
    };

    CellBlock TakeBlock(std::size_t count);
    void DropCells() noexcept;

    ElevationGrid grid_;  // over the cells of block_
    CellBlock block_;
    bool gridIsOut_ = false;                // GetGrid gave the cells to somebody
    std::vector<CellBlock> earlierBlocks_;  // that somebody may draw from; it always has room for one more
    std::unique_ptr<ElevationPalette> palette_;
    bool paletteIsOut_ = false;                                       // GetPalette gave it to somebody
    std::vector<std::unique_ptr<ElevationPalette>> earlierPalettes_;  // that somebody may draw with
    std::unique_ptr<ElevationCell> spareCell_;  // the cell that came back last, for the next GetCell
    LONG wantedWidth_ = 0;
    LONG wantedHeight_ = 0;
    ULONG generation_ = 0;  // counts the times that cells were made or dropped
    ULONG openUpdates_ = 0;
    ULONG cellsOut_ = 0;     // they keep this object alive in place of a reference each
    bool released_ = false;  // the last reference has gone, cells are still out
};

}  // namespace tessara

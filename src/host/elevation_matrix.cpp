#include "host/elevation_matrix.h"

#include "host/elevation_cell.h"
#include "platform/com/guard.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

namespace tessara {

ElevationMatrix::ElevationMatrix(IUnknown* outer) : ComObject(outer), palette_(std::make_unique<ElevationPalette>())
{
    grid_.SetElevationRange(0.0f, 1.0f);
}

ElevationMatrix::~ElevationMatrix() = default;

HRESULT ElevationMatrix::SetWidth(LONG width)
{
    wantedWidth_ = width;
    return S_OK;
}

HRESULT ElevationMatrix::SetHeight(LONG height)
{
    wantedHeight_ = height;
    return S_OK;
}

HRESULT ElevationMatrix::GetWidth(LONG* width)
{
    if (!width)
        return E_POINTER;
    std::int32_t columns = 0;
    grid_.GetWidth(&columns);
    *width = columns;
    return S_OK;
}

HRESULT ElevationMatrix::GetHeight(LONG* height)
{
    if (!height)
        return E_POINTER;
    std::int32_t rows = 0;
    grid_.GetHeight(&rows);
    *height = rows;
    return S_OK;
}

HRESULT ElevationMatrix::AllocateCells()
{
    if (wantedWidth_ <= 0 || wantedHeight_ <= 0)
        return E_INVALIDARG;
    DropCells();
    const HRESULT result = Guard([this]() -> HRESULT {
        ++generation_;
        const auto count = static_cast<std::uint64_t>(wantedWidth_) * static_cast<std::uint64_t>(wantedHeight_);
        if (count > SIZE_MAX / sizeof(ElevationElement) / 2)
            return E_OUTOFMEMORY;
        block_ = TakeBlock(static_cast<std::size_t>(count));
        earlierBlocks_.reserve(earlierBlocks_.size() + 1);
        grid_.SetWidth(wantedWidth_);
        grid_.SetHeight(wantedHeight_);
        return grid_.Allocate(block_.cells.get()) ? S_OK : E_OUTOFMEMORY;
    });
    if (FAILED(result))
        DropCells();
    return result;
}

HRESULT ElevationMatrix::GetCell(LONG x, LONG y, IElevationCell** cell)
{
    if (!cell)
        return E_POINTER;
    *cell = nullptr;
    ElevationElement* element = grid_.ElementAt(x, y);
    if (!element)
        return E_INVALIDARG;
    if (!spareCell_)
        spareCell_.reset(new (std::nothrow) ElevationCell(*this));
    if (!spareCell_)
        return E_OUTOFMEMORY;
    spareCell_->HandOut(x, y, element, generation_);
    ++cellsOut_;
    *cell = spareCell_.release();
    return S_OK;
}

HRESULT ElevationMatrix::SetElevationRange(float minimum, float maximum)
{
    grid_.SetElevationRange(minimum, maximum);
    return S_OK;
}

HRESULT ElevationMatrix::SetPalette(ElevationPalette* palette)
{
    if (!palette)
        return E_POINTER;
    if (palette == palette_.get())
        return S_OK;
    return Guard([&] {
        earlierPalettes_.reserve(earlierPalettes_.size() + 1);
        std::unique_ptr<ElevationPalette> next(palette);
        const auto again = std::find_if(earlierPalettes_.begin(), earlierPalettes_.end(),
                                        [palette](const auto& earlier) { return earlier.get() == palette; });
        if (again != earlierPalettes_.end()) {
            again->release();
            earlierPalettes_.erase(again);
        }
        palette_.swap(next);
        if (std::exchange(paletteIsOut_, false))
            earlierPalettes_.push_back(std::move(next));
        return S_OK;
    });
}

HRESULT ElevationMatrix::ResetMatrix()
{
    DropCells();
    wantedWidth_ = 0;
    wantedHeight_ = 0;
    return S_OK;
}

HRESULT ElevationMatrix::BeginUpdate(LONG)
{
    ++openUpdates_;
    return S_OK;
}

HRESULT ElevationMatrix::EndUpdate(LONG)
{
    if (openUpdates_ == 0)
        return E_UNEXPECTED;
    --openUpdates_;
    return S_OK;
}

HRESULT ElevationMatrix::GetPalette(ElevationPalette** palette)
{
    if (!palette)
        return E_POINTER;
    *palette = palette_.get();
    paletteIsOut_ = true;
    return S_OK;
}

HRESULT ElevationMatrix::GetGrid(ElevationElement** grid)
{
    if (!grid)
        return E_POINTER;
    *grid = block_.cells.get();
    gridIsOut_ = true;
    return *grid ? S_OK : E_FAIL;
}

void ElevationMatrix::TakeBack(ElevationCell* cell) noexcept
{
    --cellsOut_;
    if (spareCell_)
        delete cell;
    else
        spareCell_.reset(cell);
    if (released_ && cellsOut_ == 0)
        delete this;
}

void ElevationMatrix::FinalRelease() noexcept
{
    released_ = true;
    if (cellsOut_ == 0)
        delete this;
}

/// The smallest earlier block that has room, or a new one. \throws std::bad_alloc
ElevationMatrix::CellBlock ElevationMatrix::TakeBlock(std::size_t count)
{
    auto best = earlierBlocks_.end();
    for (auto block = earlierBlocks_.begin(); block != earlierBlocks_.end(); ++block) {
        if (block->count >= count && (best == earlierBlocks_.end() || block->count < best->count))
            best = block;
    }
    if (best == earlierBlocks_.end()) {
        // Out of memory is an answer here, and not an error that ends a checked build.
        CellBlock block{std::unique_ptr<ElevationElement[]>(new (std::nothrow) ElevationElement[count]), count};
        return block.cells ? std::move(block) : throw std::bad_alloc();
    }
    CellBlock block = std::move(*best);
    earlierBlocks_.erase(best);
    gridIsOut_ = true;
    return block;
}

void ElevationMatrix::DropCells() noexcept
{
    ++generation_;
    if (std::exchange(gridIsOut_, false) && block_.cells)
        earlierBlocks_.push_back(std::move(block_));
    block_ = {};
    grid_.SetWidth(0);
    grid_.SetHeight(0);
}

}  // namespace tessara

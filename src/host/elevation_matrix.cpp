#include "host/elevation_matrix.h"

#include "host/elevation_cell.h"
#include "platform/com/guard.h"

#include <algorithm>
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
    const HRESULT result = Guard([this] {
        ++generation_;
        grid_.SetWidth(wantedWidth_);
        grid_.SetHeight(wantedHeight_);
        return grid_.Allocate(nullptr) ? S_OK : E_OUTOFMEMORY;
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
    *grid = nullptr;
    return grid_.GetGrid(grid) ? S_OK : E_FAIL;
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

void ElevationMatrix::DropCells()
{
    ++generation_;
    grid_.Free();
    grid_.SetWidth(0);
    grid_.SetHeight(0);
}

}  // namespace tessara

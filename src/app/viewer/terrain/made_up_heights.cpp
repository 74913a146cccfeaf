#include "app/viewer/terrain/made_up_heights.h"

#include "host/elevation/elevation_data.h"

#include <algorithm>

namespace tessara {

MadeUpHeights::MadeUpHeights(const ElevationData& data)
{
    for (std::size_t cell = 0; cell < data.holes.size(); ++cell) {
        if (data.holes[cell] != 0)
            cells_.push_back({cell, data.metres[cell]});
    }
}

void MadeUpHeights::MarkHoles(ElevationData& data, const GridArea& area) const
{
    if (cells_.empty())
        return;
    const auto width = static_cast<std::size_t>(data.width);
    for (int row = area.top; row < area.bottom; ++row) {
        const std::size_t first = static_cast<std::size_t>(row) * width + static_cast<std::size_t>(area.left);
        const std::size_t end = static_cast<std::size_t>(row) * width + static_cast<std::size_t>(area.right);
        auto cell = std::lower_bound(cells_.begin(), cells_.end(), first,
                                     [](const Cell& one, std::size_t index) { return one.index < index; });
        for (; cell != cells_.end() && cell->index < end; ++cell)
            data.holes[cell->index] = data.metres[cell->index] == cell->metres ? 1 : 0;
    }
}

}  // namespace tessara

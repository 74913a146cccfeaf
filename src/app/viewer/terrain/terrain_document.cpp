#include "app/viewer/terrain/terrain_document.h"

#include "host/kvo_host.h"

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

/// Cells around the grid: enough for what the surface draws at the corner to lie outside.
constexpr int kBorder = 2;

/// Until somebody knows for which picture.
constexpr double kFirstDetail = 500.0;

}  // namespace

TerrainDocument::TerrainDocument(std::string path, ElevationData data, double exaggeration)
    : path_(std::move(path)), data_(std::move(data)), madeUp_(data_)
{
    const double across = std::max(data_.width * data_.spacingX, data_.height * data_.spacingY);
    const double lowest = static_cast<double>(data_.minimum);
    const double highest = static_cast<double>(data_.maximum);
    const double relief = highest - lowest;
    // The palette's entries are spread from the floor to the top: most of them are for the ground that is there.
    const double room = 0.015 * across;
    floor_ = relief > 0.0 ? lowest - std::clamp(room, 0.1 * relief, 0.4 * relief) : lowest - room;
    floor_ = static_cast<double>(static_cast<float>(floor_));
    top_ = relief > 0.0 ? highest : lowest + 0.05 * across;
    top_ = static_cast<double>(static_cast<float>(top_));

    // The component's heights run from the floor to the top.
    const float ownLowest = std::exchange(data_.minimum, static_cast<float>(floor_));
    const float ownHighest = std::exchange(data_.maximum, static_cast<float>(top_));
    const auto nobody = MakeObject<KvoHost>(nullptr, nullptr);
    session_ = std::make_unique<TerrainSession>(data_, TerrainOptions{exaggeration, kFirstDetail, nullptr, kBorder},
                                                ComPtr<IKvoHost>(nobody.Get()));
    data_.minimum = ownLowest;
    data_.maximum = ownHighest;
    ground_ = std::make_unique<GroundModel>(data_, session_->Ground());
}

GridArea TerrainDocument::Edit(const std::function<GridArea(ElevationData&)>& change)
{
    const GridArea area = change(data_);
    if (!area.IsEmpty())
        Changed(area);
    return area;
}

/// The range only grows until it is worked out again.
void TerrainDocument::Changed(const GridArea& area)
{
    for (int row = area.top; row < area.bottom; ++row) {
        const auto first = data_.metres.begin() + area.left + static_cast<std::ptrdiff_t>(row) * data_.width;
        const auto [low, high] = std::minmax_element(first, first + (area.right - area.left));
        data_.minimum = std::min(data_.minimum, *low);
        data_.maximum = std::max(data_.maximum, *high);
    }
    madeUp_.MarkHoles(data_, area);
    CopyToMatrix(area);
}

/// Cells of the border repeat the outermost ones.
void TerrainDocument::CopyToMatrix(const GridArea& area)
{
    const int left = area.left == 0 ? -kBorder : area.left;
    const int top = area.top == 0 ? -kBorder : area.top;
    const int right = area.right == data_.width ? area.right + kBorder : area.right;
    const int bottom = area.bottom == data_.height ? area.bottom + kBorder : area.bottom;
    for (int row = top; row < bottom; ++row) {
        const auto y = static_cast<std::size_t>(std::clamp(row, 0, data_.height - 1));
        ElevationElement* element = session_->Matrix().ElementAt(left + kBorder, row + kBorder);
        for (int column = left; column < right; ++column, ++element) {
            const auto x = static_cast<std::size_t>(std::clamp(column, 0, data_.width - 1));
            const float metres = data_.metres[x + y * static_cast<std::size_t>(data_.width)];
            element->value = static_cast<float>(session_->Ground().Normalise(static_cast<double>(metres)));
        }
    }
}

void TerrainDocument::Rescan()
{
    ScanHeights(data_);
}

ElevationData TerrainDocument::AsInSession() const
{
    ElevationData data = data_;
    data.minimum = static_cast<float>(floor_);
    data.maximum = static_cast<float>(top_);
    return data;
}

}  // namespace tessara

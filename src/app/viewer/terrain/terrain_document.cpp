#include "app/viewer/terrain/terrain_document.h"

#include "app/view/height_span.h"
#include "host/kvo_host.h"

#include <algorithm>
#include <utility>

namespace tessara {

namespace {

/// Until somebody knows for which picture.
constexpr double kFirstDetail = 500.0;

}  // namespace

TerrainDocument::TerrainDocument(std::string path, ElevationData data, double exaggeration)
    : path_(std::move(path)), data_(std::move(data)), madeUp_(data_)
{
    const HeightSpan span = SpanOf(data_);
    floor_ = static_cast<double>(span.floor);
    top_ = static_cast<double>(span.top);
    const auto noServices = MakeObject<KvoHost>(nullptr, nullptr);
    session_ = std::make_unique<TerrainSession>(data_,
                                                TerrainOptions{.exaggeration = exaggeration,
                                                               .levelOfDetail = kFirstDetail,
                                                               .border = kDrawnBorder,
                                                               .range = std::pair(span.floor, span.top)},
                                                ComPtr<IKvoHost>(noServices.Get()));
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
    session_->HeightsChanged(area.left, area.top, area.right, area.bottom);
}

/// Cells of the border repeat the outermost ones.
void TerrainDocument::CopyToMatrix(const GridArea& area)
{
    const int left = area.left == 0 ? -kDrawnBorder : area.left;
    const int top = area.top == 0 ? -kDrawnBorder : area.top;
    const int right = area.right == data_.width ? area.right + kDrawnBorder : area.right;
    const int bottom = area.bottom == data_.height ? area.bottom + kDrawnBorder : area.bottom;
    for (int row = top; row < bottom; ++row) {
        const auto y = static_cast<std::size_t>(std::clamp(row, 0, data_.height - 1));
        ElevationElement* element = session_->Matrix().ElementAt(left + kDrawnBorder, row + kDrawnBorder);
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

#include "host/elevation/grid_reducer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {

GridReducer::GridReducer(int fromWidth, int fromHeight, int width, int height, float* result)
    : columns_(SharesOf(fromWidth, width)), rows_(SharesOf(fromHeight, height)), result_(result)
{
    for (std::vector<double>* line : {&sums_, &weights_, &nextSums_, &nextWeights_})
        line->resize(static_cast<std::size_t>(width));
}

std::vector<GridReducer::Share> GridReducer::SharesOf(int from, int to)
{
    constexpr double kTooLittle = 1.0e-9;  // a rest of rounding
    const double reach = static_cast<double>(from) / to;
    std::vector<Share> shares;
    shares.reserve(static_cast<std::size_t>(from));
    for (int i = 0; i < from; ++i) {
        const int target = std::min(static_cast<int>((i + kTooLittle) / reach), to - 1);
        const double rest = target + 1 < to ? std::max(0.0, i + 1 - (target + 1) * reach) : 0.0;
        shares.push_back({static_cast<std::size_t>(target), 1.0 - rest, rest > kTooLittle ? rest : 0.0});
    }
    return shares;
}

void GridReducer::AddRow(const float* row)
{
    const Share share = rows_[taken_];
    if (share.target > finished_)
        FinishRow();
    AddTo(sums_, weights_, row, share.part);
    if (share.rest > 0.0) {
        AddTo(nextSums_, nextWeights_, row, share.rest);
        FinishRow();
    }
    if (++taken_ == rows_.size())
        FinishRow();
}

void GridReducer::AddTo(std::vector<double>& sums, std::vector<double>& weights, const float* row, double part) const
{
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (std::isnan(row[i]))
            continue;
        const Share& column = columns_[i];
        const double value = static_cast<double>(row[i]);
        sums[column.target] += value * part * column.part;
        weights[column.target] += part * column.part;
        if (column.rest > 0.0) {
            sums[column.target + 1] += value * part * column.rest;
            weights[column.target + 1] += part * column.rest;
        }
    }
}

void GridReducer::FinishRow()
{
    float* out = result_ + finished_ * sums_.size();
    for (std::size_t i = 0; i < sums_.size(); ++i)
        out[i] =
            weights_[i] > 0.0 ? static_cast<float>(sums_[i] / weights_[i]) : std::numeric_limits<float>::quiet_NaN();
    sums_.swap(nextSums_);
    weights_.swap(nextWeights_);
    std::fill(nextSums_.begin(), nextSums_.end(), 0.0);
    std::fill(nextWeights_.begin(), nextWeights_.end(), 0.0);
    ++finished_;
}

}  // namespace tessara

#pragma once

#include <cstddef>
#include <vector>

namespace tessara {

/// Reduces a grid that comes row by row: each cell of the result is the mean of the cells that it covers, counted by
/// the part that it covers of them. What is not a number counts for nothing; a result that has nothing but that is not
/// a number either.
class GridReducer {
public:
    /// \param width, height size of the result, 1 to that of the grid
    /// \param result room for width * height values, which outlives the reducer
    GridReducer(int fromWidth, int fromHeight, int width, int height, float* result);

    /// Takes the next row of the grid. After the last one the result is complete.
    void AddRow(const float* row);

private:
    /// Where a column or row of the grid goes: a part of it to a cell of the result, the rest to the next one.
    struct Share {
        std::size_t target;
        double part;
        double rest;
    };
    static std::vector<Share> SharesOf(int from, int to);

    void AddTo(std::vector<double>& sums, std::vector<double>& weights, const float* row, double part) const;
    void FinishRow();

    std::vector<Share> columns_;
    std::vector<Share> rows_;
    std::vector<double> sums_;
    std::vector<double> weights_;
    std::vector<double> nextSums_;
    std::vector<double> nextWeights_;
    std::size_t taken_ = 0;
    std::size_t finished_ = 0;
    float* result_;
};

}  // namespace tessara

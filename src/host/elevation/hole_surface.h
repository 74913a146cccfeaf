#pragma once

#include <vector>

namespace tessara {

/// Spans a surface over the holes of a grid, the cells that are not numbers: the one of a stretched skin, each cell the
/// mean of its neighbours (Laplace's equation), free at the edge of the grid. It lies between the lowest and the
/// highest value around its hole. The result is the same on every machine. \param values width * height values in rows,
/// not all of them holes; fewer than 2^32
void FillHolesSmoothly(std::vector<float>& values, int width, int height);

}  // namespace tessara

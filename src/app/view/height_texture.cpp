#include "app/view/height_texture.h"

#include "app/view/sea.h"
#include "host/elevation/elevation_data.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tessara {

namespace {

int Reduced(int cells, int step)
{
    return (cells + step - 1) / step;
}

int StepOf(const ElevationData& data)
{
    return (std::max(data.width, data.height) + HeightTexture::kMostSide - 1) / HeightTexture::kMostSide;
}

/// The cell that a texel stands for.
std::size_t CellOf(int texel, int texels, int cells)
{
    return texels > 1 ? static_cast<std::size_t>(std::int64_t{texel} * (cells - 1) / (texels - 1)) : std::size_t{0};
}

}  // namespace

HeightTexture::HeightTexture(const GlFunctions& gl, const ElevationData& data)
    : width_(Reduced(data.width, StepOf(data))), height_(Reduced(data.height, StepOf(data)))
{
    const bool whole = width_ == data.width && height_ == data.height;
    const std::vector<float> heights = whole ? std::vector<float>() : Heights(data, {0, 0, width_, height_});
    texture_.emplace(gl, GL_R32F, width_, height_, GL_RED, GL_FLOAT, whole ? data.metres.data() : heights.data(),
                     TextureFilter::Plain);
}

std::vector<float> HeightTexture::Heights(const ElevationData& data, const GridArea& texels) const
{
    std::vector<float> heights;
    for (int z = texels.top; z < texels.bottom; ++z) {
        const float* row = data.metres.data() + CellOf(z, height_, data.height) * static_cast<std::size_t>(data.width);
        for (int x = texels.left; x < texels.right; ++x)
            heights.push_back(row[CellOf(x, width_, data.width)]);
    }
    return heights;
}

std::vector<std::uint8_t> HeightTexture::Covered(const ElevationData& data, const Sea& sea) const
{
    std::vector<std::uint8_t> covered;
    covered.reserve(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
    for (int z = 0; z < height_; ++z) {
        const std::size_t row = CellOf(z, height_, data.height) * static_cast<std::size_t>(data.width);
        for (int x = 0; x < width_; ++x) {
            const std::size_t cell = row + CellOf(x, width_, data.width);
            covered.push_back(sea.Covers(cell, data.metres[cell]) ? 255 : 0);
        }
    }
    return covered;
}

void HeightTexture::Update(const ElevationData& data, const GridArea& cells)
{
    const int step = StepOf(data);
    const GridArea texels{std::max(cells.left / step - 1, 0), std::max(cells.top / step - 1, 0),
                          std::min(cells.right / step + 2, width_), std::min(cells.bottom / step + 2, height_)};
    const int width = texels.right - texels.left;
    texture_->Update(texels.left, texels.top, width, texels.bottom - texels.top, width, GL_RED, GL_FLOAT,
                     Heights(data, texels).data());
    stale_ = true;
}

void HeightTexture::RenewMipmaps(const GlFunctions& gl)
{
    if (stale_)
        texture_->RenewMipmaps(gl);
    stale_ = false;
}

}  // namespace tessara

#pragma once

#include "app/view/light_map.h"
#include "app/view/texture.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tessara {

struct ElevationData;
struct Sea;

/// The heights of a terrain in metres as a texture, so that a pixel's height is the ground's, however coarse the
/// triangles are. The outermost texels stand on the outermost grid points. Belongs to an OpenGL context, as a Texture
/// does.
class HeightTexture {
public:
    /// Texels along an edge; of a larger grid every second, third or so point is taken.
    static constexpr int kMostSide = 4097;

    HeightTexture(const GlFunctions& gl, const ElevationData& data);

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }

    /// Takes heights anew; what is seen of them from afar follows with RenewMipmaps.
    /// \param data the constructor's, changed within \param cells
    void Update(const ElevationData& data, const GridArea& cells);
    void RenewMipmaps(const GlFunctions& gl);

    /// 255 for each texel that is under water, else 0.
    std::vector<std::uint8_t> Covered(const ElevationData& data, const Sea& sea) const;

    void Bind() const { texture_->Bind(); }

private:
    std::vector<float> Heights(const ElevationData& data, const GridArea& texels) const;

    int width_;
    int height_;
    std::optional<Texture> texture_;
    bool stale_ = false;  // the mipmaps are
};

}  // namespace tessara

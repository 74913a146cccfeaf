#pragma once

#include <cstdint>

namespace tessara {

/// Tells from frame to frame whether a terrain's detail suits the camera: one after the other has as many triangles.
class Settling {
public:
    void Restart() noexcept { steady_ = 0; }

    void Saw(std::uint32_t triangles) noexcept
    {
        steady_ = triangles == triangles_ ? steady_ + 1 : 0;
        triangles_ = triangles;
    }

    bool IsDone() const noexcept { return steady_ >= kSteady; }

private:
    static constexpr int kSteady = 2;

    std::uint32_t triangles_ = 0;
    int steady_ = 0;
};

}  // namespace tessara

#pragma once

#include <cstddef>

namespace tessara {

/// Decides from the times that frames take how finely a picture is drawn while it moves, so that one follows the other
/// quickly. It goes in steps, and finer only after a while, so that the picture doesn't flicker.
class FrameGovernor {
public:
    /// \param budget seconds that a frame may take
    explicit FrameGovernor(double budget) noexcept : budget_(budget) {}

    /// Pixels to draw for one of the window along each axis: 1 for a picture as fine as the window.
    double Scale() const noexcept;

    /// A frame of that scale was drawn. \param seconds that it took
    void Saw(double seconds) noexcept;

    /// The picture has come to rest: the next movement may be another one.
    void Rest() noexcept;

private:
    static constexpr int kPatience = 20;

    double SecondsAt(std::size_t step, double seconds) const noexcept;
    void Learn(double seconds) noexcept;
    void GoCoarser(double seconds) noexcept;
    void Go(std::size_t step) noexcept;

    double budget_;
    std::size_t step_ = 0;
    double last_ = 0.0;  // seconds of the frame before, of the same step; 0 for none
    double slow_ = 0.0;  // seconds of a frame of slowStep_, until it is known what a coarser one brings
    std::size_t slowStep_ = 0;
    double forPixels_ = 0.0;    // seconds that the window's pixels take; 0 while not known
    bool wentFiner_ = false;    // in the last change of steps
    bool isFutile_ = false;     // pixels aren't what takes the time
    int frames_ = 0;            // of this step
    int quick_ = 0;             // of these, one after the other, that leave time for a finer step
    int patience_ = kPatience;  // quick frames before a finer step
};

}  // namespace tessara

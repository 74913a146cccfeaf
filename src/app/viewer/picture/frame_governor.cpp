#include "app/viewer/picture/frame_governor.h"

#include <algorithm>
#include <array>

namespace tessara {

namespace {

constexpr std::array<double, 5> kScales = {1.0, 0.8, 0.64, 0.5, 0.4};

/// Share of the budget within which a finer step has to stay.
constexpr double kRoom = 0.85;

/// A coarser picture that saves less than this share of a frame isn't worth it.
constexpr double kWorth = 0.15;

/// A finer step that had to be taken back within so many frames is tried half as often.
constexpr int kTooSoon = 60;
constexpr int kLongestPatience = 320;

double PixelsOf(std::size_t step)
{
    return kScales[step] * kScales[step];
}

}  // namespace

double FrameGovernor::Scale() const noexcept
{
    return kScales[step_];
}

/// What a frame of another step would take. Until more is known all of its time goes for pixels.
double FrameGovernor::SecondsAt(std::size_t step, double seconds) const noexcept
{
    const double most = seconds / PixelsOf(step_);
    const double forPixels = forPixels_ > 0.0 ? std::min(forPixels_, most) : most;
    return seconds + forPixels * (PixelsOf(step) - PixelsOf(step_));
}

void FrameGovernor::Saw(double seconds) noexcept
{
    ++frames_;
    // One slow frame by itself has a cause of its own.
    const bool isFirst = last_ == 0.0;
    const double least = isFirst ? seconds : std::min(seconds, last_);
    last_ = seconds;
    if (isFirst || isFutile_)
        return;
    if (slow_ > 0.0)
        Learn(least);
    if (least > budget_) {
        GoCoarser(least);
        return;
    }
    quick_ = step_ > 0 && SecondsAt(step_ - 1, seconds) < kRoom * budget_ ? quick_ + 1 : 0;
    if (quick_ >= patience_)
        Go(step_ - 1);
}

void FrameGovernor::Learn(double seconds) noexcept
{
    const double fewer = PixelsOf(slowStep_) - PixelsOf(step_);
    forPixels_ = std::clamp((slow_ - seconds) / fewer, 0.0, seconds / PixelsOf(step_));
    isFutile_ = forPixels_ * fewer < kWorth * slow_;
    slow_ = 0.0;
    if (isFutile_)
        Go(0);
}

void FrameGovernor::GoCoarser(double seconds) noexcept
{
    if (isFutile_ || step_ + 1 == kScales.size())
        return;
    if (wentFiner_ && frames_ < kTooSoon)
        patience_ = std::min(2 * patience_, kLongestPatience);
    std::size_t step = step_ + 1;
    while (step + 1 < kScales.size() && SecondsAt(step, seconds) > budget_)
        ++step;
    slow_ = seconds;
    slowStep_ = step_;
    Go(step);
}

void FrameGovernor::Go(std::size_t step) noexcept
{
    wentFiner_ = step < step_;
    step_ = step;
    last_ = 0.0;
    frames_ = 0;
    quick_ = 0;
}

void FrameGovernor::Rest() noexcept
{
    last_ = 0.0;
    slow_ = 0.0;
    forPixels_ = 0.0;
    isFutile_ = false;
    frames_ = 0;
    quick_ = 0;
    patience_ = kPatience;
}

}  // namespace tessara

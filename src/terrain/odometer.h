#pragma once

#include "terrain/viewer.h"

#include <cstdint>
#include <limits>

/// Counts the way that a viewer travels between updates, so that an answer that holds for some way around the place
/// where it was found needn't be asked for again before the counter says so. All ways are measured along the axis on
/// which they are longest.
class Odometer {
public:
    /// A count of 256ths of a tree unit, rounded up.
    using Reading = std::uint32_t;

    static constexpr Reading kDue = 0;                                           ///< earlier than every count
    static constexpr Reading kOpen = std::numeric_limits<std::uint32_t>::max();  ///< later than every count

    /// Goes on to the place and the factor of an update. After an overlong way, a viewer that is nowhere or another
    /// factor the count begins anew, and readings taken before it mean nothing.
    void Advance(const Viewer& viewer, float factor);

    /// Begins anew with the next Advance.
    void Void() { valid_ = false; }

    /// Whether what holds up to a reading has to be asked for again.
    bool IsDue(Reading reading) const { return reading < now_ || isNew_; }

    /// The last reading for which the viewer has surely travelled no farther than a slack, in tree units, from here.
    Reading After(float slack) const
    {
        // The factor makes up for roundings of the slack and of this product.
        const float count = slack * (256.0f * (1.0f - 0x1p-16f));
        if (count >= 0x1p30f)
            return now_ + (1u << 30);
        return count > 0.0f ? now_ + static_cast<Reading>(count) : now_;
    }

private:
    Viewer at_{};
    float factor_ = 0.0f;
    Reading now_ = 1;
    bool isNew_ = true;  // no reading from before the last Advance means anything
    bool valid_ = false;
};

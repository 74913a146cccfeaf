#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

/// Colour ramp over normalised elevations: 256 table entries, drawn as straight lines between the entries that are
/// marked as nodes. Colour getters answer for any index: one above the range reads the entry at `maxElevation`, and
/// whatever a damaged range leads to reads the nearest entry of the table. The range fields may hold any numbers, as a
/// file may bring them: nothing here reads or writes past the tables.
class ElevationPalette {
public:
    /// Dark green, light green, brown, white, at the entries 0, 50, 200 and 255.
    ElevationPalette();
    ElevationPalette(const ElevationPalette&) = default;
    ElevationPalette& operator=(const ElevationPalette&) = default;
    virtual ~ElevationPalette();

    /// Stores a copy, allocated with `new`, through `copy`. The caller owns it. \throws std::bad_alloc
    void Clone(ElevationPalette** copy) const;

    std::uint8_t GetRed(std::int16_t index) const { return Entry(red, index); }
    std::uint8_t GetGreen(std::int16_t index) const { return Entry(green, index); }
    std::uint8_t GetBlue(std::int16_t index) const { return Entry(blue, index); }

    /// \param index an entry, whatever the range is; one that the table doesn't have is ignored
    void SetRed(std::int16_t index, std::uint8_t level) { SetEntry(red, index, level); }
    void SetGreen(std::int16_t index, std::uint8_t level) { SetEntry(green, index, level); }
    void SetBlue(std::int16_t index, std::uint8_t level) { SetEntry(blue, index, level); }

    /// Marks (1) or unmarks (0) a node for the next Rebuild. An index above `maxElevation` is ignored.
    void SetNode(std::int16_t index, std::uint8_t flag);

    /// \param index an entry, whatever the range is \return 0 for one that the table doesn't have
    std::uint8_t GetNode(std::int32_t index) const
    {
        return static_cast<std::uint32_t>(index) < nodeFlags.size() ? nodeFlags[static_cast<std::size_t>(index)] : 0;
    }

    /// Refreshes `nodes` and redraws the lines between them. With fewer than two nodes the colours stay.
    void Rebuild();

    /// Table index of a normalised elevation t: t scaled onto the range, truncated to 16 bits; what falls outside the
    /// range, below it too, and what is no number, gives `maxElevation`.
    std::int16_t IndexOf(float t) const
    {
        const double scaled =
            static_cast<double>(t) * maxElevation - static_cast<double>(t) * minElevation + minElevation;
        if (!(std::fabs(scaled) < 2147483647.0))
            return IndexOfLarge(scaled);
        return InRange(static_cast<std::int16_t>(static_cast<std::int32_t>(scaled)));
    }

    /// Red, green and blue in 0.0 to 1.0 and an alpha of 1.0. \param color four floats
    void GetColor(float t, float* color) const;

    /// A black-to-white ramp between two nodes, 0 and `maxElevation`: entry i of all 256 is i, but for white at
    /// `maxElevation`. `nodes` stays as it was until the next Rebuild. \throws std::bad_alloc
    void ResetRamp();

    std::vector<std::uint8_t> red;
    std::vector<std::uint8_t> green;
    std::vector<std::uint8_t> blue;
    std::vector<std::uint8_t> nodeFlags;  ///< 1 marks a node, every other value does not
    std::vector<std::uint8_t> nodes;      ///< indices of the nodes in ascending order, as of the last Rebuild
    std::int32_t minElevation = 0;        ///< lowest table index, not metres
    std::int32_t maxElevation = 255;      ///< highest table index

private:
    static void SetEntry(std::vector<std::uint8_t>& table, std::int32_t index, std::uint8_t value)
    {
        if (static_cast<std::uint32_t>(index) < table.size())
            table[static_cast<std::size_t>(index)] = value;
    }

    std::uint8_t Entry(const std::vector<std::uint8_t>& table, std::int32_t index) const
    {
        std::int32_t at = index > maxElevation ? maxElevation : index;
        if (static_cast<std::uint32_t>(at) >= table.size()) {
            if (table.empty())
                return 0;
            at = at < 0 ? 0 : static_cast<std::int32_t>(table.size()) - 1;
        }
        return table[static_cast<std::size_t>(at)];
    }

    std::int16_t InRange(std::int16_t index) const
    {
        return index <= maxElevation && index >= minElevation ? index : static_cast<std::int16_t>(maxElevation);
    }

    std::int16_t IndexOfLarge(double scaled) const;
};

#include "host/project/measured_heights.h"

#include "host/elevation/elevation_data.h"
#include "host/project/project_place.h"
#include "persistence/saved_matrix.h"

#include <algorithm>
#include <cstring>

namespace tessara {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr const char* kMetres = "MATRIX_METRES";
constexpr const char* kHoles = "MATRIX_HOLES";
constexpr std::int32_t kBytes = 0x80;

/// A bit for each cell, eight to a byte, the lowest first.
std::size_t BitBytes(std::size_t cells)
{
    return (cells + 7) / 8;
}

bool Bit(const Bytes& bits, std::size_t cell)
{
    return (bits[cell / 8] >> cell % 8 & 1) != 0;
}

void SetBit(Bytes& bits, std::size_t cell)
{
    bits[cell / 8] = static_cast<std::uint8_t>(bits[cell / 8] | 1u << cell % 8);
}

bool IsHole(const ElevationData& data, std::size_t cell)
{
    return !data.holes.empty() && data.holes[cell] != 0;
}

/// Between metres and elevations, as a terrain session does it.
class Range {
public:
    explicit Range(const ElevationData& data)
        : low_(static_cast<double>(data.minimum)), range_(static_cast<double>(data.maximum) - low_)
    {
    }
    float Elevation(float metres) const
    {
        return range_ > 0.0 ? static_cast<float>((static_cast<double>(metres) - low_) / range_) : 0.0f;
    }
    float Metres(float elevation) const { return static_cast<float>(low_ + static_cast<double>(elevation) * range_); }

private:
    double low_;
    double range_;
};

void WriteOrRemove(ProjectPlace& place, const char* name, const Bytes& bytes)
{
    if (std::any_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte != 0; }))
        place.Write(name, kBytes, bytes.data(), bytes.size());
    else
        place.Remove(name);
}

}  // namespace

void WriteMeasured(ProjectPlace& place, const SavedMatrix& matrix, const ElevationData& data)
{
    const std::size_t cells = data.metres.size() == matrix.elevations.size() ? data.metres.size() : 0;
    const Range range(data);
    Bytes metres(BitBytes(cells));
    Bytes holes(metres.size());
    for (std::size_t cell = 0; cell < cells; ++cell) {
        const float height = data.metres[cell];
        const float elevation = matrix.elevations[cell];
        const bool hole = IsHole(data, cell);
        if ((!hole && range.Metres(elevation) == height) || range.Elevation(height) != elevation)
            continue;
        SetBit(metres, cell);
        if (hole)
            SetBit(holes, cell);
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(&height);
        metres.insert(metres.end(), bytes, bytes + sizeof height);
    }
    WriteOrRemove(place, kMetres, metres);
    WriteOrRemove(place, kHoles, holes);
}

void ReadMeasured(const ProjectPlace& place, const SavedMatrix& matrix, ElevationData& data)
{
    const std::size_t cells = matrix.elevations.size();
    const auto metres = place.Read(kMetres);
    if (!metres || metres->size() < BitBytes(cells))
        return;
    const auto holes = place.Read(kHoles);
    const bool hasHoles = holes && holes->size() == BitBytes(cells);
    const Range range(data);
    std::size_t next = BitBytes(cells);
    for (std::size_t cell = 0; cell < cells; ++cell) {
        if (!Bit(*metres, cell))
            continue;
        float height = 0.0f;
        if (metres->size() - next < sizeof height)
            return;
        std::memcpy(&height, metres->data() + next, sizeof height);
        next += sizeof height;
        if (range.Elevation(height) != matrix.elevations[cell])
            continue;
        data.metres[cell] = height;
        if (!hasHoles || !Bit(*holes, cell))
            continue;
        data.holes.resize(cells);
        data.holes[cell] = 1;
        ++data.missing;
    }
}

}  // namespace tessara

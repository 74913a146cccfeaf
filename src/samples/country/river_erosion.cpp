#include "samples/country/river_erosion.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessara {
namespace {

constexpr std::uint32_t kWall = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
constexpr float kDry = std::numeric_limits<float>::max();

/// How much a filled hollow rises from cell to cell towards its far side, in metres: enough that every cell has a lower
/// neighbour, too little to see.
constexpr float kFloodRise = 0.002f;

/// One over the distance to a neighbour in cells.
constexpr float kNearness[8] = {1.0f, 1.0f, 1.0f, 1.0f, 0.70710678f, 0.70710678f, 0.70710678f, 0.70710678f};

/// Strength of the water from an area, its power 3/8. Scaled so that a square kilometre counts as with the root.
float StreamStrength(float area)
{
    const float root = std::sqrt(area);
    return 5.6234133f * std::sqrt(root * std::sqrt(root));
}

/// Cells by rising level, in drawers of an eighth of a metre. In a drawer the last one in is the first one out. A level
/// never falls below the drawer that is being emptied.
class ShoreQueue {
public:
    explicit ShoreQueue(std::size_t cells) : next_(cells), first_(kDrawers, kNone) {}

    void Push(float level, std::uint32_t cell)
    {
        const auto drawer = static_cast<std::size_t>(std::min(level * 8.0f, static_cast<float>(kDrawers - 1)));
        next_[cell] = first_[drawer];
        first_[drawer] = cell;
    }

    /// \return kNone at the end
    std::uint32_t Pop()
    {
        while (current_ < kDrawers && first_[current_] == kNone)
            ++current_;
        if (current_ == kDrawers)
            return kNone;
        const std::uint32_t cell = first_[current_];
        first_[current_] = next_[cell];
        return cell;
    }

private:
    static constexpr std::size_t kDrawers = 1 << 16;
    std::vector<std::uint32_t> next_;   // by cell
    std::vector<std::uint32_t> first_;  // by drawer
    std::size_t current_ = 0;
};

}  // namespace

RiverErosion::RiverErosion(int size, float spacing)
    : size_(static_cast<std::uint32_t>(size)), spacing_(spacing), offsets_{0u - size_, 0u - 1u,         1u,
                                                                           size_,      0u - size_ - 1u, 1u - size_,
                                                                           size_ - 1u, size_ + 1u}
{
    const std::size_t cells = std::size_t{size_} * size_;
    for (std::vector<float>* field : {&heights, &uplift, &hardness, &repose, &creep, &spring, &water_, &areas_})
        field->resize(cells);
    rank_.resize(cells);
    order_.reserve(cells);
}

void RiverErosion::Step(float length)
{
    RaiseWall();
    Flood();
    GatherAreas();
    Incise(length);
    Creep(length);
}

void RiverErosion::RaiseWall()
{
    // The wall takes the heights beside it, so that no soil creeps through.
    const std::uint32_t last = size_ - 1;
    for (std::uint32_t i = 0; i < size_; ++i) {
        const std::uint32_t inner = std::clamp(i, 1u, last - 1);
        const std::uint32_t ring[4][2] = {{i, inner + size_},
                                          {i + last * size_, inner + (last - 1) * size_},
                                          {i * size_, 1 + inner * size_},
                                          {last + i * size_, last - 1 + inner * size_}};
        for (const auto& [wall, beside] : ring) {
            heights[wall] = heights[beside];
            rank_[wall] = kWall;
        }
    }
}

void RiverErosion::Flood()
{
    ShoreQueue queue(heights.size());
    const auto reach = [&](std::uint32_t cell) {
        for (const std::uint32_t offset : offsets_) {
            float& level = water_[cell + offset];
            if (level == kDry) {
                level = std::max(heights[cell + offset], water_[cell] + kFloodRise);
                queue.Push(level, cell + offset);
            }
        }
    };
    for (std::size_t cell = 0; cell < heights.size(); ++cell) {
        const bool wall = rank_[cell] == kWall;
        water_[cell] = heights[cell] > 0.0f && !wall ? kDry : 0.0f;
        rank_[cell] = wall ? kWall : 0;
    }
    for (std::uint32_t cell = 0; cell < heights.size(); ++cell)
        if (heights[cell] <= 0.0f && rank_[cell] != kWall)
            reach(cell);
    order_.clear();
    for (std::uint32_t cell = queue.Pop(); cell != kNone; cell = queue.Pop()) {
        order_.push_back(cell);
        rank_[cell] = static_cast<std::uint32_t>(order_.size());
        reach(cell);
    }
}

/// Calls visit(neighbour, nearness, share) for every neighbour that a cell drains to. The share, the cube of
/// the slope, gathers the water in the steepest of them without binding it to the eight directions.
template <class Visit>
void RiverErosion::VisitReceivers(std::uint32_t cell, Visit visit) const
{
    for (std::size_t i = 0; i < offsets_.size(); ++i) {
        const std::uint32_t neighbour = cell + offsets_[i];
        const float drop = water_[cell] - water_[neighbour];
        if (rank_[neighbour] >= rank_[cell] || drop <= 0.0f)
            continue;
        const float slope = drop * kNearness[i];
        visit(neighbour, kNearness[i], slope * slope * slope);
    }
}

void RiverErosion::GatherAreas()
{
    std::fill(areas_.begin(), areas_.end(), spacing_ * spacing_);
    for (auto entry = order_.rbegin(); entry != order_.rend(); ++entry) {
        std::array<std::pair<std::uint32_t, float>, 8> shares;
        std::size_t count = 0;
        float sum = 0.0f;
        VisitReceivers(*entry, [&](std::uint32_t receiver, float, float share) {
            shares[count++] = {receiver, share};
            sum += share;
        });
        if (sum <= 0.0f)
            continue;
        const float scale = areas_[*entry] / sum;
        for (std::size_t i = 0; i < count; ++i)
            areas_[shares[i].first] += shares[i].second * scale;
    }
}

void RiverErosion::Incise(float length)
{
    for (const std::uint32_t cell : order_) {
        float shares = 0.0f;
        float weights = 0.0f;  // shares by nearness: the pull of each receiver
        float sum = 0.0f;
        VisitReceivers(cell, [&](std::uint32_t receiver, float nearness, float share) {
            shares += share;
            weights += share * nearness;
            sum += share * nearness * heights[receiver];
        });
        if (weights <= 0.0f || shares <= 0.0f)
            continue;
        const float base = sum / weights;
        const float run = spacing_ * shares / weights;
        const float strength = StreamStrength(std::max(areas_[cell] - spring[cell], 0.0f));
        const float wear = length * strength / (run * hardness[cell]);
        const float raised = heights[cell] + length * uplift[cell];
        heights[cell] = std::min((raised + wear * base) / (1.0f + wear), base + repose[cell] * run);
    }
}

void RiverErosion::Creep(float length)
{
    before_ = heights;
    for (const std::uint32_t cell : order_) {
        const auto at = [&](std::size_t neighbour) { return before_[cell + offsets_[neighbour]]; };
        // Nine points spread evenly in all directions, five would favour the axes.
        const float mean = (4.0f * (at(0) + at(1) + at(2) + at(3)) + (at(4) + at(5) + at(6) + at(7))) / 20.0f;
        // A longer step would swing instead of settling.
        const float share = std::min(creep[cell] * length / (spacing_ * spacing_), 0.6f);
        heights[cell] = std::max(before_[cell] + (mean - before_[cell]) * share, 0.01f);
    }
}

}  // namespace tessara

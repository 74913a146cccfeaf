#include "app/viewer/picture/node_survey.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <unordered_map>
#include <unordered_set>

namespace tessara {

namespace {

struct Place {
    int x = 0;
    int z = 0;
    int half = 0;

    friend bool operator==(const Place&, const Place&) = default;

    /// The node that this one is a child of.
    Place Parent() const
    {
        const int side = 4 * half;
        const auto center = [side](int at) {
            return static_cast<int>(std::floor(static_cast<double>(at) / side)) * side + side / 2;
        };
        return {center(x), center(z), 2 * half};
    }
};

struct PlaceHash {
    std::size_t operator()(const Place& place) const noexcept
    {
        std::uint64_t mixed = static_cast<std::uint32_t>(place.x);
        mixed = mixed << 32 | static_cast<std::uint32_t>(place.z);
        mixed ^= static_cast<std::uint64_t>(place.half) << 13;
        mixed *= 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(mixed ^ mixed >> 29);
    }
};

int Rounded(float value)
{
    return static_cast<int>(std::lround(value));
}

/// The last column and row of the grid, at which everything beyond is drawn.
struct GridEnd {
    int x = 0;
    int z = 0;
};

GridEnd EndOf(std::span<const DrawnVertex> vertices)
{
    GridEnd end;
    for (const DrawnVertex& vertex : vertices) {
        end.x = std::max(end.x, Rounded(vertex.x));
        end.z = std::max(end.z, Rounded(vertex.z));
    }
    return end;
}

/// Where the centre of a node is that was drawn at the end of the grid.
int Uncut(int center, int end, int half)
{
    return center == end ? std::max(center, end / (2 * half) * 2 * half + half) : center;
}

/// The node of a triangle. One of its corners tells the size, along an axis at least. \return a half size of 0 for one
/// that the grid's end has cut off along both
Place NodeOf(const DrawnVertex* triangle, const GridEnd& end)
{
    const int x = Rounded(triangle[0].x);
    const int z = Rounded(triangle[0].z);
    int half = 0;
    for (int i = 1; i < 3; ++i)
        half = std::max({half, std::abs(Rounded(triangle[i].x) - x), std::abs(Rounded(triangle[i].z) - z)});
    if (!std::has_single_bit(static_cast<unsigned>(half)))
        return {};
    const Place place{Uncut(x, end.x, half), Uncut(z, end.z, half), half};
    const auto isCenter = [half](int at) { return at % half == 0 && at / half % 2 != 0; };
    return isCenter(place.x) && isCenter(place.z) ? place : Place{};
}

/// Counts the places and everything above them. \param root half size of the largest node
std::size_t CountWithAncestors(const std::unordered_map<Place, std::size_t, PlaceHash>& places, int root)
{
    std::unordered_set<Place, PlaceHash> seen;
    for (const auto& [drawn, index] : places) {
        for (Place place = drawn; place.half <= root && seen.insert(place).second;)
            place = place.Parent();
    }
    return seen.size();
}

}  // namespace

int LevelOf(const DrawnNode& node) noexcept
{
    return std::bit_width(static_cast<unsigned>(std::max(node.half, 1))) - 1;
}

NodeSurvey SurveyNodes(std::span<const DrawnVertex> vertices, int rootHalf)
{
    NodeSurvey survey;
    std::unordered_map<Place, std::size_t, PlaceHash> places;
    const GridEnd end = EndOf(vertices);
    survey.nodeOf.reserve(vertices.size() / 3);
    for (std::size_t i = 0; i + 2 < vertices.size(); i += 3) {
        const DrawnVertex* triangle = &vertices[i];
        const float low = std::min({triangle[0].y, triangle[1].y, triangle[2].y});
        const float high = std::max({triangle[0].y, triangle[1].y, triangle[2].y});
        const Place place = NodeOf(triangle, end);
        const auto [found, isNew] = places.try_emplace(place, survey.nodes.size());
        if (isNew)
            survey.nodes.push_back(
                {place.x, place.z, place.half, low, high, place.half == 0 || place.x > end.x || place.z > end.z});
        DrawnNode& node = survey.nodes[found->second];
        node.low = std::min(node.low, low);
        node.high = std::max(node.high, high);
        survey.nodeOf.push_back(found->second);
    }
    places.erase(Place{});
    survey.active = CountWithAncestors(places, rootHalf);
    return survey;
}

}  // namespace tessara

#include "persistence/saved_place.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>

namespace tessara {

namespace {

constexpr std::size_t kMostFloats = 3;

}  // namespace

SavedPlace::SavedPlace(IUnknown* parser, std::span<const SavedValue> values)
    : parser_(*static_cast<IParser*>(parser)), values_(values)
{
    names_.reserve(values.size());
    for (const SavedValue& value : values)
        names_.emplace_back(value.name);
}

// A name that goes to the parser is the parser's to free.

void SavedPlace::Write(std::size_t value, const void* bytes, std::size_t size)
{
    assert(names_[value].Get());
    parser_.AddNode(nullptr, names_[value].Detach(), bytes, static_cast<LONG>(size), values_[value].written);
}

bool SavedPlace::Find(std::size_t value, ParserNode* node)
{
    assert(names_[value].Get());
    *node = nullptr;
    return SUCCEEDED(parser_.FindNode(nullptr, names_[value].Detach(), -1, node));
}

Reading SavedPlace::Fetch(std::size_t value, ParserNode node, void* buffer)
{
    LONG count = 0;
    const HRESULT result = parser_.GetNodeValue(node, buffer, &count, values_[value].asked);
    return SUCCEEDED(result) && count != 0 ? Reading::Read : Reading::Unreadable;
}

Reading SavedPlace::Read(std::size_t value, void* buffer)
{
    ParserNode node = nullptr;
    return Find(value, &node) ? Fetch(value, node, buffer) : Reading::Missing;
}

Reading SavedPlace::ReadInteger(std::size_t value, LONG* number)
{
    LONG found = 0;
    const Reading result = Read(value, &found);
    if (result == Reading::Read)
        *number = found;
    return result;
}

Reading SavedPlace::ReadFloats(std::size_t value, std::span<float> numbers)
{
    std::array<float, kMostFloats> found{};
    assert(numbers.size() <= found.size());
    const Reading result = Read(value, found.data());
    if (result != Reading::Read)
        return result;
    const auto end = found.begin() + static_cast<std::ptrdiff_t>(numbers.size());
    if (!std::all_of(found.begin(), end, [](float number) { return std::isfinite(number); }))
        return Reading::Unreadable;
    std::transform(found.begin(), end, numbers.begin(),
                   [](float number) { return std::clamp(number, -kLargestSetting, kLargestSetting); });
    return Reading::Read;
}

std::size_t BlockSize(LONG columns, LONG rows, std::size_t itemSize)
{
    if (columns <= 0 || rows <= 0)
        return 0;
    const std::int64_t items = std::int64_t{columns} * rows;
    return items <= kLargestBlock / static_cast<std::int64_t>(itemSize) ? static_cast<std::size_t>(items) * itemSize
                                                                        : 0;
}

}  // namespace tessara

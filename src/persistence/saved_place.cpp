#include "persistence/saved_place.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <string_view>

namespace tessara {

namespace {

constexpr std::size_t kMostFloats = 3;

}  // namespace

SavedPlace::SavedPlace(IParser& parser, SavedId first, SavedId last)
    : parser_(parser), first_(static_cast<std::size_t>(first))
{
    const std::size_t end = static_cast<std::size_t>(last) + 1;
    names_.reserve(end - first_);
    for (std::size_t id = first_; id < end; ++id)
        names_.emplace_back(ValueOf(static_cast<SavedId>(id)).name);
}

/// A name that goes to the parser is the parser's to free.
BSTR SavedPlace::TakeName(SavedId value)
{
    BstrHolder& name = names_[static_cast<std::size_t>(value) - first_];
    assert(name.Get());
    return name.Detach();
}

void SavedPlace::Write(SavedId value, const void* bytes, std::size_t size)
{
    parser_.AddNode(nullptr, TakeName(value), bytes, static_cast<LONG>(size), ValueOf(value).written);
}

void SavedPlace::WriteText(SavedId value, const std::string& text)
{
    char bytes[kTextCapacity] = {};
    const std::string_view whole = text.c_str();
    std::size_t length = std::min(whole.size(), kTextCapacity - 1);
    while (length < whole.size() && length > 0 && (whole[length] & 0xC0) == 0x80)
        --length;
    whole.copy(bytes, length);
    Write(value, bytes, length + 1);
}

bool SavedPlace::Find(SavedId value, ParserNode* node)
{
    *node = nullptr;
    return SUCCEEDED(parser_.FindNode(nullptr, TakeName(value), -1, node));
}

Reading SavedPlace::Fetch(SavedId value, ParserNode node, void* buffer)
{
    LONG count = 0;
    const HRESULT result = parser_.GetNodeValue(node, buffer, &count, ValueOf(value).asked);
    return SUCCEEDED(result) && count != 0 ? Reading::Read : Reading::Unreadable;
}

Reading SavedPlace::Read(SavedId value, void* buffer)
{
    ParserNode node = nullptr;
    return Find(value, &node) ? Fetch(value, node, buffer) : Reading::Missing;
}

Reading SavedPlace::ReadInteger(SavedId value, LONG* number)
{
    LONG found = 0;
    const Reading result = Read(value, &found);
    if (result == Reading::Read)
        *number = found;
    return result;
}

Reading SavedPlace::ReadFloats(SavedId value, std::span<float> numbers)
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

Reading SavedPlace::ReadText(SavedId value, std::string* text)
{
    char bytes[kTextCapacity] = {};
    const Reading result = Read(value, bytes);
    bytes[kTextCapacity - 1] = 0;
    if (result == Reading::Read)
        text->assign(bytes);
    return result;
}

}  // namespace tessara

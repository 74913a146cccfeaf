#include "platform/com/registry/registry_data.h"

#include "platform/com/registry/registry_error.h"

#include <algorithm>

namespace tessara {

namespace {

constexpr char kSeparator = '\\';
constexpr std::size_t kLongestName = 255;
constexpr int kMostParts = 64;

/// Place of a character in the order of names: the separator comes first of all.
int Rank(char c)
{
    if (c == kSeparator)
        return 0;
    const auto byte = static_cast<unsigned char>(c);
    return (byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte) + 1;
}

bool IsControl(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
}

void RequireName(std::string_view name)
{
    if (name.size() > kLongestName || std::any_of(name.begin(), name.end(), IsControl))
        throw RegistryError(REGDB_E_INVALIDVALUE,
                            "A name in the class registry has control characters or more than 255 bytes.");
}

bool IsBelow(std::string_view path, std::string_view above)
{
    const RegistryNameLess less;
    return path.size() > above.size() && path[above.size()] == kSeparator &&
           !less(path.substr(0, above.size()), above) && !less(above, path.substr(0, above.size()));
}

}  // namespace

bool RegistryNameLess::operator()(std::string_view a, std::string_view b) const noexcept
{
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char left, char right) { return Rank(left) < Rank(right); });
}

RegistryData::RegistryData()
{
    keys_.try_emplace("CLSID");
}

bool RegistryData::HasKey(std::string_view path) const
{
    return keys_.find(path) != keys_.end();
}

const std::string* RegistryData::FindValue(std::string_view path, std::string_view name) const
{
    const auto key = keys_.find(path);
    if (key == keys_.end())
        return nullptr;
    const auto value = key->second.find(name);
    return value == key->second.end() ? nullptr : &value->second;
}

std::vector<std::string> RegistryData::Subkeys(std::string_view path) const
{
    std::vector<std::string> names;
    for (auto key = Below(path); key != keys_.end() && IsBelow(key->first, path); ++key) {
        const std::string_view rest = std::string_view(key->first).substr(path.size() + 1);
        if (rest.find(kSeparator) == std::string_view::npos)
            names.emplace_back(rest);
    }
    return names;
}

std::string RegistryData::CreateKey(std::string_view path)
{
    if (std::count(path.begin(), path.end(), kSeparator) >= kMostParts)
        throw RegistryError(REGDB_E_INVALIDVALUE, "A key of the class registry has more than 64 keys above it.");
    std::string spelled;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(kSeparator, start), path.size());
        const std::string_view part = path.substr(start, end - start);
        RequireName(part);
        if (part.empty())
            throw RegistryError(REGDB_E_INVALIDVALUE, "A key of the class registry has an empty name.");
        if (start > 0)
            spelled += kSeparator;
        spelled += part;
        spelled = keys_.try_emplace(spelled).first->first;
        start = end + 1;
    }
    return spelled;
}

void RegistryData::SetValue(std::string_view path, std::string_view name, std::string value)
{
    RequireName(name);
    keys_.find(CreateKey(path))->second.insert_or_assign(std::string(name), std::move(value));
}

void RegistryData::DeleteValue(std::string_view path, std::string_view name)
{
    const auto key = keys_.find(path);
    if (key == keys_.end())
        return;
    const auto value = key->second.find(name);
    if (value != key->second.end())
        key->second.erase(value);
}

void RegistryData::DeleteTree(std::string_view path)
{
    const auto first = keys_.find(path);
    if (first == keys_.end())
        return;
    auto last = std::next(first);
    while (last != keys_.end() && IsBelow(last->first, path))
        ++last;
    keys_.erase(first, last);
    keys_.try_emplace("CLSID");  // which is always there
}

RegistryData::Keys::const_iterator RegistryData::Below(std::string_view path) const
{
    return keys_.upper_bound(path);
}

}  // namespace tessara

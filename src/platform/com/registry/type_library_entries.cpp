#include "platform/com/registry/type_library_entries.h"

#include "platform/com/guid_text.h"
#include "platform/com/registry/registry_data.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace tessara {

namespace {

/// The system whose modules a path is good for, as a key's name.
constexpr char kSystem[] = "\\linux";
constexpr std::string_view kFlags = "FLAGS";
constexpr std::string_view kHelpFolder = "HELPDIR";

std::string Hex(unsigned value)
{
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, 16);
    return std::string(digits, end.ptr);
}

std::string LibraryKey(const TypeLibraryId& library)
{
    return "TypeLib\\" + GuidText(library.id);
}

std::string VersionKey(const TypeLibraryId& library)
{
    return LibraryKey(library) + '\\' + Hex(library.major) + '.' + Hex(library.minor);
}

std::string LocaleKey(const TypeLibraryId& library)
{
    return VersionKey(library) + '\\' + Hex(library.locale);
}

}  // namespace

std::string TypeLibraryPathKey(const TypeLibraryId& library)
{
    return LocaleKey(library) + kSystem;
}

void AddTypeLibrary(const TypeLibraryId& library, const std::string& modulePath, RegistryData& data)
{
    const std::string version = VersionKey(library);
    data.SetValue(version, {}, library.helpString);
    data.SetValue(version + '\\' + std::string(kFlags), {}, "0");
    data.SetValue(version + '\\' + std::string(kHelpFolder), {}, modulePath.substr(0, modulePath.rfind('/')));
    data.SetValue(TypeLibraryPathKey(library), {}, modulePath);
}

void RemoveTypeLibrary(const TypeLibraryId& library, RegistryData& data)
{
    data.DeleteTree(LocaleKey(library));
    const auto below = data.Subkeys(VersionKey(library));
    const bool otherLocales = std::any_of(
        below.begin(), below.end(), [](const std::string& name) { return name != kFlags && name != kHelpFolder; });
    if (!otherLocales)
        data.DeleteTree(VersionKey(library));
    if (data.Subkeys(LibraryKey(library)).empty())
        data.DeleteTree(LibraryKey(library));
}

}  // namespace tessara

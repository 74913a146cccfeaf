#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

/// Orders names without regard to the case of ASCII letters, and the parts of a path before whatever goes on in a name,
/// so that a key stands directly in front of all that is below it.
struct RegistryNameLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const noexcept;
};

/// Keys with string values. A path names a key from the root, its parts separated by backslashes. Names keep the
/// spelling of whoever made them and are found in any case. A value with an empty name is its key's default.
class RegistryData {
public:
    using Values = std::map<std::string, std::string, RegistryNameLess>;
    using Keys = std::map<std::string, Values, RegistryNameLess>;

    /// Holds the key CLSID, which is always there.
    RegistryData();

    bool HasKey(std::string_view path) const;

    /// \return null for a key or a value that isn't there
    const std::string* FindValue(std::string_view path, std::string_view name = {}) const;

    /// Names, without the path, of the keys directly below.
    std::vector<std::string> Subkeys(std::string_view path) const;

    /// Every key with its values, in order.
    const Keys& All() const noexcept { return keys_; }

    /// Makes a key, and those above it, where they aren't there yet.
    /// \return its path as spelled here
    /// \throws RegistryError with REGDB_E_INVALIDVALUE for a path of more than 64 parts, or with a part that is empty,
    /// longer than 255 bytes or has control characters
    std::string CreateKey(std::string_view path);

    /// Sets a value and makes its key. \throws as CreateKey, also for the value's name
    void SetValue(std::string_view path, std::string_view name, std::string value);

    void DeleteValue(std::string_view path, std::string_view name);

    /// Deletes a key and all that is below it.
    void DeleteTree(std::string_view path);

    bool operator==(const RegistryData&) const = default;

private:
    /// The first key below `path`, or the first behind it.
    Keys::const_iterator Below(std::string_view path) const;

    Keys keys_;
};

}  // namespace tessara

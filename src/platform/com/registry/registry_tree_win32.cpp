#include "platform/com/registry/registry_tree_win32.h"

#include "platform/com/registry/registry_error.h"
#include "platform/system/wide_text_win32.h"

#include <algorithm>
#include <iterator>

namespace tessara {

namespace {

constexpr std::size_t kLongestKeyName = 255;      // in bytes, of RegistryData
constexpr DWORD kLongestName = 16384;             // in characters, of the system
constexpr REGSAM kAccess = KEY_READ | KEY_WRITE;  // KEY_WRITE: also below it

class OpenKey {
public:
    OpenKey(HKEY above, const std::string& path)
    {
        if (RegOpenKeyExW(above, ToWide(path).c_str(), 0, KEY_READ, &key_) != ERROR_SUCCESS)
            key_ = nullptr;
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey()
    {
        if (key_)
            RegCloseKey(key_);
    }
    HKEY Get() const noexcept { return key_; }

private:
    HKEY key_ = nullptr;
};

std::vector<std::string> Subkeys(HKEY key)
{
    std::vector<std::string> names;
    wchar_t name[kLongestKeyName + 1];
    for (DWORD i = 0;; ++i) {
        DWORD length = static_cast<DWORD>(std::size(name));
        if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            return names;
        std::string narrow = ToNarrow({name, length});
        if (narrow.size() <= kLongestKeyName)
            names.push_back(std::move(narrow));
    }
}

std::string Text(HKEY key, const wchar_t* name)
{
    DWORD bytes = 0;
    constexpr DWORD kStrings = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
    if (RegGetValueW(key, nullptr, name, kStrings, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
        return {};
    std::wstring text(bytes / sizeof(wchar_t), L'\0');
    if (RegGetValueW(key, nullptr, name, kStrings, nullptr, text.data(), &bytes) != ERROR_SUCCESS)
        return {};
    return ToNarrow(text.c_str());
}

void ReadValues(HKEY key, const std::string& path, RegistryData& data)
{
    data.CreateKey(path);
    std::wstring name(kLongestName, L'\0');
    for (DWORD i = 0;; ++i) {
        DWORD length = kLongestName;
        if (RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            return;
        const std::wstring own(name, 0, length);
        data.SetValue(path, ToNarrow(own), Text(key, own.c_str()));
    }
}

void ReadTree(HKEY key, const std::string& path, RegistryData& data)
{
    ReadValues(key, path, data);
    for (const std::string& name : Subkeys(key)) {
        if (const OpenKey below(key, name); below.Get())
            ReadTree(below.Get(), path + '\\' + name, data);
    }
}

LSTATUS SetText(HKEY key, const std::string& name, const std::string& text)
{
    const std::wstring wide = ToWide(text);
    return RegSetValueExW(key, ToWide(name).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()),
                          static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t)));
}

/// Makes a key and gives it its values. \return the first failure, after which it goes on
LSTATUS WriteKey(HKEY classes, const std::string& path, const RegistryData::Values& values,
                 const RegistryData::Values& before)
{
    HKEY key = nullptr;
    LSTATUS status =
        RegCreateKeyExW(classes, ToWide(path).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    const auto note = [&status](LSTATUS result) {
        if (status == ERROR_SUCCESS)
            status = result;
    };
    for (const auto& [name, text] : values) {
        const auto old = before.find(name);
        if (old == before.end() || old->second != text)
            note(SetText(key, name, text));
    }
    for (const auto& [name, text] : before) {
        if (!values.contains(name))
            note(RegDeleteValueW(key, ToWide(name).c_str()));
    }
    RegCloseKey(key);
    return status;
}

/// \return the first failure, after which it goes on
LSTATUS ChangeAll(HKEY classes, const RegistryData& from, const RegistryData& to)
{
    static const RegistryData::Values kNothing;
    LSTATUS status = ERROR_SUCCESS;
    const auto note = [&status](LSTATUS result) {
        if (status == ERROR_SUCCESS)
            status = result;
    };
    // What is below a key stands behind it.
    const RegistryData::Keys& old = from.All();
    for (auto key = old.rbegin(); key != old.rend(); ++key) {
        if (!to.HasKey(key->first))
            note(RegDeleteKeyW(classes, ToWide(key->first).c_str()));
    }
    for (const auto& [path, values] : to.All()) {
        const auto before = old.find(path);
        if (before == old.end() || before->second != values)
            note(WriteKey(classes, path, values, before == old.end() ? kNothing : before->second));
    }
    return status;
}

}  // namespace

RegistryTree::RegistryTree(HKEY root) noexcept
{
    if (RegCreateKeyExW(root, L"Software\\Classes", 0, nullptr, 0, kAccess, nullptr, &classes_, nullptr) !=
        ERROR_SUCCESS)
        classes_ = nullptr;
}

RegistryTree::~RegistryTree()
{
    if (classes_)
        RegCloseKey(classes_);
}

RegistryData RegistryTree::Read(const RegistryData& places) const
{
    RegistryData data;
    for (const auto& [path, values] : places.All()) {
        const OpenKey key(classes_, path);
        if (!key.Get())
            continue;
        if (!values.empty()) {
            ReadTree(key.Get(), path, data);
            continue;
        }
        ReadValues(key.Get(), path, data);
        for (const std::string& name : Subkeys(key.Get()))
            data.CreateKey(path + '\\' + name);
    }
    return data;
}

void RegistryTree::Change(const RegistryData& from, const RegistryData& to) const
{
    const LSTATUS status = ChangeAll(classes_, from, to);
    if (status == ERROR_SUCCESS)
        return;
    ChangeAll(classes_, to, from);
    throw RegistryError(REGDB_E_WRITEREGDB, "The registry can't be written (error " + std::to_string(status) + ").");
}

}  // namespace tessara

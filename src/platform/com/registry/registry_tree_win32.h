#pragma once

#include "platform/com/registry/registry_data.h"
#include "platform/com/types.h"

namespace tessara {

/// The classes in the system's registry: the machine's, or the user's.
class RegistryTree {
public:
    /// \param root HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER
    explicit RegistryTree(HKEY root) noexcept;
    RegistryTree(const RegistryTree&) = delete;
    RegistryTree& operator=(const RegistryTree&) = delete;
    ~RegistryTree();

    /// Whether it may be written to.
    explicit operator bool() const noexcept { return classes_ != nullptr; }

    /// What stands at the keys of `places`: with all that is below where `places` has a value, else the names of the
    /// keys directly below. Of a value that is no string the name alone is read.
    RegistryData Read(const RegistryData& places) const;

    /// Makes what `from` describes into what `to` describes. \throws RegistryError, with everything as it was
    void Change(const RegistryData& from, const RegistryData& to) const;

private:
    HKEY classes_ = nullptr;
};

}  // namespace tessara

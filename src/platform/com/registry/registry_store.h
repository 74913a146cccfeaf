#pragma once

#include "platform/com/registry/registry_data.h"
#include "platform/com/registry_scope.h"

#include <string>
#include <vector>

namespace tessara {

/// One file of registrations.
struct RegistryStore {
    RegistryScope scope;
    std::string path;
};

/// The places where registrations are looked for, in this order, whether or not a file lies there: the user's, then
/// those of the machine. A program that runs with other rights than its user's looks at the machine's alone, in the
/// places that no environment variable names.
std::vector<RegistryStore> RegistryStores();

/// Where the registrations of a scope are written to.
/// \throws RegistryError with REGDB_E_WRITEREGDB where the user has no home
RegistryStore WritableRegistryStore(RegistryScope scope);

/// Reads a store as it is now, in one piece: writers replace the file. One that isn't there is empty.
/// \throws RegistryError with REGDB_E_READREGDB for one that can't be read or is damaged
RegistryData ReadRegistryStore(const RegistryStore& store);

bool RegistryStoreExists(const RegistryStore& store) noexcept;

/// Keeps other writers, of this process and of others, away from a store as long as it lives. Makes the store's folder.
class RegistryWriter {
public:
    /// Waits until no other writer is at work. \throws RegistryError with REGDB_E_WRITEREGDB
    explicit RegistryWriter(RegistryStore store);
    RegistryWriter(const RegistryWriter&) = delete;
    RegistryWriter& operator=(const RegistryWriter&) = delete;
    ~RegistryWriter();

    /// Puts `data` in the place of what was there, wholly or, when it throws, not at all.
    /// \throws RegistryError with REGDB_E_WRITEREGDB
    void Replace(const RegistryData& data);

private:
    RegistryStore store_;
    int lock_;  // descriptor of the lock file
};

}  // namespace tessara

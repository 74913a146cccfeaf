#pragma once

#include "types.h"

#include <array>
#include <map>
#include <optional>
#include <string>

namespace tessara {

/// What a module's file says about itself. The numbers are those of a version resource.
struct VersionRecord {
    using Version = std::array<WORD, 4>;

    Version fileVersion = {};
    Version productVersion = {};
    DWORD fileFlags = 0;
    DWORD fileOs = 0;    ///< 4: 32-bit Windows, which stands for every system with this component model
    DWORD fileType = 0;  ///< 2: a module
    WORD language = 0;   ///< of the strings
    WORD codePage = 0;
    std::map<std::string, std::string> strings;  ///< OLESelfRegister is there where a module can register itself
};

/// Reads the version record of a module's file, without loading the module.
/// \return nothing where the file has none that can be read \throws std::bad_alloc
TESSARA_EXPORT std::optional<VersionRecord> ReadVersionRecord(const std::string& modulePath);

}  // namespace tessara

#pragma once

#include <string_view>

// The data that the module carries in its file, where others find it without loading the module. The build makes the
// source from the files under resources/ and from surface/tessara.idl.

/// Text 100, the project's name: "Tessara".
extern const std::string_view kProjectName;

/// REGISTRY 102, the registration script.
extern const std::string_view kRegistryScript;

/// TYPELIB 1, the type description.
extern const std::string_view kTypeDescription;

/// VERSION 1, the version record.
extern const std::string_view kVersionText;

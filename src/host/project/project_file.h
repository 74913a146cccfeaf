#pragma once

#include "../storage/file_version.h"
#include "project_place.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

/// A project that is open for reading. It stays readable as it was when somebody replaces the file by a newer version.
class ProjectFile {
public:
    /// \throws StorageError, one sentence for the user, for what is no project, is damaged, or was saved by a newer
    /// version of the program
    explicit ProjectFile(const std::string& path);
    ~ProjectFile();

    const std::string& Path() const noexcept { return path_; }

    /// The file as it was when it was opened.
    const std::optional<FileVersion>& Version() const noexcept { return version_; }

    /// Names of the elements, in the order in which they were saved.
    const std::vector<std::string>& Elements() const noexcept { return names_; }

    /// \return null for a name that is none of Elements \throws StorageError
    ComPtr<ProjectPlace> Open(std::string_view element) const;

    /// What is remembered for the project as a whole. \throws StorageError
    ProjectSettings Settings() const;

private:
    std::string path_;
    std::optional<FileVersion> version_;
    std::shared_ptr<ProjectDatabase> database_;
    std::vector<std::string> names_;
    std::vector<std::int64_t> ids_;
};

/// Tells whether a file begins as project files do. It may be damaged all the same.
bool IsProjectFile(const std::string& path);

}  // namespace tessara

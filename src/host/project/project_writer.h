#pragma once

#include "project_place.h"

#include <memory>
#include <string>
#include <string_view>

namespace tessara {

class ReplacementFile;

/// A new version of a project, or a new project. Nothing of it shows until Commit puts it in place of the old one as a
/// whole; a process that ends before leaves the old one as it was. Methods throw StorageError, one sentence for the
/// user.
class ProjectWriter {
public:
    /// \param path a project, an empty file or a free name. A file of anything else is refused
    explicit ProjectWriter(const std::string& path);
    ProjectWriter(const ProjectWriter&) = delete;
    ProjectWriter& operator=(const ProjectWriter&) = delete;
    ~ProjectWriter();

    /// Adds an element without values. \param name not empty, and new to this version
    ComPtr<ProjectPlace> AddElement(const std::string& name);

    /// Adds an element with all values and settings of one of another project.
    /// \param name not empty, and new to this version
    ComPtr<ProjectPlace> CopyElement(const ProjectPlace& from, const std::string& name);

    /// The same under the name that it has there.
    ComPtr<ProjectPlace> CopyElement(const ProjectPlace& from) { return CopyElement(from, from.Name()); }

    /// What is remembered for the project as a whole.
    void Set(std::string_view name, const ProjectSetting& value);

    /// Puts the new version in place. Throws as well where a value that came in through AddNode couldn't be stored; the
    /// old version then stays. Nothing can be written afterwards.
    void Commit();

private:
    void PutInPlace();

    std::unique_ptr<ReplacementFile> file_;
    std::shared_ptr<ProjectDatabase> database_;
};

}  // namespace tessara

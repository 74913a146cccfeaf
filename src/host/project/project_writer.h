#pragma once

#include "../storage/file_version.h"
#include "project_place.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

class NameLock;
class ReplacementFile;

/// A new version of a project, or a new project. Nothing of it shows until Commit puts it in place of the old one as a
/// whole; a process that ends before leaves the old one as it was. As long as it lives, every other writer of the same
/// file waits. Methods throw StorageError, one sentence for the user.
class ProjectWriter {
public:
    /// \param path a project, an empty file or a free name. A file of anything else is refused, and a project that a
    /// program of another kind is changing \param from a project, the same one or another, with all of whose content
    /// the new version begins, known or not; empty begins with nothing
    explicit ProjectWriter(const std::string& path, const std::string& from = {});
    ProjectWriter(const ProjectWriter&) = delete;
    ProjectWriter& operator=(const ProjectWriter&) = delete;
    ~ProjectWriter();

    /// The file that will be replaced, as it was when this writer began; nothing where there was none.
    const std::optional<FileVersion>& Replaced() const noexcept { return replaced_; }

    /// Names of the elements, in the order in which they were added.
    std::vector<std::string> Elements();

    /// \return null for a name that no element has
    ComPtr<ProjectPlace> Open(const std::string& name);

    /// Adds an element without values. \param name one that NameProblem finds good, and new to this version
    ComPtr<ProjectPlace> AddElement(const std::string& name);

    /// \param name of an element \param to as for AddElement
    void Rename(const std::string& name, const std::string& to);
    void Remove(const std::string& name);

    /// What is remembered for the project as a whole.
    void Set(std::string_view name, const ProjectSetting& value);

    /// Puts the new version in place. Throws as well where a value that came in through AddNode couldn't be stored, and
    /// where another program has changed the old version meanwhile, which then stays. Nothing can be written
    /// afterwards.
    void Commit();

private:
    void PutInPlace();
    void RequireNew(const std::string& name);

    std::unique_ptr<NameLock> lock_;
    std::unique_ptr<ReplacementFile> file_;
    std::optional<FileVersion> replaced_;
    std::shared_ptr<ProjectDatabase> database_;
};

}  // namespace tessara

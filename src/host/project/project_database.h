#pragma once

#include "host/project/project_setting.h"
#include "host/storage/sqlite_file.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

/// A named value of an element, without its bytes.
struct ProjectValue {
    std::string name;
    std::int32_t typeCode = 0;
    std::int64_t size = 0;  ///< in bytes; -1 for what is no value
    std::int32_t parts = 0;
};

/// The tables of a project file: elements, their values, their settings. Element 0 is the project itself. Methods throw
/// StorageError, with one sentence that names the file, and std::bad_alloc; after Close all of them do.
class ProjectDatabase {
public:
    struct Element {
        std::int64_t id = 0;
        std::string name;
    };

    /// Opens a project for reading. \throws StorageError for what is no project, or one of a newer version
    explicit ProjectDatabase(const std::string& path);

    /// Opens a file that nobody else uses for writing: an empty one, whose tables it makes, or the copy of a project.
    /// \param shownPath what messages call the file
    ProjectDatabase(const std::string& path, const std::string& shownPath);

    /// Makes an empty file a copy of this project, with all that is in it.
    void CopyTo(const std::string& path) { File().CopyTo(path); }

    const std::string& Path() const { return File().Path(); }

    /// In the order in which they were added.
    std::vector<Element> Elements();

    /// Number of the element of a name, 0 where there is none.
    std::int64_t Find(std::string_view name);

    std::int64_t AddElement(std::string_view name);
    void RenameElement(std::int64_t element, std::string_view name);

    /// Removes an element with its values and settings.
    void RemoveElement(std::int64_t element);

    /// By name.
    std::vector<ProjectValue> Values(std::int64_t element);

    /// \param buffer of the value's size \return false for a value that isn't there in that size any more
    bool ReadValue(std::int64_t element, const ProjectValue& value, std::span<std::uint8_t> buffer);

    /// Adds a value, or replaces the one of that name.
    void WriteValue(std::int64_t element, std::string_view name, std::int32_t typeCode,
                    std::span<const std::uint8_t> bytes);
    void RemoveValue(std::int64_t element, std::string_view name);

    ProjectSettings Settings(std::int64_t element);
    void WriteSetting(std::int64_t element, std::string_view name, const ProjectSetting& value);
    void RemoveSetting(std::int64_t element, std::string_view name);

    /// Keeps the first failure of a caller that can't report it: Close throws it.
    void NoteFailure() noexcept
    {
        if (!failure_)
            failure_ = std::current_exception();
    }

    /// Lets a new project's content count and closes its file. \throws what NoteFailure noted
    void Close();

private:
    SqliteFile& File();
    const SqliteFile& File() const;
    void CheckVersion();
    void InsertPart(std::int64_t element, std::string_view name, std::int64_t part, std::int64_t typeCode,
                    std::span<const std::uint8_t> bytes);

    std::optional<SqliteFile> file_;
    std::optional<SqliteTransaction> transaction_;
    std::exception_ptr failure_;
};

}  // namespace tessara

#include "host/project/project_writer.h"

#include "host/project/element_name.h"
#include "host/project/project_database.h"
#include "host/project/project_file.h"
#include "host/storage/name_lock.h"
#include "host/storage/sqlite_file.h"
#include "host/storage/storage_error.h"
#include "platform/system/file_error.h"
#include "platform/system/replacement_file.h"

#include <filesystem>

namespace tessara {

namespace {

/// The file that a path leads to.
std::string Followed(const std::string& path)
{
    std::error_code error;
    const auto found = std::filesystem::canonical(path, error);
    return error ? path : found.string();
}

/// Only a project is replaced by a project, and only one that has no changes beside it.
const std::string& Replaceable(const std::string& path)
{
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error) && std::filesystem::file_size(path, error) != 0) {
        if (!IsProjectFile(path))
            throw StorageError("\"" + path + "\" is not a Tessara project and is left as it is");
        TakeInJournal(Followed(path));
    }
    return path;
}

std::shared_ptr<ProjectDatabase> Begin(const ReplacementFile& file, const std::string& from)
{
    if (!from.empty())
        ProjectDatabase(from).CopyTo(file.Path());
    return std::make_shared<ProjectDatabase>(file.Path(), file.Target());
}

}  // namespace

ProjectWriter::ProjectWriter(const std::string& path, const std::string& from)
try : lock_(std::make_unique<NameLock>(Followed(path))),
    file_(std::make_unique<ReplacementFile>(Replaceable(path), ReplacementFile::Kind::File)),
    replaced_(VersionOf(path)), database_(Begin(*file_, from)) {
} catch (const FileError& error) {
    throw StorageError("Can't write \"" + path + "\": " + error.Reason());
}

ProjectWriter::~ProjectWriter() = default;

std::vector<std::string> ProjectWriter::Elements()
{
    std::vector<std::string> names;
    for (ProjectDatabase::Element& element : database_->Elements())
        names.push_back(std::move(element.name));
    return names;
}

ComPtr<ProjectPlace> ProjectWriter::Open(const std::string& name)
{
    const std::int64_t element = database_->Find(name);
    return element != 0 ? MakeObject<ProjectPlace>(database_, element, name, true) : nullptr;
}

void ProjectWriter::RequireNew(const std::string& name)
{
    const std::string problem = NameProblem(name);
    if (!problem.empty())
        throw StorageError("The name of a terrain " + problem);
    if (database_->Find(name) != 0)
        throw StorageError("The project \"" + file_->Target() + "\" has a terrain \"" + name + "\" already");
}

ComPtr<ProjectPlace> ProjectWriter::AddElement(const std::string& name)
{
    RequireNew(name);
    return MakeObject<ProjectPlace>(database_, database_->AddElement(name), name, true);
}

void ProjectWriter::Rename(const std::string& name, const std::string& to)
{
    if (name == to)
        return;
    RequireNew(to);
    database_->RenameElement(database_->Find(name), to);
}

void ProjectWriter::Remove(const std::string& name)
{
    database_->RemoveElement(database_->Find(name));
}

void ProjectWriter::Set(std::string_view name, const ProjectSetting& value)
{
    database_->WriteSetting(0, name, value);
}

void ProjectWriter::PutInPlace()
{
    if (VersionOf(file_->Target()) != replaced_ || !JournalBeside(Followed(file_->Target())).empty())
        throw StorageError("Another program has changed \"" + file_->Target() + "\" meanwhile");
    try {
        file_->PutInPlace();
    } catch (const FileError& error) {
        throw StorageError("Can't write \"" + file_->Target() + "\": " + error.Reason());
    }
}

void ProjectWriter::Commit()
{
    try {
        database_->Close();
        PutInPlace();
    } catch (const StorageError& error) {
        if (!file_->ReplacesFile())
            throw;
        throw StorageError(std::string(error.what()) + "; the old project is unchanged");
    }
}

}  // namespace tessara

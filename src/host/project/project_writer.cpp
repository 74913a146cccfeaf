#include "host/project/project_writer.h"

#include "host/project/project_database.h"
#include "host/project/project_file.h"
#include "host/storage/storage_error.h"
#include "platform/system/replacement_file.h"

#include <algorithm>
#include <filesystem>

namespace tessara {

namespace {

/// Only a project is replaced by a project.
const std::string& Replaceable(const std::string& path)
{
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error) && std::filesystem::file_size(path, error) != 0 &&
        !IsProjectFile(path))
        throw StorageError("\"" + path + "\" is not a Tessara project and is left as it is");
    return path;
}

}  // namespace

ProjectWriter::ProjectWriter(const std::string& path)
try : file_(std::make_unique<ReplacementFile>(Replaceable(path), ReplacementFile::Kind::File)),
    database_(std::make_shared<ProjectDatabase>(file_->Path(), file_->Target())) {
} catch (const FileError& error) {
    throw StorageError("Can't write \"" + path + "\": " + error.Reason());
}

ProjectWriter::~ProjectWriter() = default;

ComPtr<ProjectPlace> ProjectWriter::AddElement(const std::string& name)
{
    const auto elements = database_->Elements();
    if (name.empty() || std::any_of(elements.begin(), elements.end(), [&](const auto& e) { return e.name == name; }))
        throw StorageError("The project \"" + file_->Target() + "\" can't have another terrain of the name \"" + name +
                           "\"");
    return MakeObject<ProjectPlace>(database_, database_->AddElement(name), name, true);
}

ComPtr<ProjectPlace> ProjectWriter::CopyElement(const ProjectPlace& from, const std::string& name)
{
    ComPtr<ProjectPlace> place = AddElement(name);
    database_->CopyElement(*from.database_, from.element_, place->element_);
    place->Reload();
    return place;
}

void ProjectWriter::Set(std::string_view name, const ProjectSetting& value)
{
    database_->WriteSetting(0, name, value);
}

void ProjectWriter::PutInPlace()
{
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

#include "host/project/project_file.h"

#include "host/project/project_database.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace tessara {

ProjectFile::ProjectFile(const std::string& path)
    : path_(path), version_(VersionOf(path)), database_(std::make_shared<ProjectDatabase>(path))
{
    for (ProjectDatabase::Element& element : database_->Elements()) {
        names_.push_back(std::move(element.name));
        ids_.push_back(element.id);
    }
}

ProjectFile::~ProjectFile() = default;

ComPtr<ProjectPlace> ProjectFile::Open(std::string_view element) const
{
    const auto found = std::find(names_.begin(), names_.end(), element);
    if (found == names_.end())
        return nullptr;
    const std::int64_t id = ids_[static_cast<std::size_t>(found - names_.begin())];
    return MakeObject<ProjectPlace>(database_, id, *found, false);
}

ProjectSettings ProjectFile::Settings() const
{
    return database_->Settings(0);
}

bool IsProjectFile(const std::string& path)
{
    constexpr std::string_view kFormat{"SQLite format 3", 16};
    constexpr std::string_view kApplication = "TSPR";
    constexpr std::size_t kApplicationAt = 68;
    std::array<char, kApplicationAt + kApplication.size()> header{};
    // To look into a pipe would take away what it holds, or wait for ever.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return false;
    std::ifstream file(path, std::ios::binary);
    return file.read(header.data(), header.size()) && std::string_view(header.data(), kFormat.size()) == kFormat &&
           std::string_view(header.data() + kApplicationAt, kApplication.size()) == kApplication;
}

}  // namespace tessara

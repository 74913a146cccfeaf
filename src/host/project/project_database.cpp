#include "host/project/project_database.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace tessara {

namespace {

constexpr std::int64_t kVersion = 1;

// The tables, word by word as the file keeps them: one that is declared in another way isn't a project's.
constexpr const char* kTables[][2] = {
    {"element", "CREATE TABLE element (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE)"},
    {"value", "CREATE TABLE value (element INTEGER NOT NULL, name TEXT NOT NULL, part INTEGER NOT NULL, "
              "type INTEGER NOT NULL, bytes BLOB NOT NULL, PRIMARY KEY (element, name, part))"},
    {"setting", "CREATE TABLE setting (element INTEGER NOT NULL, name TEXT NOT NULL, value NOT NULL, "
                "PRIMARY KEY (element, name))"},
};

constexpr SqliteFile::Kind kKind = {
    0x54535052,  // "TSPR"
    "Tessara project",
    "PRAGMA user_version = 1",
    // Large pages for large values. The file counts only when it has been put in place, so it needs no journal.
    "PRAGMA page_size = 32768; PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF; PRAGMA locking_mode = EXCLUSIVE",
};

/// Larger values lie in several rows, since a row passes through memory as a whole.
constexpr std::size_t kPartSize = std::size_t{16} << 20;

/// No project that anybody made has more; a damaged one may seem to.
constexpr std::int64_t kMostElements = 10000;
constexpr std::int64_t kMostRows = 100000;

std::string Existing(const std::string& path)
{
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::not_found || type == std::filesystem::file_type::none)
        throw StorageError("There is no project \"" + path + "\"" +
                           (type == std::filesystem::file_type::none ? ": " + error.message() : ""));
    if (type != std::filesystem::file_type::regular)
        throw StorageError("\"" + path + "\" is a " +
                           (type == std::filesystem::file_type::directory ? "folder" : "pipe or a device") +
                           " and no Tessara project");
    return path;
}

}  // namespace

ProjectDatabase::ProjectDatabase(const std::string& path)
{
    file_.emplace(Existing(path), SqliteFile::Access::ReadOnly, kKind);
    CheckVersion();
}

ProjectDatabase::ProjectDatabase(const std::string& path, const std::string& shownPath)
{
    const bool isNew = std::filesystem::is_empty(path);
    file_.emplace(path, SqliteFile::Access::ReadWrite, kKind, shownPath);
    transaction_.emplace(*file_);
    if (isNew) {
        for (const auto& table : kTables)
            file_->Execute(table[1]);
    } else {
        CheckVersion();
    }
}

SqliteFile& ProjectDatabase::File()
{
    if (!file_)
        throw StorageError("The project is closed");
    return *file_;
}

const SqliteFile& ProjectDatabase::File() const
{
    return const_cast<ProjectDatabase*>(this)->File();
}

void ProjectDatabase::CheckVersion()
{
    const std::int64_t version = File().Number("PRAGMA user_version");
    if (version > kVersion)
        throw StorageError("The project \"" + Path() + "\" was saved by a newer version of Tessara (its format is " +
                           std::to_string(version) + ", this version knows " + std::to_string(kVersion) + ")");
    if (version < 1)
        File().Damaged("it has no version");
    for (const auto& [name, text] : kTables) {
        SqliteStatement row(File(), "SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ? LIMIT 1");
        if (!row.Bind(name).Step() || row.Text(0) != text)
            File().Damaged("its table \"" + std::string(name) + "\" is not that of a project");
    }
}

std::vector<ProjectDatabase::Element> ProjectDatabase::Elements()
{
    SqliteStatement rows(File(), "SELECT id, name FROM element ORDER BY id LIMIT ?");
    rows.Bind(kMostElements);
    std::vector<Element> elements;
    while (rows.Step())
        elements.push_back({rows.Number(0), rows.Text(1)});
    return elements;
}

std::int64_t ProjectDatabase::Find(std::string_view name)
{
    SqliteStatement row(File(), "SELECT id FROM element WHERE name = ?");
    return row.Bind(name).Step() ? row.Number(0) : 0;
}

std::int64_t ProjectDatabase::AddElement(std::string_view name)
{
    SqliteStatement(File(), "INSERT INTO element (name) VALUES (?)").Bind(name).Step();
    return Find(name);
}

void ProjectDatabase::RenameElement(std::int64_t element, std::string_view name)
{
    SqliteStatement(File(), "UPDATE element SET name = ? WHERE id = ?").Bind(name).Bind(element).Step();
}

void ProjectDatabase::RemoveElement(std::int64_t element)
{
    for (const char* statement : {"DELETE FROM value WHERE element = ?", "DELETE FROM setting WHERE element = ?",
                                  "DELETE FROM element WHERE id = ?"})
        SqliteStatement(File(), statement).Bind(element).Step();
}

std::vector<ProjectValue> ProjectDatabase::Values(std::int64_t element)
{
    SqliteStatement rows(File(), "SELECT name, part, type, length(bytes), typeof(bytes) FROM value WHERE element = ?"
                                 " ORDER BY name, part LIMIT ?");
    rows.Bind(element).Bind(kMostRows);
    // Whatever a damaged file claims: no value is larger than the whole file.
    const std::int64_t largest = File().Number("PRAGMA page_count") * File().Number("PRAGMA page_size");
    std::vector<ProjectValue> values;
    while (rows.Step()) {
        std::string name = rows.Text(0);
        if (values.empty() || values.back().name != name)
            values.push_back({std::move(name), static_cast<std::int32_t>(rows.Number(2)), 0, 0});
        ProjectValue& value = values.back();
        const bool whole = value.size >= 0 && rows.Number(1) == value.parts && rows.Text(4) == "blob";
        value.size = whole ? value.size + rows.Number(3) : -1;
        if (value.size > largest)
            value.size = -1;
        ++value.parts;
    }
    return values;
}

bool ProjectDatabase::ReadValue(std::int64_t element, const ProjectValue& value, std::span<std::uint8_t> buffer)
{
    SqliteStatement rows(File(), "SELECT bytes FROM value WHERE element = ? AND name = ? ORDER BY part LIMIT ?");
    rows.Bind(element).Bind(value.name).Bind(std::int64_t{value.parts});
    while (rows.Step()) {
        const std::span<const std::uint8_t> part = rows.Bytes(0);
        if (part.size() > buffer.size())
            return false;
        std::copy(part.begin(), part.end(), buffer.begin());
        buffer = buffer.subspan(part.size());
    }
    return buffer.empty();
}

void ProjectDatabase::InsertPart(std::int64_t element, std::string_view name, std::int64_t part, std::int64_t typeCode,
                                 std::span<const std::uint8_t> bytes)
{
    constexpr std::uint8_t kNothing = 0;
    SqliteStatement insert(File(), "INSERT INTO value (element, name, part, type, bytes) VALUES (?, ?, ?, ?, ?)");
    insert.Bind(element).Bind(name).Bind(part).Bind(typeCode);
    insert.Bind(bytes.empty() ? std::span(&kNothing, 0) : bytes);  // a null pointer would be bound as NULL
    insert.Step();
}

void ProjectDatabase::WriteValue(std::int64_t element, std::string_view name, std::int32_t typeCode,
                                 std::span<const std::uint8_t> bytes)
{
    RemoveValue(element, name);
    std::int64_t part = 0;
    do {
        const auto piece = bytes.first(std::min(bytes.size(), kPartSize));
        InsertPart(element, name, part++, typeCode, piece);
        bytes = bytes.subspan(piece.size());
    } while (!bytes.empty());
}

void ProjectDatabase::RemoveValue(std::int64_t element, std::string_view name)
{
    SqliteStatement(File(), "DELETE FROM value WHERE element = ? AND name = ?").Bind(element).Bind(name).Step();
}

ProjectSettings ProjectDatabase::Settings(std::int64_t element)
{
    SqliteStatement rows(File(), "SELECT name, value FROM setting WHERE element = ? ORDER BY name LIMIT ?");
    rows.Bind(element).Bind(kMostRows);
    ProjectSettings settings;
    while (rows.Step()) {
        if (rows.IsText(1))
            settings[rows.Text(0)] = rows.Text(1);
        else if (rows.IsNumber(1) && std::isfinite(rows.Real(1)))
            settings[rows.Text(0)] = rows.Real(1);
    }
    return settings;
}

void ProjectDatabase::WriteSetting(std::int64_t element, std::string_view name, const ProjectSetting& value)
{
    SqliteStatement insert(File(), "INSERT OR REPLACE INTO setting (element, name, value) VALUES (?, ?, ?)");
    insert.Bind(element).Bind(name);
    if (const double* number = std::get_if<double>(&value))
        insert.Bind(*number);
    else
        insert.Bind(std::get<std::string>(value));
    insert.Step();
}

void ProjectDatabase::RemoveSetting(std::int64_t element, std::string_view name)
{
    SqliteStatement(File(), "DELETE FROM setting WHERE element = ? AND name = ?").Bind(element).Bind(name).Step();
}

void ProjectDatabase::Close()
{
    if (failure_)
        std::rethrow_exception(failure_);
    File();
    if (transaction_)
        transaction_->Commit();
    transaction_.reset();
    // What was taken out leaves room that the next values take; a file that is mostly room is packed.
    if (file_->Number("PRAGMA freelist_count") > file_->Number("PRAGMA page_count") / 4)
        file_->Execute("VACUUM");
    file_.reset();
}

}  // namespace tessara

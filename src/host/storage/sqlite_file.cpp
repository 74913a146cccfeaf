#include "host/storage/sqlite_file.h"

#include <sqlite3.h>

#include <filesystem>
#include <system_error>

namespace tessara {

namespace {

constexpr int kWaitMilliseconds = 10000;

}  // namespace

SqliteFile::SqliteFile(const std::string& path, Access access, const Kind& kind, const std::string& shownPath)
    : path_(shownPath.empty() ? path : shownPath), file_(path), kind_(kind)
{
    RequireFile(path);
    const int flags = access == Access::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    const int result = sqlite3_open_v2(path.c_str(), &handle_, flags | SQLITE_OPEN_FULLMUTEX, nullptr);
    try {
        if (result != SQLITE_OK)
            Fail();
        Configure();
        if (access == Access::ReadWrite)
            Execute(kind.settings);
        CheckKind(access);
    } catch (...) {
        sqlite3_close_v2(handle_);
        throw;
    }
}

SqliteFile::~SqliteFile()
{
    sqlite3_close_v2(handle_);
}

/// A file may come from anywhere: nothing in its schema is trusted.
void SqliteFile::Configure()
{
    sqlite3_busy_timeout(handle_, kWaitMilliseconds);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_extended_result_codes(handle_, 1);
}

/// Opening a pipe would wait for its other end; what can't be looked at has a reason that SQLite doesn't tell.
void SqliteFile::RequireFile(const std::string& path) const
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    const auto refuse = [&](const std::string& why) {
        throw StorageError("Can't use the " + std::string(kind_.name) + " \"" + path_ + "\": " + why);
    };
    if (status.type() == std::filesystem::file_type::none)
        refuse(error.message());
    if (std::filesystem::is_directory(status))
        refuse("it is a folder");
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        refuse("it is no regular file");
}

void SqliteFile::CheckKind(Access access)
{
    const auto isEmpty = [this] {
        return Number("PRAGMA application_id") == 0 && Number("SELECT count(*) FROM sqlite_schema") == 0;
    };
    if (access == Access::ReadWrite && isEmpty()) {
        SqliteTransaction transaction(*this);
        if (isEmpty()) {  // no other process was faster
            Execute(kind_.schema);
            Execute(("PRAGMA application_id = " + std::to_string(kind_.applicationId)).c_str());
        }
        transaction.Commit();
    }
    if (Number("PRAGMA application_id") != kind_.applicationId)
        throw StorageError("\"" + path_ + "\" is not a " + kind_.name);
}

void SqliteFile::Execute(const char* statements)
{
    if (sqlite3_exec(handle_, statements, nullptr, nullptr, nullptr) != SQLITE_OK)
        Fail();
}

int SqliteFile::ChangedRows() const
{
    return sqlite3_changes(handle_);
}

std::int64_t SqliteFile::Number(const char* query)
{
    SqliteStatement statement(*this, query);
    return statement.Step() ? statement.Number(0) : 0;
}

void SqliteFile::Damaged(std::string_view what) const
{
    throw StorageError("The " + std::string(kind_.name) + " \"" + path_ + "\" is damaged: " + std::string(what));
}

void SqliteFile::CopyTo(const std::string& path)
{
    sqlite3* target = nullptr;
    int result = sqlite3_open_v2(path.c_str(), &target, SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX, nullptr);
    if (result == SQLITE_OK)
        result = sqlite3_exec(target, "PRAGMA synchronous = OFF; PRAGMA journal_mode = OFF", nullptr, nullptr, nullptr);
    if (result == SQLITE_OK) {
        sqlite3_backup* const copy = sqlite3_backup_init(target, "main", handle_, "main");
        if (copy) {
            sqlite3_backup_step(copy, -1);
            result = sqlite3_backup_finish(copy);
        } else {
            result = sqlite3_errcode(target);
        }
    }
    // One that keeps its changes in a journal does so in the copy too; nobody else is to have that journal.
    if (result == SQLITE_OK)
        result = sqlite3_exec(target, "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
    sqlite3_close_v2(target);
    if (result == SQLITE_NOMEM)
        throw std::bad_alloc();
    if (result != SQLITE_OK)
        throw StorageError("Can't copy the " + std::string(kind_.name) + " \"" + path_ +
                           "\": " + sqlite3_errstr(result));
}

/// What is wrong, where it isn't the library's own words that say it best.
std::string SqliteFile::FailureText() const
{
    const std::string journal = JournalBeside(file_);
    const int code = sqlite3_errcode(handle_) & 0xFF;
    if (!journal.empty() && (code == SQLITE_READONLY || code == SQLITE_CANTOPEN || code == SQLITE_BUSY))
        return "a program is changing it, or was interrupted while it did: \"" + journal +
               "\" holds the rest. Open it once with that program, or with the SQLite shell";
    if (code == SQLITE_BUSY)
        return "another program is changing it";
    return sqlite3_errmsg(handle_);
}

void SqliteFile::Fail() const
{
    const int code = sqlite3_errcode(handle_) & 0xFF;
    if (code == SQLITE_NOMEM)
        throw std::bad_alloc();
    if (code == SQLITE_NOTADB)
        throw StorageError("\"" + path_ + "\" is not a " + kind_.name);
    if (code == SQLITE_CORRUPT || code == SQLITE_ERROR)
        Damaged(sqlite3_errmsg(handle_));
    throw StorageError("Can't use the " + std::string(kind_.name) + " \"" + path_ + "\": " + FailureText());
}

std::string JournalBeside(const std::string& database)
{
    for (const char* ending : {"-wal", "-journal"}) {
        std::error_code error;
        const auto size = std::filesystem::file_size(database + ending, error);
        if (!error && size != 0)
            return database + ending;
    }
    return {};
}

void TakeInJournal(const std::string& database)
{
    if (JournalBeside(database).empty())
        return;
    sqlite3* handle = nullptr;
    if (sqlite3_open_v2(database.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX, nullptr) ==
        SQLITE_OK) {
        sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_exec(handle, "SELECT count(*) FROM sqlite_schema; PRAGMA journal_mode = DELETE", nullptr, nullptr,
                     nullptr);
    }
    sqlite3_close_v2(handle);
    const std::string left = JournalBeside(database);
    if (!left.empty())
        throw StorageError("Another program has \"" + database + "\" open: \"" + left +
                           "\" holds changes of it that would be lost. Close it there first");
}

SqliteStatement::SqliteStatement(SqliteFile& file, std::string_view text) : file_(file)
{
    Check(sqlite3_prepare_v2(file.handle_, text.data(), static_cast<int>(text.size()), &statement_, nullptr));
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(statement_);
}

void SqliteStatement::Check(int result) const
{
    if (result != SQLITE_OK)
        file_.Fail();
}

SqliteStatement& SqliteStatement::Bind(std::string_view text)
{
    Check(sqlite3_bind_text64(statement_, ++parameter_, text.data() ? text.data() : "", text.size(), SQLITE_STATIC,
                              SQLITE_UTF8));
    return *this;
}

SqliteStatement& SqliteStatement::Bind(std::int64_t number)
{
    Check(sqlite3_bind_int64(statement_, ++parameter_, number));
    return *this;
}

SqliteStatement& SqliteStatement::Bind(double number)
{
    Check(sqlite3_bind_double(statement_, ++parameter_, number));
    return *this;
}

SqliteStatement& SqliteStatement::Bind(std::span<const std::uint8_t> bytes)
{
    Check(sqlite3_bind_blob64(statement_, ++parameter_, bytes.data(), bytes.size(), SQLITE_STATIC));
    return *this;
}

bool SqliteStatement::Step()
{
    const int result = sqlite3_step(statement_);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        file_.Fail();
    return false;
}

std::string SqliteStatement::Text(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))) : std::string();
}

std::int64_t SqliteStatement::Number(int column) const
{
    return sqlite3_column_int64(statement_, column);
}

double SqliteStatement::Real(int column) const
{
    return sqlite3_column_double(statement_, column);
}

bool SqliteStatement::IsText(int column) const
{
    return sqlite3_column_type(statement_, column) == SQLITE_TEXT;
}

bool SqliteStatement::IsNumber(int column) const
{
    const int type = sqlite3_column_type(statement_, column);
    return type == SQLITE_INTEGER || type == SQLITE_FLOAT;
}

bool SqliteStatement::IsBytes(int column) const
{
    return sqlite3_column_type(statement_, column) == SQLITE_BLOB;
}

std::span<const std::uint8_t> SqliteStatement::Bytes(int column) const
{
    const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_, column));
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

SqliteTransaction::SqliteTransaction(SqliteFile& file) : file_(file)
{
    file_.Execute("BEGIN IMMEDIATE");
}

SqliteTransaction::~SqliteTransaction()
{
    if (!open_)
        return;
    try {
        file_.Execute("ROLLBACK");
    } catch (const std::exception&) {
        // The library rolls back by itself after the failures that end a transaction.
    }
}

void SqliteTransaction::Commit()
{
    file_.Execute("COMMIT");
    open_ = false;
}

}  // namespace tessara

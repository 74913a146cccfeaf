#pragma once

#include "host/storage/storage_error.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace tessara {

/// An SQLite file of one kind, known by a number in its header. Several processes may have it open: who finds it locked
/// waits a while. Text is UTF-8.
class SqliteFile {
public:
    enum class Access { ReadOnly, ReadWrite };

    /// What a file of the kind is.
    struct Kind {
        std::int32_t applicationId;
        const char* name;           ///< for messages, as in "texture database"
        const char* schema;         ///< statements that make an empty one
        const char* settings = "";  ///< statements that come first with ReadWrite
    };

    /// Opens a file, or makes it with ReadWrite where there is none. A file of another kind isn't changed.
    /// \param shownPath what messages call the file; empty stands for its path \throws StorageError
    SqliteFile(const std::string& path, Access access, const Kind& kind, const std::string& shownPath = {});
    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;
    ~SqliteFile();

    /// Runs statements without results. \throws StorageError
    void Execute(const char* statements);

    /// First column of a query's first row, 0 where there is none. \throws StorageError
    std::int64_t Number(const char* query);

    /// Makes an empty file a copy of this database as it is at the moment, whole and with all that only others
    /// understand. \throws StorageError
    void CopyTo(const std::string& path);

    /// Number of rows that the last statement wrote or removed.
    int ChangedRows() const;

    const std::string& Path() const { return path_; }

    /// Says that the file's content is wrong. \throws StorageError always
    [[noreturn]] void Damaged(std::string_view what) const;

private:
    friend class SqliteStatement;

    std::string FailureText() const;
    void RequireFile(const std::string& path) const;
    void Configure();
    void CheckKind(Access access);
    [[noreturn]] void Fail() const;

    std::string path_;
    std::string file_;
    const Kind& kind_;
    sqlite3* handle_ = nullptr;
};

/// A journal that lies beside a database: changes that aren't in the file itself yet, or not all of them. Who puts
/// another file in the database's place would mix the two. \return its path, empty where there is none
std::string JournalBeside(const std::string& database);

/// Takes what such a journal holds into the database, as any program does that opens it for writing.
/// \throws StorageError where that can't be, because another program has the database open
void TakeInJournal(const std::string& database);

/// One statement, for one run.
class SqliteStatement {
public:
    /// \throws StorageError
    SqliteStatement(SqliteFile& file, std::string_view text);
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;
    ~SqliteStatement();

    /// Gives the next parameter its value. Texts and bytes must stay valid until the last Step.
    SqliteStatement& Bind(std::string_view text);
    SqliteStatement& Bind(std::int64_t number);
    SqliteStatement& Bind(double number);
    SqliteStatement& Bind(std::span<const std::uint8_t> bytes);

    /// Goes to the next row. \return false behind the last one \throws StorageError
    bool Step();

    // Columns of the row, from 0. Texts and bytes are valid until the next Step.
    std::string Text(int column) const;
    std::int64_t Number(int column) const;
    double Real(int column) const;
    bool IsText(int column) const;
    bool IsNumber(int column) const;
    bool IsBytes(int column) const;
    std::span<const std::uint8_t> Bytes(int column) const;

private:
    void Check(int result) const;

    SqliteFile& file_;
    sqlite3_stmt* statement_ = nullptr;
    int parameter_ = 0;
};

/// Holds the write lock from its making on; what was written counts as a whole with Commit, or not at all.
class SqliteTransaction {
public:
    /// \throws StorageError
    explicit SqliteTransaction(SqliteFile& file);
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;
    ~SqliteTransaction();

    /// \throws StorageError
    void Commit();

private:
    SqliteFile& file_;
    bool open_ = true;
};

}  // namespace tessara

#pragma once

// What somebody with the database shell does to a file.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace tessara::test {

/// A connection that stays open, as another program's does.
class SqliteShell {
public:
    explicit SqliteShell(const std::string& path) { EXPECT_EQ(sqlite3_open(path.c_str(), &database_), SQLITE_OK); }
    SqliteShell(const SqliteShell&) = delete;
    SqliteShell& operator=(const SqliteShell&) = delete;
    ~SqliteShell() { sqlite3_close(database_); }

    /// Runs statements. \return first column of their last row
    std::string Run(const std::string& statements)
    {
        std::string last;
        char* error = nullptr;
        const auto take = [](void* to, int, char** texts, char**) {
            *static_cast<std::string*>(to) = texts[0] ? texts[0] : "";
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(database_, statements.c_str(), take, &last, &error), SQLITE_OK) << error;
        sqlite3_free(error);
        return last;
    }

private:
    sqlite3* database_ = nullptr;
};

/// Bytes as statements name them.
inline std::string SqlBlob(const std::vector<std::uint8_t>& bytes)
{
    std::string text = "x'";
    for (const std::uint8_t byte : bytes)
        text += {"0123456789ABCDEF"[byte / 16], "0123456789ABCDEF"[byte % 16]};
    return text + "'";
}

inline std::string RunSql(const std::string& path, const std::string& statements)
{
    return SqliteShell(path).Run(statements);
}

}  // namespace tessara::test

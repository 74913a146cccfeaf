// New versions of a project that others work on as well.

#include "host/project/element_name.h"
#include "host/project/project_file.h"
#include "host/project/project_writer.h"
#include "host/storage/sqlite_file.h"
#include "support/scratch_folder.h"
#include "support/sqlite_shell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <thread>
#include <vector>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class ProjectUpdateTest : public testing::Test {
protected:
    ProjectUpdateTest()
    {
        ProjectWriter writer(path_);
        for (const char* name : {"north", "south"}) {
            const auto place = writer.AddElement(name);
            place->Write("OTHER", 7, name, 5);
            place->Set("number", 1.0);
        }
        writer.Commit();
    }
    void Save(double number)
    {
        ProjectWriter writer(path_, path_);
        writer.Open("north")->Set("number", number);
        writer.Commit();
    }
    std::string FailureOf(const std::function<void()>& save)
    {
        try {
            save();
        } catch (const StorageError& error) {
            return error.what();
        }
        return "no failure";
    }
    double Number() { return NumberOf(ProjectFile(path_).Open("north")->Settings(), "number", -1.0); }

    ScratchFolder folder_;
    const std::string path_ = folder_ / "project.tessara";
};

TEST_F(ProjectUpdateTest, ChangesWhatItIsToldAndKeepsEverythingElse)
{
    RunSql(path_,
           "INSERT INTO setting VALUES (1, 'blob', x'0102'), (1, 'endless', 9e999), (1, 'wide', 9007199254740993);"
           "CREATE TABLE foreigner (a); INSERT INTO foreigner VALUES ('kept');"
           "INSERT INTO value VALUES (1, 'TEXT', 0, 7, 'no bytes');"
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100100)"
           " INSERT INTO setting SELECT 2, 's' || i, i FROM n;"
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10100)"
           " INSERT INTO element (name) SELECT 't' || i FROM n");
    const std::string everything =
        "SELECT group_concat(text, '|') FROM (SELECT id || name AS text FROM element WHERE id > 2 UNION ALL"
        " SELECT element || name || quote(value) FROM setting WHERE name <> 'number' UNION ALL"
        " SELECT element || name || part || type || quote(bytes) FROM value UNION ALL SELECT a FROM foreigner)";
    const std::string before = RunSql(path_, everything);
    {
        ProjectWriter writer(path_, path_);
        writer.Rename("south", "west");
        writer.Open("west")->Set("number", 5.0);
        EXPECT_FALSE(writer.Open("south"));
        EXPECT_THAT(FailureOf([&] { writer.AddElement("t10100"); }), HasSubstr("has a terrain \"t10100\" already"));
        EXPECT_THAT(FailureOf([&] { writer.Rename("west", "north"); }), HasSubstr("has a terrain \"north\" already"));
        writer.Commit();
    }
    EXPECT_TRUE(RunSql(path_, everything) == before);
    EXPECT_EQ(RunSql(path_, "SELECT value FROM setting WHERE element = 2 AND name = 'number'"), "5.0");
    EXPECT_EQ(RunSql(path_, "SELECT name FROM element WHERE id = 2"), "west");
}

TEST_F(ProjectUpdateTest, ARemovedTerrainGivesItsRoomBack)
{
    const std::vector<char> block(std::size_t{20} << 20, 'x');
    {
        ProjectWriter writer(path_, path_);
        writer.AddElement("large")->Write("BLOCK", 0x80, block.data(), block.size());
        writer.Commit();
    }
    ProjectWriter writer(path_, path_);
    writer.Remove("large");
    EXPECT_THAT(writer.Elements(), ElementsAre("north", "south"));
    writer.Commit();
    EXPECT_LT(std::filesystem::file_size(path_), 1u << 20);
    EXPECT_EQ(RunSql(path_, "PRAGMA integrity_check"), "ok");
}

TEST_F(ProjectUpdateTest, WritersWaitForEachOtherFromTheReadToTheRename)
{
    std::vector<std::thread> writers;
    for (int i = 0; i < 6; ++i) {
        writers.emplace_back([this, i] {
            ProjectWriter writer(path_, path_);
            writer.AddElement("terrain " + std::to_string(i));
            writer.Commit();
        });
    }
    for (std::thread& writer : writers)
        writer.join();
    EXPECT_THAT(ProjectFile(path_).Elements(), SizeIs(8));
    EXPECT_THAT(folder_.Files(), ElementsAre("project.tessara"));
}

TEST_F(ProjectUpdateTest, WhatAnotherProgramChangesMeanwhileIsNotWrittenOver)
{
    const auto opened = ProjectFile(path_).Version();
    ProjectWriter writer(path_, path_);
    EXPECT_EQ(writer.Replaced(), opened);
    RunSql(path_, "UPDATE setting SET value = 7");
    EXPECT_THAT(FailureOf([&] { writer.Commit(); }), HasSubstr("Another program has changed \"" + path_));
    EXPECT_EQ(Number(), 7.0);
    EXPECT_NE(ProjectFile(path_).Version(), opened);
}

TEST_F(ProjectUpdateTest, AJournalBesideTheProjectIsTakenInOrTheProjectIsLeftAlone)
{
    {
        SqliteShell other(path_);
        other.Run("PRAGMA journal_mode = WAL; UPDATE setting SET value = 2");
        EXPECT_EQ(Number(), 2.0) << "a reader sees what the journal holds";
        EXPECT_THAT(FailureOf([this] { Save(3.0); }), HasSubstr("project.tessara-wal\" holds changes"));
        EXPECT_EQ(other.Run("SELECT max(value) FROM setting"), "2");
        // The program ends without putting things in order.
        for (const char* ending : {"", "-wal"})
            std::filesystem::copy_file(path_ + ending, folder_ / ("crashed" + std::string(ending)));
    }
    const auto takeIn = [this](const std::string& path) {
        ProjectWriter writer(path, path);
        writer.Open("north")->Set("other", 4.0);
        writer.Commit();
        EXPECT_EQ(JournalBeside(path), "");
        return NumberOf(ProjectFile(path).Open("south")->Settings(), "number", -1.0);
    };
    EXPECT_EQ(takeIn(folder_ / "crashed"), 2.0);

    {
        SqliteShell other(path_);
        other.Run("PRAGMA journal_mode = DELETE; PRAGMA cache_size = 1; PRAGMA cache_spill = 1; BEGIN;"
                  "UPDATE setting SET value = 9; UPDATE value SET bytes = zeroblob(500000);"
                  "UPDATE value SET bytes = zeroblob(600000)");
        for (const char* ending : {"", "-journal"})
            std::filesystem::copy_file(path_ + ending, folder_ / ("hot" + std::string(ending)));
    }
    EXPECT_THAT(FailureOf([this] { ProjectFile(folder_ / "hot"); }), HasSubstr("hot-journal\" holds the rest"));
    EXPECT_EQ(takeIn(folder_ / "hot"), 2.0) << "half a change is undone";
}

TEST(ElementNameTest, NamesArePlainTextOfSomeLength)
{
    const struct {
        std::string name, problem, usable;
    } cases[] = {{"Grimsel \u00e4\u00f6 / 2", "", "Grimsel \u00e4\u00f6 / 2"},
                 {std::string(200, 'x'), "", std::string(200, 'x')},
                 {"", "is empty", "sample"},
                 {std::string(199, 'x') + "\u00e4", "is longer than 200 bytes", std::string(199, 'x')},
                 {"a\x1b[2Jb\n", "has a control character", "a_[2Jb_"},
                 {"a\u009bb\x7f", "has a control character", "a_b_"},
                 {"a\xff", "is not UTF-8", "a\ufffd"}};
    for (const auto& c : cases) {
        EXPECT_EQ(NameProblem(c.name), c.problem);
        EXPECT_EQ(UsableName(c.name), c.usable);
    }
    EXPECT_EQ(NameFromFile("/maps/al\tps.tif"), "al_ps");
    EXPECT_EQ(NameFromFile(""), "sample");
}

}  // namespace

}  // namespace tessara::test

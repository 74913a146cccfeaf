#include "host/project/project_file.h"
#include "host/project/project_writer.h"
#include "host/storage/sqlite_file.h"
#include "platform/com/bstr.h"
#include "support/scratch_folder.h"
#include "support/sqlite_shell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <fstream>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

BSTR Name(const char* text)
{
    return MakeBstr(text);
}

std::string FailureOf(const std::string& path)
{
    try {
        const ProjectFile project(path);
    } catch (const StorageError& error) {
        return error.what();
    }
    return "it opens";
}

class ProjectFileTest : public testing::Test {
protected:
    /// A project with two terrains that have values of the same names.
    void Save()
    {
        ProjectWriter writer(path_);
        writer.Set("title", std::string("Zwei Gel\u00e4nde"));
        for (const float lod : {1.5f, 2.5f}) {
            const auto place = writer.AddElement(lod < 2.0f ? "north" : "south");
            EXPECT_EQ(place->AddNode(nullptr, Name("KVOxml_LOD"), &lod, 4, 0x10), S_OK);
            EXPECT_EQ(place->AddNode(nullptr, Name("DATABASE"), "USERDB", 7, 0x40), S_OK);
            place->Set("camera.x", 0.1 + static_cast<double>(lod));
        }
        writer.Commit();
    }
    HRESULT Deliver(ProjectPlace& place, const char* name, void* buffer, LONG* count)
    {
        ParserNode node = nullptr;
        const HRESULT found = place.FindNode(nullptr, Name(name), -1, &node);
        return FAILED(found) ? found : place.GetNodeValue(node, buffer, count, 0x123);
    }

    ScratchFolder folder_;
    const std::string path_ = folder_ / "project.tessara";
};

TEST_F(ProjectFileTest, KeepsValuesAndSettingsOfSeveralTerrainsApart)
{
    Save();
    const ProjectFile project(path_);
    EXPECT_TRUE(IsProjectFile(path_));
    EXPECT_THAT(project.Elements(), ElementsAre("north", "south"));
    EXPECT_EQ(TextOf(project.Settings(), "title"), "Zwei Gel\u00e4nde");
    EXPECT_FALSE(project.Open("west"));
    for (const float lod : {1.5f, 2.5f}) {
        const auto place = project.Open(lod < 2.0f ? "north" : "south");
        float value = 0.0f;
        LONG count = 0;
        EXPECT_EQ(Deliver(*place, "KVOxml_LOD", &value, &count), S_OK);
        EXPECT_EQ(value, lod);
        EXPECT_EQ(count, 4);
        EXPECT_EQ(NumberOf(place->Settings(), "camera.x", 0.0), 0.1 + static_cast<double>(lod));
        EXPECT_THAT(place->Values(),
                    ElementsAre(testing::Field(&ProjectPlace::Value::name, "DATABASE"),
                                testing::AllOf(testing::Field(&ProjectPlace::Value::typeCode, 0x10),
                                               testing::Field(&ProjectPlace::Value::deliverable, true))));
    }
}

TEST_F(ProjectFileTest, AnswersForWhatItCantDeliver)
{
    Save();
    const auto place = ProjectFile(path_).Open("north");
    ParserNode node = nullptr;
    LONG count = 7;
    char byte = 0;
    EXPECT_EQ(place->FindNode(nullptr, Name("TRANSLATION"), -1, &node), E_FAIL);
    EXPECT_EQ(place->FindNode(nullptr, Name("KVOxml_LOD"), 0, &node), E_FAIL);
    EXPECT_EQ(place->FindNode(nullptr, nullptr, -1, &node), E_FAIL);
    EXPECT_EQ(place->FindNode(nullptr, Name("KVOxml_LOD"), -1, nullptr), E_POINTER);
    EXPECT_EQ(place->GetNodeValue(nullptr, &byte, &count, 2), E_INVALIDARG);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(place->GetNodeValue(&byte, &byte, &count, 2), E_INVALIDARG);
    EXPECT_TRUE(FAILED(place->AddNode(nullptr, Name("KVOxml_LOD"), "1234", 4, 2))) << "it is open for reading";
}

TEST_F(ProjectFileTest, AValueThatIsWrittenAgainReplacesTheFirstOne)
{
    {
        ProjectWriter writer(path_);
        const auto place = writer.AddElement("terrain");
        const std::vector<std::uint8_t> large(40u << 20, 5);  // three parts in the file
        place->Write("OTHER", 0x80, large.data(), large.size());
        EXPECT_EQ(*place->Read("OTHER"), large);
        place->Write("OTHER", 0x80, "ab", 2);
        place->Write("EMPTY", 0x80, nullptr, 0);
        place->Set("a", 1.0);
        place->Set("a", std::string("two"));
        writer.Commit();
        EXPECT_THROW(place->Write("OTHER", 0x80, "ab", 2), StorageError) << "the project is closed";
    }
    const auto place = ProjectFile(path_).Open("terrain");
    EXPECT_THAT(*place->Read("OTHER"), ElementsAre('a', 'b'));
    EXPECT_THAT(*place->Read("EMPTY"), IsEmpty());
    EXPECT_FALSE(place->Read("NONE"));
    EXPECT_EQ(TextOf(place->Settings(), "a"), "two");
    EXPECT_EQ(NumberOf(place->Settings(), "a", 9.0), 9.0);
}

TEST_F(ProjectFileTest, LargeValuesComeBackThroughTheParser)
{
    const LONG side = 2500;  // more than one part
    std::vector<float> elevations(static_cast<std::size_t>(side) * side);
    for (std::size_t i = 0; i < elevations.size(); ++i)
        elevations[i] = static_cast<float>(i);
    {
        ProjectWriter writer(path_);
        const auto place = writer.AddElement("terrain");
        place->Write("MATRIX_WIDTH", 8, &side, sizeof side);
        place->Write("MATRIX_HEIGHT", 8, &side, sizeof side);
        place->Write("MATRIX_DATA", 0x10, elevations.data(), elevations.size() * sizeof(float));
        writer.Commit();
    }
    const auto place = ProjectFile(path_).Open("terrain");
    std::vector<float> loaded(elevations.size());
    LONG count = 0;
    EXPECT_EQ(Deliver(*place, "MATRIX_DATA", loaded.data(), &count), S_OK);
    EXPECT_EQ(count, 25000000);
    EXPECT_TRUE(loaded == elevations);
}

TEST_F(ProjectFileTest, NeverDeliversAValueOfAnotherSizeThanItsNameCallsFor)
{
    const LONG two = 2;
    const std::string longText(1024, 'x');
    {
        ProjectWriter writer(path_);
        const auto place = writer.AddElement("terrain");
        place->Write("KVOxml_LOD", 0x10, "12345", 5);
        place->Write("DATABASE", 0x40, "USERDB", 6);  // without its terminator
        place->Write("TEXTURE_DET_NAME", 0x40, longText.data(), 1024);
        place->Write("TEXTURE_DET_TABLE", 0x40, longText.c_str(), 1025);
        place->Write("MATRIX_WIDTH", 8, &two, 4);
        place->Write("MATRIX_HEIGHT", 8, &two, 4);
        place->Write("MATRIX_DATA", 0x10, "12345678901234567", 17);
        place->Write("TEXTURE_SRC_WIDTH", 8, &two, 3);
        place->Write("TEXTURE_SRC_DATA", 0x280, "1234567890123456", 16);
        place->Write("SOMETHING", 2, &two, 4);
        writer.Commit();
    }
    const auto place = ProjectFile(path_).Open("terrain");
    for (const char* name : {"KVOxml_LOD", "DATABASE", "TEXTURE_DET_NAME", "TEXTURE_DET_TABLE", "MATRIX_DATA",
                             "TEXTURE_SRC_WIDTH", "TEXTURE_SRC_DATA", "SOMETHING"}) {
        std::vector<char> buffer(2000, 'u');
        LONG count = 7;
        EXPECT_TRUE(FAILED(Deliver(*place, name, buffer.data(), &count))) << name;
        EXPECT_THAT(buffer, testing::Each('u')) << name;
        EXPECT_TRUE(place->Read(name)) << "a caller that asks for its size gets anything";
    }
    ParserNode node = nullptr;
    EXPECT_EQ(place->FindNode(nullptr, Name("KVOxml_LOD"), -1, &node), S_OK);
    EXPECT_EQ(place->FindNode(nullptr, Name("MATRIX_DATA"), -1, &node), E_FAIL) << "nobody is to make room for it";
}

TEST_F(ProjectFileTest, BelievesNoSizeBeyondTheFile)
{
    const std::vector<char> block(70000);
    {
        ProjectWriter writer(path_);
        writer.AddElement("terrain")->Write("BLOCK", 0x80, block.data(), block.size());
        writer.Commit();
    }
    std::string file = ReadBytes(path_);
    const std::string size = "\x88\xC5\x6C";  // of a row's last column: 70000 bytes
    const std::size_t at = file.find(size, file.find("BLOCK") - 10);
    ASSERT_NE(at, std::string::npos);
    // A number in three groups of seven bits grows. The row's size stands before its columns' ones.
    const auto grow = [&file](std::size_t from, unsigned by) {
        unsigned number = by;
        for (std::size_t i = 0; i < 3; ++i)
            number += (static_cast<unsigned>(file[from + i]) & 0x7Fu) << (14 - 7 * i);
        for (std::size_t i = 0; i < 3; ++i)
            file[from + i] = static_cast<char>((number >> (14 - 7 * i) & 0x7Fu) | (i < 2 ? 0x80u : 0u));
    };
    constexpr unsigned kMore = 29 * (32768 - 4);  // pages of the row that aren't there
    grow(at, 2 * kMore);
    grow(at - 9, kMore);
    std::ofstream(path_, std::ios::binary) << file;
    const auto place = ProjectFile(path_).Open("terrain");
    EXPECT_THAT(place->Values(), IsEmpty());
    EXPECT_FALSE(place->Read("BLOCK")) << "nobody makes room for a megabyte out of 100 KB";
}

TEST_F(ProjectFileTest, SaysWhyAFileIsNoProjectForIt)
{
    EXPECT_EQ(FailureOf(path_), "There is no project \"" + path_ + "\"");
    EXPECT_EQ(FailureOf(folder_ / ""), "\"" + (folder_ / "") + "\" is a folder and no Tessara project");
    const std::string pipe = folder_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    EXPECT_FALSE(IsProjectFile(pipe)) << "and nobody waits for it";
    EXPECT_EQ(FailureOf(pipe), "\"" + pipe + "\" is a pipe or a device and no Tessara project");
    std::ofstream(path_) << "something else entirely, and long enough to be looked at: " << std::string(2000, '.');
    EXPECT_EQ(FailureOf(path_), "\"" + path_ + "\" is not a Tessara project");
    std::filesystem::remove(path_);
    RunSql(path_, "CREATE TABLE element (id INTEGER)");
    EXPECT_EQ(FailureOf(path_), "\"" + path_ + "\" is not a Tessara project");
    std::filesystem::remove(path_);
    std::ofstream(path_).flush();
    EXPECT_EQ(FailureOf(path_), "\"" + path_ + "\" is not a Tessara project");
    EXPECT_FALSE(IsProjectFile(path_));
    Save();
    RunSql(path_, "PRAGMA user_version = 2");
    EXPECT_EQ(FailureOf(path_), "The project \"" + path_ +
                                    "\" was saved by a newer version of Tessara (its format is 2, this version knows "
                                    "1)");
    RunSql(path_, "PRAGMA user_version = 0");
    EXPECT_THAT(FailureOf(path_), HasSubstr("is damaged"));
}

TEST_F(ProjectFileTest, TrustsNoTableButItsOwn)
{
    const char* const schemas[] = {
        "DROP TABLE value",
        "DROP TABLE value; CREATE VIEW value AS WITH RECURSIVE endless(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM "
        "endless) SELECT 1 AS element, 'KVOxml_LOD' AS name, 0 AS part, 2 AS type, n AS bytes FROM endless",
        "DROP TABLE value; CREATE TABLE value (element, name, part, type, raw, bytes AS (zeroblob(900000000)))",
        "ALTER TABLE setting ADD COLUMN more",
        "DROP TABLE element; CREATE VIRTUAL TABLE element USING fts5(id, name)",
    };
    for (const char* schema : schemas) {
        Save();
        RunSql(path_, schema);
        EXPECT_THAT(FailureOf(path_), HasSubstr("is damaged")) << schema;
        std::filesystem::remove(path_);
    }
}

TEST_F(ProjectFileTest, ReadsWhatTheDatabaseShellWrote)
{
    Save();
    RunSql(path_, "UPDATE value SET bytes = x'0000C040' WHERE name = 'KVOxml_LOD' AND element = 1;"
                  "UPDATE value SET bytes = 'no bytes' WHERE name = 'DATABASE' AND element = 1;"
                  "UPDATE setting SET value = 12 WHERE element = 1;"
                  "INSERT INTO setting VALUES (1, 'odd', x'00'), (1, 'endless', 9e999);"
                  "UPDATE value SET part = 1 WHERE name = 'DATABASE' AND element = 2");
    const ProjectFile project(path_);
    const auto north = project.Open("north");
    float lod = 0.0f;
    LONG count = 0;
    EXPECT_EQ(Deliver(*north, "KVOxml_LOD", &lod, &count), S_OK);
    EXPECT_EQ(lod, 6.0f);
    char text[2000];
    EXPECT_EQ(Deliver(*north, "DATABASE", text, &count), E_FAIL) << "text where bytes belong";
    EXPECT_EQ(Deliver(*project.Open("south"), "DATABASE", text, &count), E_FAIL) << "the first part is missing";
    EXPECT_EQ(NumberOf(north->Settings(), "camera.x", 0.0), 12.0);
    EXPECT_EQ(north->Settings().size(), 1u);
}

}  // namespace

}  // namespace tessara::test

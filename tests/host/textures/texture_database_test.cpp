#include "host/textures/texture_database.h"
#include "host/textures/texture_store.h"
#include "platform/com/bstr.h"
#include "support/scratch_folder.h"

#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

namespace {

using namespace tessara;
using tessara::test::ReadBytes;
using tessara::test::ScratchFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Access = SqliteFile::Access;

constexpr const char* kTable = kDetailTable;

std::vector<std::uint8_t> Pixels(std::uint8_t first)
{
    std::vector<std::uint8_t> pixels(5 * 3 * 3);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<std::uint8_t>(first + i);
    return pixels;
}

std::vector<std::string> Keys(TextureStore& store, std::string_view table = kTable)
{
    std::vector<std::string> keys;
    for (const TextureEntry& entry : store.List(table))
        keys.push_back(entry.key);
    return keys;
}

class TextureDatabaseTest : public testing::Test {
protected:
    ComPtr<TextureDatabase> Open(bool writable = true)
    {
        return MakeObject<TextureDatabase>(DatabasePlace{path_, writable},
                                           [this](const std::string& line) { reports_.push_back(line); });
    }

    /// The dialog's calls behind a picked file. No table is named.
    HRESULT Store(const char* key, const char* name, std::uint8_t first, UINT width = 5)
    {
        const auto database = Open();
        auto pixels = Pixels(first);
        VARIANT variant;
        VariantInit(&variant);
        variant.byref = pixels.data();
        database->SetElementKey(BstrHolder(key).Get());
        database->SetDisplayName(BstrHolder(name).Get());
        database->SetWidth(width);
        database->SetHeight(3);
        database->SetBitsPerPixel(24);
        database->SetPixels(&variant);
        return database->StoreElement();
    }

    /// "key=name" for each element in the order of the list.
    std::vector<std::string> List(const char* table = kTable)
    {
        const auto database = Open();
        database->SetTableName(BstrHolder(table).Get());
        std::vector<BSTR> keys;
        std::vector<BSTR> names;
        EXPECT_EQ(database->ListElements(&keys, &names), S_OK);
        EXPECT_EQ(keys.size(), names.size());
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            lines.push_back(NarrowText(keys[i]) + "=" + NarrowText(names[i]));
            SysFreeString(keys[i]);
            SysFreeString(names[i]);
        }
        return lines;
    }

    ScratchFolder folder_;
    std::string path_ = folder_.Path("data/textures.db");
    std::vector<std::string> reports_;
};

TEST_F(TextureDatabaseTest, WhatIsStoredIsListedInOrderAndLoadedByteForByte)
{
    EXPECT_THAT(List(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(path_)) << "reading makes no file";
    EXPECT_EQ(Store("k2", "Grüne Wiese", 10), S_OK);
    EXPECT_EQ(Store("k1", "", 20), S_OK);
    EXPECT_THAT(List(), ElementsAre("k2=Grüne Wiese", "k1="));
    EXPECT_THAT(List("Another"), IsEmpty());

    TextureStore store(path_, Access::ReadOnly);
    const auto element = store.Load(kTable, "k2");
    ASSERT_TRUE(element);
    EXPECT_EQ(element->displayName, "Grüne Wiese");
    EXPECT_EQ(std::make_tuple(element->width, element->height, element->bitsPerPixel), std::make_tuple(5, 3, 24));
    EXPECT_EQ(element->pixels, Pixels(10));
    EXPECT_FALSE(store.Load(kTable, "k3"));
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(TextureDatabaseTest, TheElementOfTheKeyOrTheNameFoundLastIsDeleted)
{
    Store("a", "same", 1);
    Store("b", "other", 2);
    Store("c", "same", 3);
    const auto byKey = Open();
    byKey->SetElementKey(BstrHolder("b").Get());
    EXPECT_EQ(byKey->DeleteElement(), S_OK);
    EXPECT_EQ(byKey->DeleteElement(), S_FALSE);

    const auto byName = Open();
    byName->SetDisplayName(BstrHolder("nobody").Get());
    EXPECT_EQ(byName->DisplayNameExists(), 0);
    byName->SetDisplayName(BstrHolder("same").Get());
    EXPECT_NE(byName->DisplayNameExists(), 0);
    EXPECT_EQ(byName->DeleteElement(), S_OK);
    EXPECT_THAT(List(), ElementsAre("c=same"));
}

TEST_F(TextureDatabaseTest, WhatIsNoPictureOrHasATakenKeyIsRefused)
{
    EXPECT_EQ(Store("a", "A", 1), S_OK);
    EXPECT_EQ(Store("a", "B", 2), E_FAIL);
    EXPECT_EQ(Store("", "C", 2), E_FAIL);
    EXPECT_EQ(Store("d", "D", 2, 0), E_FAIL);
    EXPECT_EQ(Store("e", "E", 2, 4000000000u), E_FAIL);
    EXPECT_EQ(reports_.size(), 4u);
    EXPECT_THAT(reports_[0], HasSubstr("Can't store the element \"B\" in \"" + path_ + "\": its key \"a\" is taken"));
    EXPECT_EQ(Open()->StoreElement(), E_UNEXPECTED);
    EXPECT_THAT(List(), ElementsAre("a=A"));
}

TEST_F(TextureDatabaseTest, NobodyWritesToADatabaseThatIsOnlyRead)
{
    Store("a", "A", 1);
    std::filesystem::permissions(path_, std::filesystem::perms::owner_read);
    const std::string before = ReadBytes(path_);
    const auto database = Open(false);
    database->SetElementKey(BstrHolder("a").Get());
    EXPECT_EQ(database->DeleteElement(), E_ACCESSDENIED);
    EXPECT_EQ(database->StoreElement(), E_ACCESSDENIED);
    database->SetDisplayName(BstrHolder("A").Get());
    EXPECT_NE(database->DisplayNameExists(), 0);
    EXPECT_EQ(ReadBytes(path_), before);

    path_ = folder_.Path("missing.db");
    std::vector<BSTR> keys;
    EXPECT_EQ(Open(false)->ListElements(&keys, &keys), E_FAIL);
    EXPECT_THAT(reports_, ElementsAre(HasSubstr("\"" + path_ + "\"")));
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(TextureDatabaseTest, AForeignFileIsReportedAndStaysAsItIs)
{
    const std::string foreign = folder_.Path("foreign.db");
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(foreign.c_str(), &handle), SQLITE_OK);
    sqlite3_exec(handle, "CREATE TABLE elements (a); PRAGMA application_id = 7", nullptr, nullptr, nullptr);
    sqlite3_close(handle);
    const std::string text = folder_.Write("text.db", "Not a database at all, but quite a long text of its own.");
    for (const std::string& path : {foreign, text}) {
        path_ = path;
        const std::string before = ReadBytes(path);
        EXPECT_EQ(Store("a", "A", 1), E_FAIL);
        EXPECT_EQ(Open()->DisplayNameExists(), 0);
        EXPECT_THAT(reports_, testing::Each("\"" + path + "\" is not a texture database"));
        EXPECT_EQ(reports_.size(), 2u);
        reports_.clear();
        EXPECT_EQ(ReadBytes(path), before);
    }
    path_ = folder_.Write("empty.db", "");
    EXPECT_EQ(Store("a", "A", 1), S_OK) << "an empty file holds nothing to lose";
}

TEST_F(TextureDatabaseTest, DamageIsReportedAndNeverWrittenOver)
{
    {
        TextureStore store(path_, Access::ReadWrite);
        for (std::uint8_t i = 0; i < 10; ++i)
            store.Add(kTable, {std::to_string(i), "element", 64, 64, 8}, std::vector<std::uint8_t>(64 * 64, i));
    }
    const std::string whole = ReadBytes(path_);
    std::mt19937 random(5);
    int cutsReported = 0;
    int flipsReported = 0;
    for (int i = 0; i < 300; ++i) {
        std::string bytes = whole;
        const bool cut = i % 3 == 0;
        if (cut)
            bytes.resize(1 + random() % (bytes.size() - 1));
        else
            bytes[random() % bytes.size()] ^= static_cast<char>(1 << random() % 8);
        path_ = folder_.Write("damaged.db", bytes);
        try {
            TextureStore store(path_, Access::ReadWrite);
            for (const TextureEntry& entry : store.List(kTable)) {
                const auto element = store.Load(kTable, entry.key);
                EXPECT_TRUE(!element || element->PixelSize() == element->pixels.size());
            }
        } catch (const StorageError& error) {
            ++(cut ? cutsReported : flipsReported);
            EXPECT_THAT(error.what(), HasSubstr(path_));
        }
        EXPECT_EQ(ReadBytes(path_), bytes);
    }
    EXPECT_EQ(cutsReported, 100);
    EXPECT_GT(flipsReported, 80);  // the others met bytes that hold nothing
}

/// Runs the body in a process of its own that then ends on the spot, like one that is killed.
int InProcess(const std::function<bool()>& body)
{
    const pid_t child = fork();
    if (child == 0) {
        bool good = false;
        try {
            good = body();
        } catch (...) {
        }
        _exit(good ? 0 : 1);
    }
    return child;
}

bool Succeeded(int process)
{
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(TextureDatabaseTest, AProgramThatDiesInTheMiddleOfAWriteLosesNothing)
{
    Store("a", "A", 1);
    Store("b", "B", 2);
    EXPECT_TRUE(Succeeded(InProcess([this] {
        sqlite3* handle = nullptr;
        sqlite3_open(path_.c_str(), &handle);
        // With next to no cache the half-written pages are in the file when the process ends.
        return sqlite3_exec(handle,
                            "PRAGMA cache_size = 1; BEGIN IMMEDIATE;"
                            "DELETE FROM elements WHERE key = 'a';"
                            "INSERT INTO elements SELECT NULL, table_name, 'x', '', 1, 1, 8, 0, zeroblob(3000000)"
                            " FROM elements",
                            nullptr, nullptr, nullptr) == SQLITE_OK;
    })));
    ASSERT_TRUE(std::filesystem::exists(path_ + "-journal"));
    ASSERT_GT(std::filesystem::file_size(path_), 1000000u);
    EXPECT_THAT(List(), ElementsAre("a=A", "b=B"));
    EXPECT_EQ(TextureStore(path_, Access::ReadOnly).Load(kTable, "a")->pixels, Pixels(1));
    EXPECT_EQ(Store("c", "C", 3), S_OK);
}

TEST_F(TextureDatabaseTest, SeveralProcessesMakeAndFillItAtOnce)
{
    std::vector<int> processes;
    for (int p = 0; p < 4; ++p) {
        processes.push_back(InProcess([this, p] {
            for (int i = 0; i < 12; ++i) {
                const std::string key = std::to_string(p) + "-" + std::to_string(i);
                if (Store(key.c_str(), "", static_cast<std::uint8_t>(p * 12 + i)) != S_OK)
                    return false;
            }
            return true;
        }));
    }
    for (const int process : processes)
        EXPECT_TRUE(Succeeded(process));
    TextureStore store(path_, Access::ReadOnly);
    EXPECT_EQ(Keys(store).size(), 48u);
    EXPECT_EQ(store.Load(kTable, "3-11")->pixels, Pixels(47));
}

TEST_F(TextureDatabaseTest, AFolderThatCannotBeMadeIsReported)
{
    path_ = folder_.Write("file", "") + "/textures.db";
    EXPECT_EQ(Store("a", "A", 1), E_FAIL);
    EXPECT_THAT(reports_, ElementsAre(HasSubstr("Can't make the folder")));
}

TEST(DatabasePlaces, TheUsersDatabaseLiesInTheDataFolder)
{
    const std::string oldData = std::getenv("XDG_DATA_HOME") ? std::getenv("XDG_DATA_HOME") : "";
    const std::string oldHome = std::getenv("HOME") ? std::getenv("HOME") : "";
    setenv("HOME", "/home/someone", 1);
    setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(UserDatabase().path, "/data/tessara/textures.db");
    setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(UserDatabase().path, "/home/someone/.local/share/tessara/textures.db");
    EXPECT_TRUE(UserDatabase().writable);
    EXPECT_FALSE(SystemDatabase().writable);
    setenv("HOME", oldHome.c_str(), 1);
    oldData.empty() ? unsetenv("XDG_DATA_HOME") : setenv("XDG_DATA_HOME", oldData.c_str(), 1);
}

}  // namespace

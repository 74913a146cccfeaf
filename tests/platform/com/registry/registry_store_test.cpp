#include "platform/com/registry/registry_error.h"
#include "platform/com/registry/registry_store.h"
#include "platform/com/registry/registry_text.h"
#include "support/registry_sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <thread>

namespace {

using namespace tessara;
using namespace tessara::test;
using testing::HasSubstr;
namespace fs = std::filesystem;

RegistryData Numbered(int number)
{
    RegistryData data;
    for (int i = 0; i < 40; ++i)
        data.SetValue("Key\\" + std::to_string(i), "", std::to_string(number));
    return data;
}

/// The number that all values of a whole state share. \return -1 for an empty store
int NumberOf(const RegistryData& data)
{
    const std::string* first = data.FindValue("Key\\0");
    int number = -1;
    if (first)
        std::from_chars(first->data(), first->data() + first->size(), number);
    EXPECT_EQ(data, first ? Numbered(number) : RegistryData());
    return number;
}

std::string FailureOf(HRESULT result, const std::function<void()>& work)
{
    try {
        work();
    } catch (const RegistryError& error) {
        EXPECT_EQ(error.Result(), result);
        return error.what();
    }
    ADD_FAILURE() << "no failure";
    return {};
}

TEST(RegistryStore, FollowsTheDataFolders)
{
    RegistrySandbox sandbox;
    const auto paths = [] {
        std::vector<std::string> all;
        for (const RegistryStore& store : tessara::RegistryStores())
            all.push_back(store.path);
        return all;
    };
    const std::string file = "/tessara/class-registry.txt";
    sandbox.Set("XDG_DATA_HOME", "/u");
    sandbox.Set("XDG_DATA_DIRS", "/a/:relative::/b");
    EXPECT_THAT(paths(), testing::ElementsAre("/u" + file, "/a" + file, "/b" + file));
    EXPECT_EQ(WritableRegistryStore(RegistryScope::System).path, "/a" + file);
    sandbox.Set("XDG_DATA_DIRS", "/a:/usr/local/share/");
    EXPECT_EQ(WritableRegistryStore(RegistryScope::System).path, "/usr/local/share" + file);
    sandbox.Set("XDG_DATA_DIRS", "");
    sandbox.Set("XDG_DATA_HOME", "relative");
    sandbox.Set("HOME", "/h");
    EXPECT_THAT(paths(),
                testing::ElementsAre("/h/.local/share" + file, "/usr/local/share" + file, "/usr/share" + file));
    EXPECT_EQ(WritableRegistryStore(RegistryScope::User).path, "/h/.local/share" + file);
}

TEST(RegistryStore, KeepsWhatIsWrittenAndLeavesNothingElseBehind)
{
    const RegistrySandbox sandbox;
    const RegistryStore store = WritableRegistryStore(RegistryScope::User);
    EXPECT_EQ(ReadRegistryStore(store), RegistryData());
    for (int number : {7, 8}) {
        RegistryWriter(store).Replace(Numbered(number));
        EXPECT_EQ(NumberOf(ReadRegistryStore(store)), number);
    }
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(fs::path(store.path).parent_path()))
        files.push_back(entry.path().filename());
    EXPECT_THAT(files, testing::UnorderedElementsAre("class-registry.txt", "class-registry.txt.lock"));
}

TEST(RegistryStore, TheMachinesRegistrationsCanBeReadByEverybody)
{
    const RegistrySandbox sandbox;
    const RegistryStore store = WritableRegistryStore(RegistryScope::System);
    const mode_t mask = umask(077);
    RegistryWriter(store).Replace({});
    umask(mask);
    struct stat status = {};
    ASSERT_EQ(stat(store.path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0644u);
    ASSERT_EQ(stat((store.path + ".lock").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST(RegistryStore, NamesAStoreThatCannotBeReadOrWritten)
{
    RegistrySandbox sandbox;
    const RegistryStore store = WritableRegistryStore(RegistryScope::User);
    const auto read = [&store] { ReadRegistryStore(store); };
    sandbox.Write(store.path, "damaged");
    EXPECT_THAT(FailureOf(REGDB_E_READREGDB, read), HasSubstr(store.path));
    fs::remove(store.path);
    fs::create_directory(store.path);
    EXPECT_THAT(FailureOf(REGDB_E_READREGDB, read), HasSubstr(store.path));
    EXPECT_THAT(FailureOf(REGDB_E_WRITEREGDB, [&store] { RegistryWriter(store).Replace({}); }), HasSubstr(store.path));
    fs::remove(store.path);
    mkfifo(store.path.c_str(), 0600);
    EXPECT_THAT(FailureOf(REGDB_E_READREGDB, read), HasSubstr(store.path));  // without waiting for a writer

    sandbox.Set("XDG_DATA_HOME", sandbox.Write(sandbox.Path("file"), "") + "/below");
    const RegistryStore nowhere = WritableRegistryStore(RegistryScope::User);
    EXPECT_EQ(ReadRegistryStore(nowhere), RegistryData());
    EXPECT_THAT(FailureOf(REGDB_E_WRITEREGDB, [&] { RegistryWriter writer(nowhere); }), HasSubstr(nowhere.path));
}

TEST(RegistryStore, WritersThatWorkAtOnceLoseNothing)
{
    const RegistrySandbox sandbox;
    const RegistryStore store = WritableRegistryStore(RegistryScope::User);
    constexpr int kWriters = 4, kSteps = 50;
    std::vector<pid_t> children;
    for (int i = 0; i < kWriters; ++i) {
        children.push_back(fork());
        if (children.back() != 0)
            continue;
        for (int step = 0; step < kSteps; ++step) {
            RegistryWriter writer(store);
            const int before = std::max(0, NumberOf(ReadRegistryStore(store)));
            writer.Replace(Numbered(before + 1));
        }
        _exit(testing::Test::HasFailure());
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(NumberOf(ReadRegistryStore(store)), kWriters * kSteps);
}

TEST(RegistryStore, AWriterThatIsKilledLeavesAWholeStateAndNoLock)
{
    const RegistrySandbox sandbox;
    const RegistryStore store = WritableRegistryStore(RegistryScope::User);
    for (int round = 0; round < 40; ++round) {
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            for (int number = 0;; ++number) {
                RegistryWriter(store).Replace(Numbered(number));
                if (number == 0)
                    static_cast<void>(!write(ready[1], "x", 1));
            }
        }
        char byte = 0;
        ASSERT_EQ(read(ready[0], &byte, 1), 1);
        for (int i = 0; i < round % 8; ++i)
            EXPECT_GE(NumberOf(ReadRegistryStore(store)), 0);  // while it is being written
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(ready[0]);
        close(ready[1]);
        EXPECT_GE(NumberOf(ReadRegistryStore(store)), 0);
        RegistryWriter(store).Replace(Numbered(0));
    }
}

}  // namespace

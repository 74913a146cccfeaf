// What is left of a project whatever happens while it is saved.

#include "host/project/project_file.h"
#include "host/project/project_writer.h"
#include "host/storage/sqlite_file.h"
#include "support/child_process.h"
#include "support/scratch_folder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <thread>

extern char** environ;

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

void SaveNumber(const std::string& path, std::uint32_t number, std::size_t blockSize = 1000)
{
    ProjectWriter writer(path);
    const auto place = writer.AddElement("terrain");
    const std::vector<std::uint32_t> block(blockSize, number);
    place->Write("BLOCK", 2, block.data(), block.size() * sizeof(std::uint32_t));
    writer.Set("number", static_cast<double>(number));
    writer.Commit();
}

double NumberIn(const std::string& path)
{
    return NumberOf(ProjectFile(path).Settings(), "number", -1.0);
}

/// The sentence that a failed save tells.
std::string FailureOf(const std::function<void()>& save)
{
    try {
        save();
    } catch (const StorageError& error) {
        return error.what();
    }
    return "no failure";
}

class ProjectSavingTest : public testing::Test {
protected:
    ScratchFolder folder_;
    const std::string path_ = folder_ / "project.tessara";
};

TEST_F(ProjectSavingTest, ReplacesTheOldVersionAsAWhole)
{
    SaveNumber(path_, 1);
    const ProjectFile old(path_);
    {
        ProjectWriter writer(path_);
        writer.Set("number", 2.0);
        EXPECT_EQ(NumberIn(path_), 1.0);
    }
    EXPECT_EQ(NumberIn(path_), 1.0) << "nothing was committed";
    SaveNumber(path_, 3);
    EXPECT_EQ(NumberIn(path_), 3.0);
    EXPECT_EQ(NumberOf(old.Settings(), "number", -1.0), 1.0) << "who has it open keeps what was there";
    EXPECT_THAT(folder_.Files(), ElementsAre("project.tessara"));
}

TEST_F(ProjectSavingTest, RefusesWhatIsntAProjectAndLeavesItAlone)
{
    const std::string photo = folder_ / "photo.png";
    std::ofstream(photo) << "not a project";
    EXPECT_EQ(FailureOf([&] { SaveNumber(photo, 1); }),
              "\"" + photo + "\" is not a Tessara project and is left as it is");
    std::string text;
    std::getline(std::ifstream(photo), text);
    EXPECT_EQ(text, "not a project");

    EXPECT_EQ(FailureOf([] { SaveNumber("/dev/null", 1); }), "Can't write \"/dev/null\": it is no regular file");
    std::ofstream(folder_ / "empty.tessara").flush();
    SaveNumber(folder_ / "empty.tessara", 5);
    EXPECT_EQ(NumberIn(folder_ / "empty.tessara"), 5.0);
}

TEST_F(ProjectSavingTest, AFullDiskKeepsTheOldProjectAndSaysSo)
{
    SaveNumber(path_, 1);
    for (const rlim_t size : {0, 100, 40000, 300000, 3000000}) {
        std::string failure;
        {
            const FullDisk disk(size);
            failure = FailureOf([&] { SaveNumber(path_, 2, 1000000); });
        }
        EXPECT_THAT(failure, HasSubstr("\"" + path_ + "\"")) << size;
        EXPECT_EQ(NumberIn(path_), 1.0) << size;
    }
    EXPECT_THAT(folder_.Files(), ElementsAre("project.tessara"));
    // A caller that looks at no result of the parser learns of it at the end.
    std::string failure;
    {
        const FullDisk disk(1000000);
        ProjectWriter writer(path_);
        const auto place = writer.AddElement("terrain");
        const std::vector<char> block(20000000);
        EXPECT_TRUE(FAILED(place->AddNode(nullptr, SysAllocString(u"BLOCK"), block.data(), 20000000, 0x80)));
        failure = FailureOf([&] { writer.Commit(); });
    }
    EXPECT_THAT(failure, HasSubstr("the old project is unchanged"));
    EXPECT_EQ(NumberIn(path_), 1.0);
}

pid_t StartSaver(const std::string& path, int* output)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    std::string program = TESSARA_PROJECT_SAVER;
    std::string file = path;
    char* arguments[] = {program.data(), file.data(), nullptr};
    pid_t process = -1;
    if (posix_spawn(&process, program.c_str(), &actions, nullptr, arguments, environ) != 0)
        process = -1;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    *output = ends[0];
    return process;
}

TEST_F(ProjectSavingTest, AProcessKilledAtAnyMomentLeavesAWholeProject)
{
    const char* asked = std::getenv("TESSARA_TEST_KILLS");
    const int kills = asked ? std::atoi(asked) : 300;
    double highest = 0.0;
    for (int kill = 0; kill < kills; ++kill) {
        int output = -1;
        const pid_t saver = StartSaver(path_, &output);
        ASSERT_GT(saver, 0);
        char byte = 0;
        ASSERT_EQ(read(output, &byte, 1), 1) << "the saver didn't save";
        close(output);
        std::this_thread::sleep_for(std::chrono::microseconds(kill * 97 % 20011));
        ::kill(saver, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(saver, &status, 0), saver);
        ASSERT_TRUE(WIFSIGNALED(status)) << "it ended by itself with " << status;

        const ProjectFile project(path_);
        const double number = NumberOf(project.Settings(), "number", -1.0);
        ASSERT_GE(number, 1.0);
        highest = std::max(highest, number);
        ASSERT_THAT(project.Elements(), ElementsAre("north", "south"));
        for (const std::string& name : project.Elements()) {
            const auto bytes = project.Open(name)->Read("BLOCK");
            ASSERT_TRUE(bytes);
            std::vector<std::uint32_t> block(bytes->size() / sizeof(std::uint32_t));
            std::memcpy(block.data(), bytes->data(), bytes->size());
            ASSERT_EQ(block.size(), 100000 + static_cast<std::uint32_t>(number) % 7 * 30000);
            ASSERT_TRUE(std::all_of(block.begin(), block.end(), [=](std::uint32_t n) { return n == number; }));
        }
    }
    EXPECT_GT(highest, 1.0) << "no save was ever interrupted";
    SaveNumber(path_, 1);
    EXPECT_THAT(folder_.Files(), ElementsAre("project.tessara"));
}

}  // namespace

}  // namespace tessara::test

#include "host/project/autosave.h"
#include "host/project/project_file.h"
#include "host/project/project_writer.h"
#include "support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>

namespace tessara::test {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

class AutosaveTest : public testing::Test {
protected:
    static void Keep(Autosave& autosave, const std::string& projectPath, double number)
    {
        autosave.Keep(projectPath, [number](ProjectWriter& writer) {
            writer.AddElement("terrain");
            writer.Set("number", number);
        });
    }
    static double NumberIn(const std::string& path) { return NumberOf(ProjectFile(path).Settings(), "number", -1.0); }

    /// A program that keeps work and is killed.
    void Crash(const std::string& projectPath, double number)
    {
        const pid_t process = fork();
        if (process == 0) {
            Autosave autosave(folder_);
            Keep(autosave, projectPath, number - 1.0);
            Keep(autosave, projectPath, number);
            ::kill(getpid(), SIGKILL);
        }
        waitpid(process, nullptr, 0);
    }

    ScratchFolder scratch_;
    const std::string folder_ = scratch_ / "deep/autosave";
};

TEST_F(AutosaveTest, OffersTheLastWorkOfACrashedProgramUntilItIsDiscarded)
{
    Crash("/home/somebody/alps.tessara", 5.0);
    {
        auto found = FindRecoveries(folder_);
        ASSERT_THAT(found, SizeIs(1));
        EXPECT_EQ(found[0].ProjectPath(), "/home/somebody/alps.tessara");
        EXPECT_EQ(NumberIn(found[0].Path()), 5.0);
        EXPECT_LT(std::chrono::system_clock::now() - found[0].Time(), std::chrono::hours(1));
        EXPECT_THAT(FindRecoveries(folder_), IsEmpty()) << "somebody is looking at it";
    }
    auto found = FindRecoveries(folder_);
    ASSERT_THAT(found, SizeIs(1)) << "who was looking decided nothing";
    found[0].Discard();
    found.clear();
    EXPECT_THAT(FindRecoveries(folder_), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST_F(AutosaveTest, WorkThatIsGoneOnWithStaysSafe)
{
    Crash("", 7.0);
    auto found = FindRecoveries(folder_);
    ASSERT_THAT(found, SizeIs(1));
    {
        Autosave autosave(std::move(found[0]));
        found.clear();
        EXPECT_EQ(NumberIn(autosave.Path()), 7.0);
        EXPECT_THAT(FindRecoveries(folder_), IsEmpty());
        Keep(autosave, "", 8.0);
        EXPECT_EQ(NumberIn(autosave.Path()), 8.0);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_)) << "the program ended as it should";
}

TEST_F(AutosaveTest, ARunningProgramsWorkIsItsOwnAndGoesWhenItIsSaved)
{
    Autosave first(folder_);
    Autosave second(folder_);
    EXPECT_NE(first.Path(), second.Path());
    Keep(first, "", 1.0);
    Keep(second, "", 2.0);
    EXPECT_THAT(FindRecoveries(folder_), IsEmpty());
    first.Forget();
    EXPECT_FALSE(std::filesystem::exists(first.Path()));
    EXPECT_EQ(NumberIn(second.Path()), 2.0);
    Keep(first, "", 3.0);
    EXPECT_EQ(NumberIn(first.Path()), 3.0);
}

TEST_F(AutosaveTest, PassesOverWhatItCantRead)
{
    EXPECT_THAT(FindRecoveries(folder_), IsEmpty()) << "no folder yet";
    Crash("", 1.0);
    for (const char* name : {"bad.lock", "alone.lock"})
        std::ofstream(folder_ + "/" + name).flush();
    std::ofstream(folder_ + "/bad.tessara") << "half a project";
    EXPECT_THAT(FindRecoveries(folder_), SizeIs(1));
    EXPECT_TRUE(std::filesystem::exists(folder_ + "/bad.tessara")) << "not for us to throw away";
    EXPECT_FALSE(std::filesystem::exists(folder_ + "/alone.lock"));
}

TEST_F(AutosaveTest, AFailedKeepLeavesWhatWasKept)
{
    Autosave autosave(folder_);
    Keep(autosave, "", 1.0);
    EXPECT_THROW(autosave.Keep("", [](ProjectWriter&) { throw std::runtime_error("no"); }), std::runtime_error);
    EXPECT_EQ(NumberIn(autosave.Path()), 1.0);
}

TEST_F(AutosaveTest, LiesInTheUsersStateFolder)
{
    const char* before = std::getenv("XDG_STATE_HOME");
    const std::string kept = before ? before : "";
    setenv("XDG_STATE_HOME", "/somewhere", 1);
    EXPECT_EQ(AutosaveFolder(), "/somewhere/tessara/autosave");
    setenv("XDG_STATE_HOME", "relative", 1);
    EXPECT_THAT(AutosaveFolder(), testing::EndsWith("/.local/state/tessara/autosave"));
    if (before)
        setenv("XDG_STATE_HOME", kept.c_str(), 1);
    else
        unsetenv("XDG_STATE_HOME");
}

}  // namespace

}  // namespace tessara::test

#include "platform/system/replacement_stream.h"
#include "support/child_process.h"
#include "support/scratch_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <thread>

namespace {

using namespace tessara;
using namespace tessara::test;
using namespace testing;
using Kind = ReplacementFile::Kind;
namespace fs = std::filesystem;

/// \return the sentence of a failure, empty where there was none
std::string Replace(const std::string& target, const std::string& text, Kind kind = Kind::Any)
{
    try {
        ReplacementStream file(target, kind);
        file.Stream() << text;
        file.PutInPlace();
        return {};
    } catch (const FileError& error) {
        EXPECT_THAT(error.what(), HasSubstr("The file " + target));
        return error.what();
    }
}

struct stat StatusOf(const std::string& path)
{
    struct stat status {};
    lstat(path.c_str(), &status);
    return status;
}

unsigned ModeOf(const std::string& path)
{
    return StatusOf(path).st_mode & 07777u;
}

class ReplacementFileTest : public testing::Test {
protected:
    tessara::test::ScratchFolder folder_;
    const std::string path_ = folder_.Write("file", "old");
};

TEST_F(ReplacementFileTest, AppearsInFullOrNotAtAll)
{
    {
        ReplacementStream file(path_);
        file.Stream() << std::string(200000, 'x');
        EXPECT_EQ(ReadBytes(path_), "old");
    }
    EXPECT_EQ(ReadBytes(path_), "old") << "nothing was put in place";
    for (const std::string& text : {std::string("new"), std::string(), std::string(200000, 'y')}) {
        EXPECT_EQ(Replace(path_, text), "");
        EXPECT_TRUE(ReadBytes(path_) == text);
    }
    {
        ReplacementFile file(path_, Kind::File);
        std::ofstream(file.Path()) << "by its name";
        file.PutInPlace();
    }
    EXPECT_EQ(ReadBytes(path_), "by its name");
    EXPECT_THAT(folder_.Files(), ElementsAre("file"));
}

TEST_F(ReplacementFileTest, FollowsLinksAndKeepsPermissions)
{
    fs::create_directory(folder_ / "sub");
    fs::create_symlink("../file", folder_ / "sub/link");
    fs::create_symlink("sub/link", folder_ / "link");
    fs::create_symlink("sub/new", folder_ / "dangling");
    const mode_t mask = umask(027);
    for (const unsigned mode : {0640u, 0606u, 0755u, 0600u}) {
        chmod(path_.c_str(), mode);
        {
            const ReplacementFile file(folder_ / "link");
            EXPECT_EQ(ModeOf(file.Path()), 0600u) << "nobody else reads along";
        }
        EXPECT_EQ(Replace(folder_ / "link", std::to_string(mode)), "");
        EXPECT_EQ(ReadBytes(path_), std::to_string(mode));
        EXPECT_EQ(ModeOf(path_), mode);
    }
    EXPECT_EQ(Replace(folder_ / "dangling", "new"), "");
    EXPECT_EQ(Replace(folder_ / "open", "new", Kind::OpenToAll), "");
    umask(mask);
    EXPECT_EQ(ReadBytes(folder_ / "sub/new"), "new");
    EXPECT_EQ(ModeOf(folder_ / "sub/new"), 0640u);
    EXPECT_EQ(ModeOf(folder_ / "open"), 0644u);
    for (const char* link : {"link", "sub/link", "dangling"})
        EXPECT_TRUE(fs::is_symlink(folder_ / link)) << link;
}

TEST_F(ReplacementFileTest, KeepsTheOwnerWhereItMay)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser gives files away";
    const auto give = [&](uid_t owner, gid_t group) {
        EXPECT_EQ(chown(path_.c_str(), owner, group), 0);
        chmod(path_.c_str(), 0666);
    };
    give(1234, 4321);
    EXPECT_EQ(Replace(path_, "by the superuser"), "");
    EXPECT_EQ(StatusOf(path_).st_uid, 1234u);
    EXPECT_EQ(StatusOf(path_).st_gid, 4321u);
    give(1234, 4321);
    AsOrdinaryUser(folder_ / "", [&] { EXPECT_EQ(Replace(path_, "by somebody"), ""); });
    EXPECT_EQ(ReadBytes(path_), "by somebody");
    EXPECT_EQ(ModeOf(path_), 0606u) << "another group gets no rights from the old one's";
}

TEST_F(ReplacementFileTest, RefusesInWordsWhatCantBeWritten)
{
    fs::create_directory(folder_ / "closed");
    folder_.Write("closed/file", "old");
    fs::create_symlink("loop", folder_ / "loop");
    fs::create_directory_symlink("closed", folder_ / "closed link");
    const struct {
        std::string target;
        Kind kind;
        std::string words;
    } cases[] = {
        {"", Kind::Any, "its name is empty"},
        {folder_ / "closed", Kind::Any, "it is a folder"},
        {folder_ / "closed link", Kind::Any, "it is a folder"},
        {folder_ / "none/file", Kind::Any, "there is no folder " + (folder_ / "none")},
        {folder_ / "none/", Kind::Any, "there is no folder " + (folder_ / "none")},
        {folder_ / "file/below", Kind::Any, "Not a directory"},
        {folder_ / "loop", Kind::Any, "Too many levels of symbolic links"},
        {folder_ / std::string(300, 'n'), Kind::Any, "File name too long"},
        {"/dev/null", Kind::File, "it is no regular file"},
        {tessara::kStandardOutput, Kind::OpenToAll, "it is no regular file"},
        {path_, Kind::Any, "Permission denied"},
        {folder_ / "closed/file", Kind::Any,
         "nothing can be written to the folder " + (folder_ / "closed") + ": Permission denied"},
        {folder_ / "closed/new", Kind::Any, "nothing can be written to the folder " + (folder_ / "closed")},
    };
    chmod(path_.c_str(), 0444);
    chmod((folder_ / "closed/file").c_str(), 0666);
    chmod((folder_ / "closed").c_str(), 0555);
    AsOrdinaryUser(folder_ / "", [&] {
        for (const auto& [target, kind, words] : cases) {
            if (target.empty())
                EXPECT_THROW(ReplacementFile file(target), FileError);
            else
                EXPECT_THAT(Replace(target, "new", kind), HasSubstr(words)) << target;
            EXPECT_THROW(tessara::RequireReplaceable(target, kind), FileError) << target;
        }
        EXPECT_NO_THROW(tessara::RequireReplaceable(folder_ / "new"));
    });
    EXPECT_EQ(ReadBytes(path_) + ReadBytes(folder_ / "closed/file"), "oldold");
    EXPECT_THAT(folder_.Files(), UnorderedElementsAre("file", "closed", "loop", "closed link"));
    chmod((folder_ / "closed").c_str(), 0755);
}

TEST_F(ReplacementFileTest, WritesStraightThroughToDevicesAndPipes)
{
    EXPECT_THAT(Replace("/dev/full", "text"), HasSubstr("/dev/full can't be written: No space left on device"));
    EXPECT_EQ(Replace("/dev/null", "text"), "");
    EXPECT_TRUE(S_ISCHR(StatusOf("/dev/null").st_mode));

    const std::string pipe = folder_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    fs::create_symlink("pipe", folder_ / "link");
    std::string got;
    std::thread reader([&] { got = ReadBytes(pipe); });
    EXPECT_EQ(Replace(folder_ / "link", std::string(100000, 'p')), "");
    reader.join();
    EXPECT_EQ(got, std::string(100000, 'p'));
    EXPECT_TRUE(S_ISFIFO(StatusOf(pipe).st_mode));

    // What a process has open has no place where another file could come to lie.
    for (const std::string& name : {std::string(tessara::kStandardOutput), std::string("/proc/self/fd/1")}) {
        EXPECT_EQ(StatusOfChild([&] {
                      dup2(open(path_.c_str(), O_WRONLY | O_TRUNC), STDOUT_FILENO);
                      const auto before = StatusOf(path_).st_ino;
                      EXPECT_EQ(Replace(name, "through"), "");
                      EXPECT_EQ(StatusOf(path_).st_ino, before);
                  }),
                  0);
        EXPECT_EQ(ReadBytes(path_), "through");
    }
    EXPECT_THAT(folder_.Files(), UnorderedElementsAre("file", "pipe", "link"));
}

TEST_F(ReplacementFileTest, AFullDiskKeepsTheOldFileAndNamesIt)
{
    for (const rlim_t size : {0, 100, 70000, 199999}) {
        std::string failure;
        {
            const FullDisk disk(size);
            failure = Replace(path_, std::string(200000, 'x'));
        }
        EXPECT_EQ(failure, "The file " + path_ + " can't be written: File too large.") << size;
        EXPECT_EQ(ReadBytes(path_), "old");
    }
    EXPECT_THAT(folder_.Files(), ElementsAre("file"));
}

TEST_F(ReplacementFileTest, AnInterruptedProgramLeavesNothingBehind)
{
    // What a signal does otherwise stays as it was: a program ends by it, another one's handler gets it.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        for (void (*before)(int) : {+SIG_DFL, +[](int) { _exit(5); }}) {
            const int status = StatusOfChild([&] {
                std::signal(signal, before);
                tessara::RemoveUnfinishedFilesWhenInterrupted();
                fs::current_path(folder_ / "");
                ReplacementStream one("file");
                ReplacementStream two(folder_ / "another");
                fs::current_path("/");
                one.Stream() << std::string(100000, 'x');
                raise(signal);
            });
            EXPECT_TRUE(before == SIG_DFL ? WIFSIGNALED(status) && WTERMSIG(status) == signal
                                          : WIFEXITED(status) && WEXITSTATUS(status) == 5);
            EXPECT_THAT(folder_.Files(), ElementsAre("file"));
            EXPECT_EQ(ReadBytes(path_), "old");
        }
    }
    EXPECT_EQ(StatusOfChild([&] {
                  std::signal(SIGHUP, SIG_IGN);
                  tessara::RemoveUnfinishedFilesWhenInterrupted();
                  ReplacementStream file(path_);
                  raise(SIGHUP);
                  EXPECT_EQ(StatusOfChild([] { raise(SIGHUP); }), 0);
                  EXPECT_TRUE(WIFSIGNALED(StatusOfChild([] { raise(SIGTERM); }))) << "a child that writes nothing";
                  file.Stream() << "new";
                  file.PutInPlace();
              }),
              0);
    EXPECT_EQ(ReadBytes(path_), "new");
}

TEST_F(ReplacementFileTest, WhatAKilledProcessLeftGoesWithTheNextVersionUnlessSomebodyIsWriting)
{
    folder_.Write(".tessara-dead.saving", "half");
    folder_.Write(".tessara-mine.txt", "something else");
    const ReplacementFile living(folder_ / "other");
    EXPECT_EQ(Replace(path_, "new"), "");
    EXPECT_THAT(folder_.Files(),
                UnorderedElementsAre("file", ".tessara-mine.txt", fs::path(living.Path()).filename().string()));
}

}  // namespace

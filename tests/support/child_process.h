#pragma once

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <string>

namespace tessara::test {

/// Runs a function in a process of its own, which may do to itself what it likes. \return the status for waitpid
inline int StatusOfChild(const std::function<void()>& work)
{
    fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        work();
        fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

/// Runs a function as somebody whom permissions bind: the superuser gives its rights up for it.
/// \param folder becomes that user's
inline void AsOrdinaryUser(const std::string& folder, const std::function<void()>& work)
{
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0) {
        ASSERT_EQ(chown(folder.c_str(), kNobody, kNobody), 0);
    }
    const int status = StatusOfChild([&] {
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(2);
        work();
    });
    EXPECT_EQ(status, 0);
}

/// Lets no file of this process grow beyond a size, as a full disk does.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) : signal_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit now = {size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &now);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }

private:
    void (*signal_)(int);
    rlimit before_{};
};

}  // namespace tessara::test

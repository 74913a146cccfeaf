#include "platform/system/unfinished_files.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <iterator>

namespace tessara {

namespace {

constexpr int kMostFiles = 64;
constexpr std::size_t kLongestPath = 4096;

/// What a signal handler can read at any moment: no memory that comes and goes, no lock.
struct Slot {
    std::atomic<bool> taken{false};
    std::atomic<pid_t> owner{0};  // a child process shares the path, not the file; 0 while there is no path
    char path[kLongestPath] = {};
};
static_assert(std::atomic<pid_t>::is_always_lock_free);

Slot g_slots[kMostFiles];

constexpr int kSignals[] = {SIGHUP, SIGINT, SIGTERM};
struct sigaction g_before[std::size(kSignals)];

void RemoveUnfinishedFiles() noexcept
{
    for (const Slot& slot : g_slots) {
        if (slot.owner.load() == getpid())
            unlink(slot.path);
    }
}

void Interrupted(int signal, siginfo_t* info, void* context)
{
    const int error = errno;
    RemoveUnfinishedFiles();
    for (std::size_t i = 0; i < std::size(kSignals); ++i) {
        const struct sigaction& before = g_before[i];
        if (kSignals[i] != signal)
            continue;
        if ((before.sa_flags & SA_SIGINFO) != 0) {
            before.sa_sigaction(signal, info, context);
        } else if (before.sa_handler != SIG_DFL) {
            before.sa_handler(signal);
        } else {
            sigaction(signal, &before, nullptr);
            raise(signal);  // comes when this handler returns
        }
    }
    errno = error;
}

}  // namespace

UnfinishedFile::UnfinishedFile(const std::string& path) noexcept : slot_(-1)
{
    if (path.size() >= kLongestPath)
        return;
    for (int i = 0; i < kMostFiles && slot_ < 0; ++i) {
        if (!g_slots[i].taken.exchange(true))
            slot_ = i;
    }
    if (slot_ < 0)
        return;
    std::memcpy(g_slots[slot_].path, path.c_str(), path.size() + 1);
    g_slots[slot_].owner = getpid();
}

UnfinishedFile::~UnfinishedFile()
{
    if (slot_ < 0)
        return;
    g_slots[slot_].owner = 0;
    g_slots[slot_].taken = false;
}

void RemoveUnfinishedFilesWhenInterrupted() noexcept
{
    for (std::size_t i = 0; i < std::size(kSignals); ++i) {
        struct sigaction action {};
        sigaction(kSignals[i], nullptr, &g_before[i]);
        if ((g_before[i].sa_flags & SA_SIGINFO) == 0 && g_before[i].sa_handler == SIG_IGN)
            continue;
        action.sa_sigaction = Interrupted;
        action.sa_flags = SA_SIGINFO | SA_RESTART;
        sigemptyset(&action.sa_mask);
        sigaction(kSignals[i], &action, nullptr);
    }
}

}  // namespace tessara

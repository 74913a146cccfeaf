#include "host/elevation/pipe_reader.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>

namespace tessara {
namespace {

constexpr std::size_t kAtOnce = std::size_t{1} << 20;
constexpr int kPauseMilliseconds = 50;

[[noreturn]] void FailWithErrno()
{
    throw PipeError("it can't be read (" + std::generic_category().message(errno) + ")");
}

/// A descriptor, closed with the object unless it is the standard input.
class PipeEnd {
public:
    explicit PipeEnd(const std::string& path)
        : descriptor_(path.empty() ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC))
    {
        if (descriptor_ < 0)
            FailWithErrno();
    }
    ~PipeEnd()
    {
        if (descriptor_ != STDIN_FILENO)
            close(descriptor_);
    }
    PipeEnd(const PipeEnd&) = delete;
    PipeEnd& operator=(const PipeEnd&) = delete;

    int Descriptor() const { return descriptor_; }

    /// Waits a moment for something to read, or for the other end to go.
    void Wait() const
    {
        pollfd entry{descriptor_, POLLIN, 0};
        poll(&entry, 1, kPauseMilliseconds);
    }

private:
    int descriptor_;
};

}  // namespace

std::vector<std::uint8_t> ReadPipe(const std::string& path, double patience, const ProgressCallback& waiting)
{
    if (path.empty() && isatty(STDIN_FILENO) != 0)
        throw PipeError("the standard input is a keyboard");
    const PipeEnd pipe(path);
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::uint8_t> bytes;
    for (;;) {
        if (waiting)
            waiting(0.0);
        const std::size_t before = bytes.size();
        bytes.resize(before + kAtOnce);
        const ssize_t count = read(pipe.Descriptor(), &bytes[before], kAtOnce);
        const int failure = errno;
        bytes.resize(before + static_cast<std::size_t>(count > 0 ? count : 0));
        if (count > 0)
            continue;
        if (count < 0 && (failure == EAGAIN || failure == EINTR)) {
            pipe.Wait();
            continue;
        }
        errno = failure;
        if (count < 0)
            FailWithErrno();
        // The end: everybody who wrote has gone, or nobody has come yet.
        if (!bytes.empty() || path.empty())
            return bytes;
        const std::chrono::duration<double> waited = std::chrono::steady_clock::now() - start;
        if (waited.count() >= patience)
            throw PipeError("it is a pipe that nobody writes to");
        std::this_thread::sleep_for(std::chrono::milliseconds(kPauseMilliseconds));
    }
}

}  // namespace tessara

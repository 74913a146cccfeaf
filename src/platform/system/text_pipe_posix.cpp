#include "platform/system/text_pipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace tessara {

namespace {

constexpr std::size_t kBlock = 65536;

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number)
    {
        if (number < 0)
            throw std::system_error(errno, std::generic_category(), "no pipe");
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    int Get() const noexcept { return number_; }

    void Close() noexcept
    {
        if (number_ >= 0)
            close(std::exchange(number_, -1));
    }

private:
    int number_;
};

/// Takes all that comes, also when the function wants no more: who writes must come to its end.
std::exception_ptr ReadAll(int descriptor, const std::function<void(std::string_view)>& read)
{
    std::exception_ptr failure;
    std::vector<char> block(kBlock);
    for (;;) {
        const ssize_t count = ::read(descriptor, block.data(), block.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return failure;
        try {
            if (!failure)
                read({block.data(), static_cast<std::size_t>(count)});
        } catch (...) {
            failure = std::current_exception();
        }
    }
}

}  // namespace

void PipeText(const std::function<void(const std::string& path)>& write,
              const std::function<void(std::string_view)>& read)
{
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "no pipe");
    const Descriptor out(ends[0]);
    Descriptor in(ends[1]);
    const std::string path = "/proc/self/fd/" + std::to_string(in.Get());
    // Who opens the name as another one did can't fail.
    Descriptor(open(path.c_str(), O_WRONLY | O_CLOEXEC)).Close();

    std::exception_ptr failures[2];
    std::thread reader([&] { failures[0] = ReadAll(out.Get(), read); });
    try {
        write(path);
    } catch (...) {
        failures[1] = std::current_exception();
    }
    in.Close();
    reader.join();
    for (const std::exception_ptr& failure : failures) {
        if (failure)
            std::rethrow_exception(failure);
    }
}

}  // namespace tessara

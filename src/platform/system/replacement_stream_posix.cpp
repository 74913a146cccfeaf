#include "platform/system/replacement_stream.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace tessara {

namespace {

constexpr std::size_t kBlock = 65536;

}  // namespace

ReplacementStream::Buffer::Buffer(int descriptor) : descriptor_(descriptor), block_(kBlock)
{
    setp(block_.data(), block_.data() + block_.size());
}

bool ReplacementStream::Buffer::Write(const char* bytes, std::size_t count)
{
    while (count > 0 && error_ == 0) {
        const ssize_t written = write(descriptor_, bytes, count);
        if (written < 0 && errno != EINTR)
            error_ = errno;
        if (written > 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        }
    }
    return error_ == 0;
}

int ReplacementStream::Buffer::sync()
{
    const auto count = static_cast<std::size_t>(pptr() - pbase());
    setp(block_.data(), block_.data() + block_.size());
    return Write(block_.data(), count) ? 0 : -1;
}

std::streambuf::int_type ReplacementStream::Buffer::overflow(int_type byte)
{
    if (sync() != 0)
        return traits_type::eof();
    if (!traits_type::eq_int_type(byte, traits_type::eof()))
        sputc(traits_type::to_char_type(byte));
    return traits_type::not_eof(byte);
}

std::streamsize ReplacementStream::Buffer::xsputn(const char* bytes, std::streamsize count)
{
    if (count < static_cast<std::streamsize>(kBlock))
        return std::streambuf::xsputn(bytes, count);
    return sync() == 0 && Write(bytes, static_cast<std::size_t>(count)) ? count : 0;
}

ReplacementStream::ReplacementStream(const std::string& target, ReplacementFile::Kind kind)
    : file_(target, kind), buffer_(file_.Descriptor()), stream_(&buffer_)
{
}

void ReplacementStream::PutInPlace()
{
    stream_.flush();
    if (!stream_)
        throw FileError(file_.Target(), std::generic_category().message(buffer_.Error() != 0 ? buffer_.Error() : EIO));
    file_.PutInPlace();
}

}  // namespace tessara

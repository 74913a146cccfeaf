#pragma once

#include "platform/system/replacement_file.h"

#include <ostream>
#include <streambuf>
#include <vector>

namespace tessara {

/// A replacement that is written as a stream of bytes. Why a byte couldn't be written is told at the end.
class TESSARA_EXPORT ReplacementStream {
public:
    /// \throws FileError
    explicit ReplacementStream(const std::string& target, ReplacementFile::Kind kind = ReplacementFile::Kind::Any);

    std::ostream& Stream() noexcept { return stream_; }

    /// Lets what was written count. \throws FileError where any of it couldn't be written
    void PutInPlace();

private:
    /// Fills a block and hands it to the system.
    class Buffer final : public std::streambuf {
    public:
        explicit Buffer(int descriptor);
        int Error() const noexcept { return error_; }

    protected:
        int_type overflow(int_type byte) override;
        std::streamsize xsputn(const char* bytes, std::streamsize count) override;
        int sync() override;

    private:
        bool Write(const char* bytes, std::size_t count);

        int descriptor_;
        int error_ = 0;
        std::vector<char> block_;
    };

    ReplacementFile file_;
    Buffer buffer_;
    std::ostream stream_;
};

}  // namespace tessara

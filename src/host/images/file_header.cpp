#include "host/images/file_header.h"

#include <cstdlib>
#include <istream>
#include <string_view>

namespace tessara {

namespace {

/// The first bytes of a file. Reading past them gives 0.
class Header {
public:
    explicit Header(std::istream& file)
    {
        file.clear();
        file.seekg(0);
        file.read(bytes_, sizeof bytes_);
        size_ = static_cast<std::size_t>(file.gcount());
    }

    bool Has(std::size_t at, std::string_view text) const
    {
        return at <= size_ && std::string_view(bytes_, size_).substr(at, text.size()) == text;
    }

    std::size_t Find(std::string_view text) const { return std::string_view(bytes_, size_).find(text); }

    std::uint32_t Byte(std::size_t at) const { return at < size_ ? static_cast<unsigned char>(bytes_[at]) : 0; }

    std::uint32_t Little16(std::size_t at) const { return Byte(at) | Byte(at + 1) << 8; }
    std::uint32_t Little24(std::size_t at) const { return Little16(at) | Byte(at + 2) << 16; }
    std::uint32_t Little32(std::size_t at) const { return Little16(at) | Little16(at + 2) << 16; }
    std::uint32_t Big32(std::size_t at) const
    {
        return Byte(at) << 24 | Byte(at + 1) << 16 | Byte(at + 2) << 8 | Byte(at + 3);
    }

private:
    char bytes_[256] = {};
    std::size_t size_ = 0;
};

std::uint64_t Magnitude(std::uint32_t bits)
{
    return static_cast<std::uint64_t>(std::llabs(static_cast<std::int32_t>(bits)));
}

std::optional<StatedSize> BmpSize(const Header& header)
{
    if (header.Little32(14) == 12)
        return StatedSize{header.Little16(18), header.Little16(20)};
    return StatedSize{Magnitude(header.Little32(18)), Magnitude(header.Little32(22))};
}

std::optional<StatedSize> WebPSize(const Header& header)
{
    if (header.Has(12, "VP8X"))
        return StatedSize{header.Little24(24) + 1, header.Little24(27) + 1};
    if (header.Has(12, "VP8L")) {
        const std::uint32_t bits = header.Little32(21);
        return StatedSize{(bits & 0x3FFF) + 1, (bits >> 14 & 0x3FFF) + 1};
    }
    return StatedSize{header.Little16(26) & 0x3FFF, header.Little16(28) & 0x3FFF};
}

constexpr std::string_view kJpeg2000Size = "\xFF\x4F\xFF\x51";
constexpr int kEnd = std::char_traits<char>::eof();

/// Skips the picture's own bytes up to the next mark. \return the mark, or kEnd
int SkipScan(std::streambuf& file)
{
    int c = file.sbumpc();
    while (c != kEnd) {
        if (c != 0xFF) {
            c = file.sbumpc();
            continue;
        }
        do
            c = file.sbumpc();
        while (c == 0xFF);
        const bool partOfScan = c == 0 || (c >= 0xD0 && c <= 0xD7);
        if (c == kEnd || !partOfScan)
            return c;
        c = file.sbumpc();
    }
    return kEnd;
}

/// Skips the bytes of one segment behind its mark. \return false where the file ends in it
bool SkipSegment(std::streambuf& file)
{
    const int high = file.sbumpc();
    const int low = file.sbumpc();
    if (high == kEnd || low == kEnd)
        return false;
    for (int left = (high << 8 | low) - 2; left > 0; --left) {
        if (file.sbumpc() == kEnd)
            return false;
    }
    return true;
}

}  // namespace

std::optional<StatedSize> SizeInHeader(std::istream& file)
{
    const Header header(file);
    if (header.Has(0, "BM"))
        return BmpSize(header);
    if (header.Has(0, "GIF8"))
        return StatedSize{header.Little16(6), header.Little16(8)};
    if (header.Has(0, "RIFF") && header.Has(8, "WEBPVP8"))
        return WebPSize(header);
    const std::size_t box = header.Find("ihdr");
    if (header.Has(4, "jP  ") && box != std::string_view::npos)
        return StatedSize{header.Big32(box + 8), header.Big32(box + 4)};
    if (header.Has(0, kJpeg2000Size))
        return StatedSize{header.Big32(8), header.Big32(12)};
    return std::nullopt;
}

bool IsCutJpeg(std::istream& file)
{
    file.clear();
    file.seekg(0);
    std::streambuf& bytes = *file.rdbuf();
    if (bytes.sbumpc() != 0xFF || bytes.sbumpc() != 0xD8)
        return false;
    // From mark to mark, past the segments, which may hold a small picture with an end mark of its own.
    for (int mark = SkipScan(bytes); mark != 0xD9; mark = SkipScan(bytes)) {
        if (mark == kEnd || !SkipSegment(bytes))
            return true;
    }
    return false;
}

}  // namespace tessara

#include "host/images/file_header.h"

#include <algorithm>
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
constexpr std::string_view kJpegStart = "\xFF\xD8";
constexpr std::string_view kPngStart = "\x89PNG\r\n\x1A\n";
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

/// \return false where the file ends first
bool Skip(std::streambuf& file, std::uint64_t count)
{
    char dropped[4096];
    while (count > 0) {
        const auto part = static_cast<std::streamsize>(std::min<std::uint64_t>(count, sizeof dropped));
        if (file.sgetn(dropped, part) != part)
            return false;
        count -= static_cast<std::uint64_t>(part);
    }
    return true;
}

/// Goes from mark to mark, past the segments, which may hold a small picture with an end mark of its own.
bool IsCutJpeg(std::streambuf& file)
{
    for (int mark = SkipScan(file); mark != 0xD9; mark = SkipScan(file)) {
        const int high = file.sbumpc();
        const int low = file.sbumpc();
        if (mark == kEnd || high == kEnd || low == kEnd)
            return true;
        const int size = high << 8 | low;
        if (!Skip(file, static_cast<std::uint64_t>(std::max(size - 2, 0))))
            return true;
    }
    return false;
}

bool IsCutPng(std::streambuf& file)
{
    std::string_view type;
    for (char chunk[8]; type != "IEND"; type = std::string_view(chunk + 4, 4)) {
        if (file.sgetn(chunk, sizeof chunk) != sizeof chunk)
            return true;
        std::uint64_t size = 4;  // the check sum
        for (int i = 0; i < 4; ++i)
            size += std::uint64_t{static_cast<unsigned char>(chunk[i])} << (24 - 8 * i);
        if (!Skip(file, size))
            return true;
    }
    return false;
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

bool IsCutShort(std::istream& file)
{
    const Header header(file);
    file.clear();
    std::streambuf& bytes = *file.rdbuf();
    if (header.Has(0, kJpegStart)) {
        bytes.pubseekpos(kJpegStart.size());
        return IsCutJpeg(bytes);
    }
    if (header.Has(0, kPngStart)) {
        bytes.pubseekpos(kPngStart.size());
        return IsCutPng(bytes);
    }
    return false;
}

bool LacksColours(std::istream& file)
{
    const Header header(file);
    if (!header.Has(0, "8BPS"))
        return false;
    const std::uint32_t channels = header.Byte(12) << 8 | header.Byte(13);
    switch (header.Byte(24) << 8 | header.Byte(25)) {
    case 3:  // red, green, blue
    case 9:  // Lab
        return channels < 3;
    case 4:  // CMYK
        return channels < 4;
    default:
        return channels < 1;
    }
}

}  // namespace tessara

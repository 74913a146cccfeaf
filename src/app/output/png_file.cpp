#include "app/output/png_file.h"

#include "platform/system/replacement_stream.h"

#include <png.h>

#include <csetjmp>
#include <stdexcept>

namespace tessara {

namespace {

/// Stream errors stay in the stream until the end.
void WriteBytes(png_structp png, png_bytep bytes, png_size_t count)
{
    auto& stream = *static_cast<std::ostream*>(png_get_io_ptr(png));
    stream.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(count));
}

void FlushBytes(png_structp) {}

/// Owns libpng's two records.
struct PngWriter {
    PngWriter() : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr))
    {
        if (png)
            info = png_create_info_struct(png);
    }
    ~PngWriter() { png_destroy_write_struct(&png, &info); }
    png_structp png;
    png_infop info = nullptr;
};

/// libpng leaves its functions with longjmp: no object with a destructor may live in this one.
bool Encode(png_structp png, png_infop info, std::ostream* stream, png_uint_32 width, png_uint_32 height,
            const std::uint8_t* pixels)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_write_fn(png, stream, WriteBytes, FlushBytes);
    png_set_IHDR(png, info, width, height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_sRGB(png, info, PNG_sRGB_INTENT_PERCEPTUAL);
    png_write_info(png, info);
    for (png_uint_32 y = 0; y < height; ++y)
        png_write_row(png, pixels + static_cast<std::size_t>(y) * width * 3);
    png_write_end(png, info);
    return true;
}

}  // namespace

void WritePng(const std::string& path, int width, int height, const std::vector<std::uint8_t>& pixels)
{
    ReplacementStream file(path);
    PngWriter writer;
    if (!writer.info || !Encode(writer.png, writer.info, &file.Stream(), static_cast<png_uint_32>(width),
                                static_cast<png_uint_32>(height), pixels.data()))
        throw std::runtime_error("The picture " + path + " can't be encoded.");
    file.PutInPlace();
}

}  // namespace tessara

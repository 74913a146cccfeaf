#include "host/images/image_decoder.h"

#include "host/images/file_header.h"

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace tessara {

namespace {

using OIIO::ImageInput;
using OIIO::ImageSpec;
using OIIO::TypeDesc;

/// No format packs more pixels of a plain picture into a byte, by a wide margin.
constexpr std::uint64_t kMaxPixelsPerByte = 16384;

[[noreturn]] void Fail(const std::string& path, const std::string& reason)
{
    throw std::runtime_error("Can't read the image \"" + path + "\": " + reason);
}

/// The first line of the library's text; those behind it tell less of the same.
std::string OneLine(const std::string& text)
{
    const std::string line = text.substr(0, text.find('\n'));
    return line.empty() ? "the file is damaged" : line;
}

void CheckSize(const std::string& path, std::uint64_t width, std::uint64_t height, std::uint64_t fileSize)
{
    const auto stated = [&] {
        return "it states a size of " + std::to_string(width) + " x " + std::to_string(height) + " pixels, ";
    };
    if (width == 0 || height == 0)
        Fail(path, stated() + "which is empty");
    if (width > kMaxImageSide || height > kMaxImageSide || width * height > kMaxImagePixels) {
        Fail(path, stated() + "more than " + std::to_string(kMaxImageSide) + " a side or " +
                       std::to_string(kMaxImagePixels) + " in all");
    }
    if (width * height / kMaxPixelsPerByte > fileSize)
        Fail(path, stated() + "for which it is too short");
}

/// What can be known of a file before the library opens it. \return its size in bytes
std::uint64_t CheckFile(const std::string& path)
{
    const std::filesystem::path file(std::u8string(path.begin(), path.end()));
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        Fail(path, std::filesystem::exists(file, error) ? "it is not a file" : "there is no such file");
    const std::uint64_t size = std::filesystem::file_size(file, error);
    std::ifstream bytes(file, std::ios::binary);
    if (!bytes || error)
        Fail(path, "the file can't be opened");
    if (const auto stated = SizeInHeader(bytes))
        CheckSize(path, stated->width, stated->height, size);
    if (LacksColours(bytes))
        Fail(path, "it states fewer channels than its colours are made of");
    if (IsCutShort(bytes))
        Fail(path, "the file is cut short");
    return size;
}

bool IsAlpha(const ImageSpec& spec, int channel)
{
    return spec.alpha_channel == channel || spec.channelnames[static_cast<std::size_t>(channel)] == "A";
}

/// 1, 2, 3 or 4: how many of the file's channels count.
std::uint32_t UsedChannels(const ImageSpec& spec)
{
    if (spec.nchannels < 3)
        return spec.nchannels == 2 && IsAlpha(spec, 1) ? 2 : 1;
    return spec.nchannels > 3 && IsAlpha(spec, 3) ? 4 : 3;
}

/// Memory that is only spent as it fills: a file that ends early costs what it holds.
template <class Sample>
using Samples = std::unique_ptr<Sample[]>;

std::size_t SampleCount(const ImageSpec& spec, std::uint32_t channels)
{
    return static_cast<std::size_t>(spec.width) * static_cast<std::size_t>(spec.height) * channels;
}

template <class Sample>
Samples<Sample> ReadSamples(ImageInput& input, std::uint32_t channels, TypeDesc type, const std::string& path,
                            const std::function<void(float)>& progress)
{
    Samples<Sample> samples(new Sample[SampleCount(input.spec(), channels)]);
    const auto report = [](void* target, float part) {
        const auto& tell = **static_cast<const std::function<void(float)>**>(target);
        if (tell)
            tell(part);
        return false;
    };
    const std::function<void(float)>* target = &progress;
    const bool read = input.read_image(0, 0, 0, static_cast<int>(channels), type, samples.get(), OIIO::AutoStride,
                                       OIIO::AutoStride, OIIO::AutoStride, report, &target);
    // A damaged part may leave its text only.
    if (!read || input.has_error())
        Fail(path, OneLine(input.geterror()));
    return samples;
}

bool IsLight(const ImageSpec& spec)
{
    return spec.format.is_floating_point() &&
           OIIO::Strutil::iequals(spec.get_string_attribute("oiio:ColorSpace", "Linear"), "Linear");
}

/// Colours that were multiplied with their alpha in the file, as the texture formats know them: by themselves.
bool IsPremultiplied(const ImageInput& input)
{
    const std::string_view format = input.format_name();
    return (format == "openexr" || format == "tiff") && input.spec().get_int_attribute("oiio:UnassociatedAlpha") == 0;
}

/// Within 0 and 1; not a number is 0.
float Clamped(float value)
{
    return value > 0.0f ? std::min(value, 1.0f) : 0.0f;
}

Samples<std::uint8_t> ReadLight(ImageInput& input, std::uint32_t channels, const std::string& path,
                                const std::function<void(float)>& progress)
{
    const Samples<float> light = ReadSamples<float>(input, channels, TypeDesc::FLOAT, path, progress);
    const std::size_t count = SampleCount(input.spec(), channels);
    const bool alphaLast = channels == 2 || channels == 4;
    const bool divide = alphaLast && IsPremultiplied(input);
    Samples<std::uint8_t> bytes(new std::uint8_t[count]);
    for (std::size_t i = 0; i < count; i += channels) {
        const float alpha = alphaLast ? Clamped(light[i + channels - 1]) : 1.0f;
        const float scale = divide && alpha > 0.0f ? 1.0f / alpha : 1.0f;
        for (std::uint32_t c = 0; c < channels; ++c)
            bytes[i + c] = ScreenByte(light[i + c] * scale);
        if (alphaLast)
            bytes[i + channels - 1] = static_cast<std::uint8_t>(alpha * 255.0f + 0.5f);
    }
    return bytes;
}

Samples<std::uint8_t> ReadBytes(ImageInput& input, std::uint32_t channels, const std::string& path,
                                const std::function<void(float)>& progress)
{
    Samples<std::uint8_t> bytes = ReadSamples<std::uint8_t>(input, channels, TypeDesc::UINT8, path, progress);
    const std::size_t count = channels == 4 && IsPremultiplied(input) ? SampleCount(input.spec(), channels) : 0;
    for (std::size_t i = 0; i < count; i += 4) {
        const unsigned alpha = bytes[i + 3];
        for (std::size_t c = i; alpha != 0 && c < i + 3; ++c)
            bytes[c] = static_cast<std::uint8_t>(std::min(255u, (bytes[c] * 255u + alpha / 2) / alpha));
    }
    return bytes;
}

}  // namespace

PackedImage DecodeImage(const std::string& path, const std::function<void(float)>& progress)
{
    const std::uint64_t fileSize = CheckFile(path);
    ImageSpec config;
    config["oiio:UnassociatedAlpha"] = 1;
    const auto input = ImageInput::open(path, &config);
    if (!input)
        Fail(path, OneLine(OIIO::geterror()));
    input->threads(1);  // what fails on a thread of the library's own isn't told reliably
    const ImageSpec& spec = input->spec();
    CheckSize(path, static_cast<std::uint64_t>(std::max(spec.width, 0)),
              static_cast<std::uint64_t>(std::max(spec.height, 0)), fileSize);
    if (spec.depth > 1 || spec.nchannels < 1 || spec.deep)
        Fail(path, "it holds no flat picture");

    FileImage image;
    image.width = static_cast<std::uint32_t>(spec.width);
    image.height = static_cast<std::uint32_t>(spec.height);
    image.channels = UsedChannels(spec);
    image.orientation = spec.get_int_attribute("Orientation", 1);
    const Samples<std::uint8_t> samples = IsLight(spec) ? ReadLight(*input, image.channels, path, progress)
                                                        : ReadBytes(*input, image.channels, path, progress);
    image.samples = samples.get();
    return Pack(image);
}

}  // namespace tessara

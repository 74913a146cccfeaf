#include "fuzz/targets.h"
#include "host/images/image_decoder.h"
#include "host/images/image_samples.h"
#include "support/scratch_folder.h"

#include <OpenImageIO/imageio.h>

#include <array>
#include <stdexcept>
#include <string>

namespace tessara::test {

namespace {

constexpr std::size_t kPage = 64;
constexpr std::array kEndings = {".png", ".jpg", ".bmp", ".tga", ".psd"};
constexpr int kWidth = 23;
constexpr int kHeight = 14;

std::string WholeFile(const ScratchFolder& folder, const std::string& ending)
{
    std::string pixels;
    for (int i = 0; i < kWidth * kHeight * 3; ++i)
        pixels += static_cast<char>(i * 7 + i / 144 * 3);
    if (ending == ".psd")
        return Psd(3, 3, kWidth, kHeight, 8, pixels);
    const std::string path = folder / ("whole" + ending);
    const auto output = OIIO::ImageOutput::create(path);
    const bool written = output && output->open(path, OIIO::ImageSpec(kWidth, kHeight, 3, OIIO::TypeDesc::UINT8)) &&
                         output->write_image(OIIO::TypeDesc::UINT8, pixels.data()) && output->close();
    Require(written, "no picture to damage");
    return ReadBytes(path);
}

}  // namespace

bool UseDamagedImage(Damage damage)
{
    static const ScratchFolder folder;
    static const std::array<std::string, kEndings.size()> whole = [] {
        std::array<std::string, kEndings.size()> files;
        for (std::size_t i = 0; i < kEndings.size(); ++i)
            files[i] = WholeFile(folder, kEndings[i]);
        return files;
    }();
    const std::size_t kind = damage.Take(1);
    std::string file = whole[kind % kEndings.size()];
    if (kind >= 224)
        damage.Cut(file);
    damage.Apply(file, kPage);
    const std::string path = folder.Write(std::string("damaged") + kEndings[kind % kEndings.size()], file);
    try {
        const PackedImage image = DecodeImage(path);
        Require(image.pixels.size() == std::size_t{image.width} * image.height * (image.bitsPerPixel / 8u),
                "a picture of another size");
        return true;
    } catch (const std::runtime_error& error) {
        Require(std::string(error.what()).find(path) != std::string::npos,
                std::string("no file named: ") + error.what());
        return false;
    }
}

}  // namespace tessara::test

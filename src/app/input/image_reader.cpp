#include "app/input/image_reader.h"

#include "app/output/debug_reasons.h"
#include "host/console_progress.h"
#include "platform/com/bstr.h"
#include "platform/com/com_ptr.h"
#include "services/image_file.h"

#include <sstream>
#include <stdexcept>

namespace tessara {

TextureElement ReadImage(const std::string& file)
{
    // What the reader says, to its window and to the debug stream, becomes one sentence.
    const DebugReasons reasons;
    std::ostringstream said;
    const auto progress = MakeObject<ConsoleProgress>(said, false);
    ComPtr<IImageFile> image;
    if (FAILED(
            CoCreateInstance(CLSID_ImageFile, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<IImageFile>, image.OutVoid())))
        throw std::runtime_error("The image reader, which lies beside the program's libraries, can't be loaded.");
    image->SetProgressWindow(progress.Get());
    image->SetFileName(BstrHolder(file).Get());
    TextureElement element;
    UINT width = 0;
    UINT height = 0;
    WORD bits = 0;
    VARIANT pixels{};
    if (FAILED(image->Open()) || FAILED(image->GetWidth(&width)) || FAILED(image->GetHeight(&height)) ||
        FAILED(image->ReadPixels()) || FAILED(image->GetPixels(&pixels)) || FAILED(image->GetBitsPerPixel(&bits)))
        throw std::runtime_error(!reasons.First().empty() ? reasons.First() + "."
                                                          : "The image " + file + " can't be used.");
    element.width = width;
    element.height = height;
    element.bitsPerPixel = bits;
    const auto* first = static_cast<const std::uint8_t*>(pixels.byref);
    element.pixels.assign(first, first + element.PixelSize().value_or(0));
    image->Close();
    return element;
}

std::vector<std::uint8_t> WithFourChannels(const TextureElement& image)
{
    const std::size_t depth = image.bitsPerPixel / 8u;
    std::vector<std::uint8_t> pixels;
    pixels.reserve(image.pixels.size() / depth * 4);
    for (std::size_t at = 0; at < image.pixels.size(); at += depth) {
        for (const std::size_t channel : {0u, 1u, 2u})
            pixels.push_back(image.pixels[at + (depth == 1 ? 0 : channel)]);
        pixels.push_back(depth == 4 ? image.pixels[at + 3] : 255);
    }
    return pixels;
}

}  // namespace tessara

#include "app/input/image_reader.h"

#include "host/console_progress.h"
#include "platform/com/bstr.h"
#include "platform/com/com_ptr.h"
#include "services/image_file.h"

#include <stdexcept>

namespace tessara {

TextureElement ReadImage(const std::string& file)
{
    const auto progress = MakeObject<ConsoleProgress>();
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
    VARIANT pixels;
    if (FAILED(image->Open()) || FAILED(image->GetWidth(&width)) || FAILED(image->GetHeight(&height)) ||
        FAILED(image->ReadPixels()) || FAILED(image->GetPixels(&pixels)) || FAILED(image->GetBitsPerPixel(&bits)))
        throw std::runtime_error("The image " + file + " can't be used.");
    element.width = width;
    element.height = height;
    element.bitsPerPixel = bits;
    const auto* first = static_cast<const std::uint8_t*>(pixels.byref);
    element.pixels.assign(first, first + element.PixelSize().value_or(0));
    image->Close();
    return element;
}

}  // namespace tessara

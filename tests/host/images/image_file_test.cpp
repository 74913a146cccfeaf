#include "host/images/image_samples.h"
#include "platform/com/bstr.h"
#include "platform/com/com_object.h"
#include "platform/com/module_class.h"
#include "services/image_file.h"
#include "services/progress_window.h"
#include "support/message_capture.h"
#include "support/scratch_folder.h"

#include <OpenImageIO/imageio.h>
#include <gmock/gmock.h>
#include <sys/resource.h>

#include <random>

namespace {

using namespace tessara::test;
using tessara::BstrHolder;
using testing::HasSubstr;
using testing::StrEq;

/// What the reader gave of a file.
struct Picture {
    HRESULT result = E_FAIL;
    UINT width = 0;
    UINT height = 0;
    WORD bits = 0;
    std::string pixels;

    bool operator==(const Picture&) const = default;
};

ComPtr<IImageFile> NewReader()
{
    static const HRESULT registered = tessara::RegisterModuleClass(CLSID_ImageFile, TESSARA_IMAGE_MODULE);
    EXPECT_EQ(registered, S_OK);
    ComPtr<IImageFile> reader;
    EXPECT_EQ(
        CoCreateInstance(CLSID_ImageFile, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<IImageFile>, reader.OutVoid()),
        S_OK);
    return reader;
}

Picture Read(const std::string& path, IProgressWindow* progress = nullptr)
{
    const ComPtr<IImageFile> reader = NewReader();
    reader->SetFileName(BstrHolder(path).Get());
    reader->SetProgressWindow(progress);
    reader->SetTextureMgr(nullptr);
    Picture picture;
    picture.result = reader->Open();
    if (FAILED(picture.result))
        return picture;
    VARIANT pixels;
    EXPECT_EQ(reader->GetWidth(&picture.width), S_OK);
    EXPECT_EQ(reader->GetHeight(&picture.height), S_OK);
    EXPECT_EQ(reader->ReadPixels(), S_OK);
    EXPECT_EQ(reader->GetPixels(&pixels), S_OK);
    EXPECT_EQ(reader->GetBitsPerPixel(&picture.bits), S_OK);
    const std::size_t size = std::size_t{picture.width} * picture.height * (picture.bits / 8u);
    picture.pixels.assign(static_cast<const char*>(pixels.byref), size);
    EXPECT_EQ(reader->Close(), S_OK);
    return picture;
}

std::string Bytes(std::initializer_list<int> values)
{
    std::string text;
    for (const int value : values)
        text += static_cast<char>(value);
    return text;
}

/// Writes a picture with the image library. \param samples top row first
void WriteImage(const std::string& path, OIIO::ImageSpec spec, const void* samples, OIIO::TypeDesc type)
{
    const auto output = OIIO::ImageOutput::create(path);
    ASSERT_TRUE(output && output->open(path, spec)) << OIIO::geterror();
    ASSERT_TRUE(output->write_image(type, samples)) << output->geterror();
    output->close();
}

class ImageFileTest : public testing::Test {
protected:
    ScratchFolder folder_;
    MessageCapture messages_;
};

TEST_F(ImageFileTest, TheFirstRowIsTheTopRowInBlueGreenRedAlpha)
{
    // Top row red, green; bottom row blue, white; the alpha is no part of the colours.
    const unsigned char rgba[] = {255, 0, 0, 255, 0, 255, 0, 128, 0, 0, 255, 64, 255, 255, 255, 0};
    const unsigned char rgb[] = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
    const std::string bottom = Bytes({255, 0, 0, 64, 255, 255, 255, 0});
    const std::string bgra = Bytes({0, 0, 255, 255, 0, 255, 0, 128}) + bottom;
    const std::string bgr = Bytes({0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255});
    OIIO::ImageSpec spec(2, 2, 4, OIIO::TypeDesc::UINT8);
    spec.attribute("oiio:UnassociatedAlpha", 1);
    WriteImage(folder_.Path("a.png"), spec, rgba, OIIO::TypeDesc::UINT8);
    WriteImage(folder_.Path("a.tga"), spec, rgba, OIIO::TypeDesc::UINT8);
    const OIIO::ImageSpec opaque(2, 2, 3, OIIO::TypeDesc::UINT8);
    WriteImage(folder_.Path("b.png"), opaque, rgb, OIIO::TypeDesc::UINT8);
    WriteImage(folder_.Path("b.bmp"), opaque, rgb, OIIO::TypeDesc::UINT8);
    folder_.Write("c.tga", Tga(2, 2, 2, 32, bottom + bgra.substr(0, 8)));
    folder_.Write("c.psd",
                  Psd(3, 3, 2, 2, 8, Bytes({255, 0, 0, 255}) + Bytes({0, 255, 0, 255}) + Bytes({0, 0, 255, 255})));
    for (const char* name : {"a.png", "a.tga", "c.tga"})
        EXPECT_EQ(Read(folder_.Path(name)), (Picture{S_OK, 2, 2, 32, bgra})) << name;
    for (const char* name : {"b.png", "b.bmp", "c.psd"})
        EXPECT_EQ(Read(folder_.Path(name)), (Picture{S_OK, 2, 2, 24, bgr})) << name;
}

TEST_F(ImageFileTest, OtherColourModelsAndDepthsComeAsEightBits)
{
    const std::string palette = Bytes({10, 20, 30, 0, 40, 50, 60, 0});  // blue, green, red
    folder_.Write("palette.bmp", Bmp(2, 1, 8, 0, palette, Bytes({1, 0, 0, 0})));
    EXPECT_EQ(Read(folder_.Path("palette.bmp")).pixels, Bytes({40, 50, 60, 10, 20, 30}));

    // Cyan, magenta, yellow and black of Photoshop files stand for how little of each there is.
    folder_.Write("cmyk.psd", Psd(4, 4, 1, 1, 8, Bytes({255, 0, 0, 255})));
    folder_.Write("cmyk.jpg", CmykJpeg());
    EXPECT_EQ(Read(folder_.Path("cmyk.psd")).pixels, Bytes({0, 0, 255}));
    EXPECT_EQ(Read(folder_.Path("cmyk.jpg")), (Picture{S_OK, 2, 1, 24, Bytes({0, 0, 255, 0, 0, 255})}));

    folder_.Write("grey.psd", Psd(1, 1, 2, 1, 16, Bytes({0x80, 0x80, 0x20, 0x20})));
    EXPECT_EQ(Read(folder_.Path("grey.psd")), (Picture{S_OK, 2, 1, 8, Bytes({0x80, 0x20})}));

    const std::uint16_t deep[] = {0xFFFF, 0x8080, 0};
    WriteImage(folder_.Path("deep.png"), OIIO::ImageSpec(1, 1, 3, OIIO::TypeDesc::UINT16), deep,
               OIIO::TypeDesc::UINT16);
    EXPECT_EQ(Read(folder_.Path("deep.png")).pixels, Bytes({0, 0x80, 0xFF}));

    const float light[] = {1.0f, 0.214f, 0.0f, 0.107f, 0.107f, 0.107f};
    WriteImage(folder_.Path("light.exr"), OIIO::ImageSpec(2, 1, 3, OIIO::TypeDesc::FLOAT), light,
               OIIO::TypeDesc::FLOAT);
    EXPECT_EQ(Read(folder_.Path("light.exr")).pixels, Bytes({0, 127, 255, 92, 92, 92}));
    const float glass[] = {0.107f, 0.0f, 0.0f, 0.5f};  // multiplied with its alpha
    WriteImage(folder_.Path("glass.exr"), OIIO::ImageSpec(1, 1, 4, OIIO::TypeDesc::FLOAT), glass,
               OIIO::TypeDesc::FLOAT);
    EXPECT_EQ(Read(folder_.Path("glass.exr")).pixels, Bytes({0, 0, 127, 128}));
}

TEST_F(ImageFileTest, TheCamerasOrientationIsHonoured)
{
    // Turned by a quarter: the dark half, at the left in the file, is the top.
    std::vector<unsigned char> halves(32 * 16, 20);
    for (std::size_t y = 0; y < 16; ++y)
        std::fill_n(halves.begin() + static_cast<std::ptrdiff_t>(y * 32 + 16), 16, static_cast<unsigned char>(220));
    OIIO::ImageSpec spec(32, 16, 1, OIIO::TypeDesc::UINT8);
    spec.attribute("Orientation", 6);
    WriteImage(folder_.Path("turned.jpg"), spec, halves.data(), OIIO::TypeDesc::UINT8);
    const Picture picture = Read(folder_.Path("turned.jpg"));
    ASSERT_EQ(std::make_pair(picture.width, picture.height), std::make_pair(16u, 32u));
    const auto level = [&](std::size_t row) { return static_cast<unsigned char>(picture.pixels.at(row * 16 + 8)); };
    EXPECT_NEAR(level(4), 20, 8);  // near the top
    EXPECT_NEAR(level(28), 220, 8);
}

TEST_F(ImageFileTest, AFileThatCannotBeReadSaysWhichAndWhy)
{
    folder_.Write("huge.gif", HollowGif(65535, 65535));
    folder_.Write("huge.bmp", Bmp(60000, 60000, 8, 1, std::string(1024, '\0'), Bytes({255, 1, 0, 1})));
    folder_.Write("huge.tga", Tga(10, 65535, 65535, 32, Bytes({255, 1, 2, 3, 4})));
    folder_.Write("hollow.psd", Psd(3, 3, 16000, 4000, 8, "abc"));
    folder_.Write("short.psd", Psd(3, 3, 1000, 4000, 8, std::string(3000, 'a')));
    folder_.Write("poor.psd", Psd(3, 2, 2, 1, 8, "abcdef"));
    folder_.Write("empty.png", "");
    folder_.Write("text.jpg", "This is no picture.\nNeither is this.");
    folder_.Write("cut.jpg", CmykJpeg().substr(0, 170));
    const std::pair<const char*, const char*> cases[] = {
        {"missing.png", "there is no such file"},
        {".", "it is not a file"},
        {"huge.gif", "it states a size of 65535 x 65535 pixels, more than 16384 a side or 67108864 in all"},
        {"huge.bmp", "it states a size of 60000 x 60000 pixels, more than"},
        {"huge.tga", "it states a size of 65535 x 65535 pixels, more than"},
        {"hollow.psd", "it states a size of 16000 x 4000 pixels, for which it is too short"},
        {"short.psd", ""},
        {"poor.psd", "it states fewer channels than its colours are made of"},
        {"empty.png", ""},
        {"text.jpg", ""},
        {"cut.jpg", "the file is cut short"},
    };
    for (const auto& [name, reason] : cases) {
        messages_.lines.clear();
        EXPECT_EQ(Read(folder_.Path(name)).result, E_FAIL) << name;
        ASSERT_EQ(messages_.lines.size(), 1u) << name;
        EXPECT_THAT(messages_.lines[0], HasSubstr("Can't read the image \"" + folder_.Path(name) + "\": " + reason));
        EXPECT_EQ(messages_.lines[0].find('\n'), std::string::npos);
    }
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    EXPECT_LT(use.ru_maxrss, 300 * 1024) << "kilobytes at the peak";
}

TEST_F(ImageFileTest, NothingButReleaseFollowsAFailureOrAClose)
{
    const ComPtr<IImageFile> reader = NewReader();
    UINT width = 7;
    VARIANT pixels;
    EXPECT_EQ(reader->Open(), E_FAIL);
    EXPECT_EQ(reader->ReadPixels(), E_UNEXPECTED);
    EXPECT_EQ(reader->GetWidth(&width), E_UNEXPECTED);
    EXPECT_EQ(width, 0u);
    EXPECT_EQ(reader->GetPixels(&pixels), E_UNEXPECTED);
    EXPECT_EQ(pixels.byref, nullptr);
    EXPECT_EQ(reader->GetPixels(nullptr), E_POINTER);

    reader->SetFileName(BstrHolder(folder_.Write("a.tga", Tga(2, 1, 1, 24, "abc"))).Get());
    EXPECT_EQ(reader->Open(), S_OK);
    EXPECT_EQ(reader->GetWidth(&width), S_OK);
    EXPECT_EQ(width, 1u);
    EXPECT_EQ(reader->Close(), S_OK);
    EXPECT_EQ(reader->GetPixels(&pixels), E_UNEXPECTED);
}

class MockProgress : public ComObject<IProgressWindow> {
public:
    MOCK_METHOD(HRESULT, StepProgress, (LONG), (override));
    MOCK_METHOD(HRESULT, SetProgressRange, (LONG), (override));
    MOCK_METHOD(HRESULT, BeginProgress, (LONG), (override));
    MOCK_METHOD(HRESULT, EndProgress, (LONG), (override));
    MOCK_METHOD(HRESULT, SetProgressTitle, (BSTR), (override));
    MOCK_METHOD(HRESULT, ShowMessage, (BSTR), (override));
    MOCK_METHOD(HRESULT, RequestRedraw, (LONG, LONG), (override));
    MOCK_METHOD(HRESULT, SetViewState, (LONG, LONG), (override));
};

TEST_F(ImageFileTest, ALongReadFillsTheBarAndAFailureEndsItWithAMessage)
{
    const auto progress = MakeObject<testing::StrictMock<MockProgress>>();
    {
        const testing::InSequence order;
        EXPECT_CALL(*progress, SetProgressTitle);
        EXPECT_CALL(*progress, SetProgressRange(100));
        EXPECT_CALL(*progress, BeginProgress(1));
        EXPECT_CALL(*progress, StepProgress(1)).Times(100);
        EXPECT_CALL(*progress, EndProgress(1));
    }
    EXPECT_EQ(Read(folder_.Write("a.tga", Tga(2, 1, 1, 24, "abc")), progress.Get()).result, S_OK);
    testing::Mock::VerifyAndClearExpectations(progress.Get());

    const testing::InSequence order;
    EXPECT_CALL(*progress, SetProgressTitle);
    EXPECT_CALL(*progress, SetProgressRange);
    EXPECT_CALL(*progress, BeginProgress);
    EXPECT_CALL(*progress, EndProgress(1));
    EXPECT_CALL(*progress, ShowMessage);
    EXPECT_EQ(Read(folder_.Path("missing.png"), progress.Get()).result, E_FAIL);
}

/// Files of every common format, made of the same picture of 48 x 32 pixels.
class DamagedImage : public ImageFileTest, public testing::WithParamInterface<const char*> {
protected:
    DamagedImage()
    {
        const std::string name = std::string("whole.") + GetParam();
        std::string pixels;
        for (int i = 0; i < 48 * 32 * 3; ++i)
            pixels += static_cast<char>(i * 7 + i / 144 * 3);
        if (name == "whole.psd")
            whole_ = Psd(3, 3, 48, 32, 8, pixels);
        else
            WriteImage(folder_.Path(name), OIIO::ImageSpec(48, 32, 3, OIIO::TypeDesc::UINT8), pixels.data(),
                       OIIO::TypeDesc::UINT8);
        if (whole_.empty())
            whole_ = ReadBytes(folder_.Path(name));
    }

    Picture ReadAs(const std::string& bytes)
    {
        return Read(folder_.Write(std::string("damaged.") + GetParam(), bytes));
    }

    std::string whole_;
};

TEST_P(DamagedImage, CutShortNeverPassesForTheWholePicture)
{
    const Picture picture = ReadAs(whole_);
    ASSERT_EQ(picture.result, S_OK);
    for (std::size_t i = 0; i < 100; ++i) {
        const std::size_t length = whole_.size() * i / 100;
        const Picture cut = ReadAs(whole_.substr(0, length));
        // What stands behind the pixels may be missing.
        EXPECT_TRUE(FAILED(cut.result) || cut == picture) << length << " of " << whole_.size() << " bytes";
    }
}

TEST_P(DamagedImage, FlippedBitsHarmNothing)
{
    std::mt19937 random(11);
    for (int i = 0; i < 150; ++i) {
        std::string bytes = whole_;
        const std::size_t place = random() % (i % 2 ? bytes.size() : std::min<std::size_t>(bytes.size(), 200));
        bytes[place] = static_cast<char>(bytes[place] ^ (1 << random() % 8));
        const Picture picture = ReadAs(bytes);
        EXPECT_TRUE(FAILED(picture.result) || picture.bits == 8 || picture.bits == 24 || picture.bits == 32);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, DamagedImage,
                         testing::Values("jpg", "png", "bmp", "tga", "psd", "tif", "gif", "webp"),
                         [](const auto& format) { return std::string(format.param); });

}  // namespace

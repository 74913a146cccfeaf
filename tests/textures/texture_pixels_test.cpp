#include "platform/gl/entry_point.h"
#include "platform/gl/offscreen_context.h"
#include "support/message_capture.h"
#include "textures/ctexture_mgr_imp.h"

#include <gmock/gmock.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace {

using namespace tessara;
using namespace tessara::test;
using testing::IsEmpty;

using Bytes = std::vector<unsigned char>;

/// An image in which no two pixels of a row or column are alike, as far as bytes go.
Bytes Image(int width, int height, int bits)
{
    Bytes pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                 static_cast<std::size_t>(bits / 8));
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<unsigned char>(i * 7 + i / 251);
    return pixels;
}

/// What OpenGL has of the bound texture.
struct ReadBack {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bits = 0;
    Bytes pixels;
};

class TexturePixels : public testing::Test {
protected:
    void SetUp() override
    {
        try {
            context_.emplace();
        } catch (const std::exception& error) {
            GTEST_SKIP() << error.what();
        }
    }

    void TearDown() override
    {
        if (!context_)
            return;
        while (!textures_.records.empty())
            textures_.ReleaseTexture(textures_.records.back()->id);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        EXPECT_THAT(messages_.lines, IsEmpty());
        EXPECT_THAT(messages_.boxes, IsEmpty());
    }

    std::uint32_t Create(const char* name, int width, int height, int bits, const Bytes& pixels)
    {
        std::uint32_t id = 0;
        EXPECT_TRUE(textures_.CreateTexture("test", name, width, height, bits, pixels.data(), &id));
        EXPECT_NE(id, 0u);
        return id;
    }

    ReadBack Read(std::uint32_t id)
    {
        ReadBack result;
        void* pixels = nullptr;
        EXPECT_TRUE(textures_.BindTexture(id));
        EXPECT_TRUE(textures_.GetTextureInfo(id, &result.width, &result.height, &result.bits, nullptr, &pixels));
        const auto size = static_cast<std::size_t>(result.width * result.height * result.bits / 8);
        const auto* first = static_cast<unsigned char*>(pixels);
        result.pixels.assign(first, first + size);
        std::free(pixels);
        return result;
    }

    std::optional<OffscreenContext> context_;
    MessageCapture messages_;
    CTextureMgrImp textures_;
};

TEST_F(TexturePixels, ComeBackByteForByteWhereTheSidesArePowersOfTwo)
{
    const std::pair<int, int> sizes[] = {{1, 1}, {2, 1}, {64, 64}, {128, 16}, {1, 32}, {256, 512}};
    for (const int bits : {8, 24, 32}) {
        for (const auto& [width, height] : sizes) {
            const Bytes pixels = Image(width, height, bits);
            const std::string name = std::to_string(bits) + "/" + std::to_string(width) + "x" + std::to_string(height);
            const ReadBack back = Read(Create(name.c_str(), width, height, bits, pixels));
            EXPECT_EQ(back.width, width) << name;
            EXPECT_EQ(back.height, height) << name;
            EXPECT_EQ(back.bits, bits) << name;
            EXPECT_TRUE(back.pixels == pixels) << name;
        }
    }
}

TEST_F(TexturePixels, OfAnOddRowLengthDoNotShear)
{
    // A left half in blue and a right half in green, in a buffer without a byte to spare.
    constexpr int kWidth = 257;
    constexpr int kHeight = 67;
    auto buffer = std::make_unique<unsigned char[]>(kWidth * kHeight * 3);
    for (int i = 0; i < kWidth * kHeight; ++i)
        buffer[static_cast<std::size_t>(i) * 3 + (i % kWidth < kWidth / 2 ? 0u : 1u)] = 255;
    std::uint32_t id = 0;
    ASSERT_TRUE(textures_.CreateTexture("test", "halves", kWidth, kHeight, 24, buffer.get(), &id));
    const ReadBack back = Read(id);
    for (int y = 0; y < back.height; ++y) {
        const auto pixel = [&](int x) { return &back.pixels[static_cast<std::size_t>(y * back.width + x) * 3]; };
        EXPECT_EQ(pixel(back.width / 4)[0], 255) << "row " << y;
        EXPECT_EQ(pixel(back.width / 4)[1], 0) << "row " << y;
        EXPECT_EQ(pixel(back.width * 3 / 4)[0], 0) << "row " << y;
        EXPECT_EQ(pixel(back.width * 3 / 4)[1], 255) << "row " << y;
    }
    GLint alignment = 0;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    EXPECT_EQ(alignment, 4);
}

TEST_F(TexturePixels, AreNotReadPastTheirEnd)
{
    // The image ends where the memory does. The upload rescales one side, the other side, and both.
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    auto* memory = static_cast<unsigned char*>(
        mmap(nullptr, 32 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(memory, MAP_FAILED);
    ASSERT_EQ(mprotect(memory + 31 * page, page, PROT_NONE), 0);
    std::uint32_t id = 0;
    for (const auto& [width, height] : {std::pair(64, 39), std::pair(39, 64), std::pair(257, 67), std::pair(2, 25)}) {
        const auto size = static_cast<std::size_t>(width * height * 3);
        EXPECT_TRUE(textures_.GenerateTexture(width, height, 24, memory + 31 * page - size, &id));
        glDeleteTextures(1, &id);
    }
    munmap(memory, 32 * page);
}

TEST_F(TexturePixels, HaveMipmapsDownToOnePixel)
{
    Create("levels", 32, 8, 32, Image(32, 8, 32));
    GLint width = 0;
    GLint height = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 5, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 5, GL_TEXTURE_HEIGHT, &height);
    EXPECT_EQ(std::make_pair(width, height), std::make_pair(1, 1));
}

TEST_F(TexturePixels, TheDriversUnitsAreFound)
{
    ASSERT_TRUE(textures_.InitMultitexture());
    textures_.activeTexture(GL_TEXTURE1_ARB);
    GLint unit = 0;
    glGetIntegerv(GL_ACTIVE_TEXTURE_ARB, &unit);
    EXPECT_EQ(unit, GL_TEXTURE1_ARB);
    EXPECT_TRUE(textures_.DisableCombinedTextures());
    EXPECT_EQ(wglGetProcAddress("glNoSuchThingARB"), nullptr);
}

}  // namespace

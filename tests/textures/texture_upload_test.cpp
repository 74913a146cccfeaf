#include "support/message_capture.h"
#include "support/recording_gl.h"
#include "textures/ctexture_mgr_imp.h"

#include <gmock/gmock.h>

#include <numeric>

namespace {

using namespace tessara::test;
using namespace testing;

using Lines = std::vector<std::string>;

const Lines kAnisotropy = {"glGetFloatv(GL_MAX_TEXTURE_MAX_ANISOTROPY_EXT)",
                           "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT, 16)"};

/// The upload of a 2 x 1 image under the host's own alignment.
Lines Build(const std::string& componentsSizeAndFormat)
{
    return {"glGetIntegerv(GL_UNPACK_ALIGNMENT)", "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)",
            "gluBuild2DMipmaps(GL_TEXTURE_2D, " + componentsSizeAndFormat + ", GL_UNSIGNED_BYTE, data)",
            "glPixelStorei(GL_UNPACK_ALIGNMENT, 4)"};
}

Lines Joined(std::initializer_list<Lines> parts)
{
    Lines all;
    for (const Lines& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

class TextureUpload : public testing::Test {
protected:
    TextureUpload() { RecordingGl::Reset(); }

    bool Record(std::int32_t depth)
    {
        record_ = {1, 0, "e", "n", 2, 1, depth, pixels_};
        return textures_.GenerateTexture(&record_);
    }

    bool Direct(std::int32_t depth)
    {
        id_ = 77;
        return textures_.GenerateTexture(2, 1, depth, pixels_, &id_);
    }

    static Lines RecordSettings(const Lines& between = {})
    {
        return Joined(
            {{"glEnable(GL_TEXTURE_2D)", "glGenTextures(1)", "glGetError()", "glBindTexture(GL_TEXTURE_2D, 1)",
              "glTexEnvf(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)",
              "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)",
              "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
              "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
              "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)"},
             between});
    }

    static Lines DirectSettings(const Lines& between = {})
    {
        return Joined({{"glEnable(GL_TEXTURE_2D)", "glGenTextures(1)", "glGetError()",
                        "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)",
                        "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)"},
                       between,
                       {"glBindTexture(GL_TEXTURE_2D, 1)"}});
    }

    RecordingGl& gl_ = RecordingGl::Get();
    MessageCapture messages_;
    CTextureMgrImp textures_;
    unsigned char pixels_[8] = {255};
    TextureRecord record_{};
    std::uint32_t id_ = 77;
};

TEST_F(TextureUpload, TheRecordFormSetsEnvironmentFiltersAndWrapsBeforeItBuilds)
{
    const std::pair<std::int32_t, const char*> depths[] = {
        {8, "1, 2, 1, GL_LUMINANCE"}, {24, "3, 2, 1, GL_BGR_EXT"}, {32, "4, 2, 1, GL_BGRA_EXT"}};
    for (const auto& [depth, build] : depths) {
        RecordingGl::Reset();
        EXPECT_TRUE(Record(depth));
        EXPECT_EQ(record_.id, 1u);
        EXPECT_THAT(gl_.log, ElementsAreArray(Joined({RecordSettings(), Build(build)})));
    }
}

TEST_F(TextureUpload, AnisotropyIsTheDriversMaximumAndOnlySetWhenItIsOn)
{
    textures_.useAnisotropy = true;
    EXPECT_TRUE(Record(32));
    EXPECT_THAT(gl_.log, ElementsAreArray(Joined({RecordSettings(kAnisotropy), Build("4, 2, 1, GL_BGRA_EXT")})));
    RecordingGl::Reset();
    EXPECT_TRUE(Direct(32));
    EXPECT_THAT(gl_.log, ElementsAreArray(Joined({DirectSettings(kAnisotropy), Build("4, 2, 1, GL_BGRA_EXT")})));
}

TEST_F(TextureUpload, TheSettingsOfThisMomentAreTheOnesApplied)
{
    std::int32_t min = GL_NEAREST;
    std::int32_t mag = GL_NEAREST;
    std::int32_t s = GL_CLAMP;
    std::int32_t t = GL_CLAMP_TO_EDGE;
    textures_.SwapTextureFilters(&min, &mag);
    textures_.SwapTextureWraps(&s, &t);
    EXPECT_EQ(std::tuple(min, mag, s, t), std::tuple(GL_LINEAR_MIPMAP_LINEAR, GL_LINEAR, GL_REPEAT, GL_REPEAT))
        << "the former ones";
    EXPECT_TRUE(Record(8));
    EXPECT_THAT(gl_.log,
                testing::IsSupersetOf({"glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST)",
                                       "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST)",
                                       "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP)",
                                       "glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)"}));
}

TEST_F(TextureUpload, WithoutAnImageNothingIsCalled)
{
    EXPECT_TRUE(textures_.GenerateTexture(nullptr));
    const struct {
        std::int32_t width, height;
        const void* pixels;
    } cases[] = {{0, 1, pixels_}, {1, 0, pixels_}, {-1, 1, pixels_}, {1, -1, pixels_}, {1, 1, nullptr}};
    for (const auto& c : cases) {
        record_ = {1, 0, "e", "n", c.width, c.height, 32, c.pixels};
        EXPECT_TRUE(textures_.GenerateTexture(&record_));
        EXPECT_EQ(record_.id, 0u);
        id_ = 77;
        EXPECT_TRUE(textures_.GenerateTexture(c.width, c.height, 32, c.pixels, &id_));
        EXPECT_EQ(id_, 0u);
    }
    EXPECT_THAT(gl_.log, IsEmpty());
}

TEST_F(TextureUpload, AnErrorBehindTheNewNameEndsTheUpload)
{
    gl_.errors = {GL_INVALID_VALUE, GL_INVALID_VALUE};
    EXPECT_FALSE(Record(32));
    EXPECT_FALSE(Direct(32));
    EXPECT_EQ(id_, 77u);
    EXPECT_THAT(messages_.lines, testing::Each("GLError: invalid value on CTextureMgrImp::GenerateTexture \n"));
    EXPECT_EQ(messages_.lines.size(), 2u);
    EXPECT_EQ(gl_.Count("glDeleteTextures") + gl_.Count("glBindTexture"), 0u);
}

TEST_F(TextureUpload, WithoutANameItSucceedsAndBindsNothing)
{
    gl_.nextTexture = 0;
    EXPECT_TRUE(Record(32));
    EXPECT_EQ(record_.id, 0u);
    EXPECT_TRUE(Direct(32));
    EXPECT_EQ(id_, 0u);
    EXPECT_EQ(gl_.Count("glBindTexture") + gl_.Count("gluBuild2DMipmaps"), 0u);
    EXPECT_EQ(gl_.Count("glTexEnvf"), 0u);
    EXPECT_EQ(gl_.Count("glTexParameteri"), 2u);  // the direct form's filters
}

TEST_F(TextureUpload, AnotherDepthFailsWithoutAMessageAndKeepsTheName)
{
    EXPECT_FALSE(Record(16));
    EXPECT_THAT(gl_.log, ElementsAreArray(RecordSettings()));
    RecordingGl::Reset();
    EXPECT_FALSE(Direct(16));
    EXPECT_THAT(gl_.log, ElementsAreArray(DirectSettings()));
    EXPECT_EQ(id_, 77u);
    EXPECT_THAT(messages_.lines, IsEmpty());
    EXPECT_THAT(messages_.boxes, IsEmpty());
}

TEST_F(TextureUpload, AFailedBuildDeletesTheNameAndOnlyTheRecordFormAsksTheUser)
{
    gl_.buildResult = 1;
    EXPECT_FALSE(Record(8));
    EXPECT_EQ(gl_.log.back(), "glDeleteTextures(1, {1})");
    EXPECT_EQ(messages_.boxes.size(), 1u);
    EXPECT_THAT(messages_.lines, IsEmpty());

    EXPECT_FALSE(Direct(8));
    EXPECT_EQ(gl_.log.back(), "glDeleteTextures(1, {2})");
    EXPECT_THAT(messages_.lines, IsEmpty());
    gl_.errors = {GL_NO_ERROR, GL_OUT_OF_MEMORY};
    EXPECT_FALSE(Direct(8));
    EXPECT_EQ(id_, 77u);
    EXPECT_THAT(messages_.lines, ElementsAre("GLError: out of memory on CTextureMgrImp::GenerateTexture 2 \n"));
    EXPECT_EQ(messages_.boxes.size(), 1u);
}

TEST_F(TextureUpload, TheHostsPixelStorageComesBack)
{
    gl_.unpackAlignment = 8;
    gl_.packAlignment = 2;
    EXPECT_TRUE(Record(24));
    EXPECT_EQ(gl_.uploads.at(0).unpackAlignment, 1);
    EXPECT_EQ(gl_.unpackAlignment, 8);
    void* pixels = nullptr;
    EXPECT_TRUE(textures_.GetTextureInfo(0, nullptr, nullptr, nullptr, nullptr, &pixels));
    std::free(pixels);
    EXPECT_EQ(gl_.Count("glPixelStorei"), 4u);
    EXPECT_EQ(gl_.packAlignment, 2);
}

class TextureInfo : public TextureUpload {
protected:
    TextureInfo()
    {
        textures_.CreateTexture("element", "name", 2, 1, 24, pixels_, &id_);
        RecordingGl::Get().log.clear();
    }
    ~TextureInfo() override { textures_.ReleaseTexture(id_); }

    std::int32_t width_ = -1;
    std::int32_t height_ = -1;
    std::int32_t bits_ = -1;
    char name_[258] = "untouched";
    void* read_ = nullptr;
};

TEST_F(TextureInfo, DescribesTheBoundTextureWithoutBindingIt)
{
    EXPECT_TRUE(textures_.GetTextureInfo(id_, &width_, &height_, &bits_, name_, &read_));
    EXPECT_EQ(std::tie(width_, height_, bits_), std::make_tuple(2, 1, 24));
    EXPECT_STREQ(name_, "name");
    EXPECT_EQ(std::memcmp(read_, pixels_, 6), 0);
    std::free(read_);
    std::strcpy(name_, "untouched");
    EXPECT_THAT(gl_.Calls({"glGetIntegerv", "glPixelStorei"}),
                ElementsAre("glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH)",
                            "glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT)",
                            "glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_COMPONENTS)",
                            "glGetTexImage(GL_TEXTURE_2D, 0, GL_BGR_EXT, GL_UNSIGNED_BYTE, data)"));
    EXPECT_TRUE(textures_.GetTextureInfo(0, nullptr, nullptr, &bits_, name_, nullptr));
    EXPECT_STREQ(name_, "untouched") << "the id 0 has no name";
}

TEST_F(TextureInfo, OfAnUnregisteredIdLeavesEveryOutputAlone)
{
    EXPECT_FALSE(textures_.GetTextureInfo(99, &width_, &height_, &bits_, name_, &read_));
    EXPECT_EQ(std::tie(width_, height_, bits_), std::make_tuple(-1, -1, -1));
    EXPECT_STREQ(name_, "untouched");
    EXPECT_EQ(read_, nullptr);
    EXPECT_THAT(gl_.log, IsEmpty());
}

TEST_F(TextureInfo, ADriverThatTellsTheSizedFormatStillGivesTheDepth)
{
    const std::tuple<GLint, std::int32_t, std::size_t> cases[] = {
        {GL_LUMINANCE8, 8, 1}, {GL_RGB8, 24, 1}, {GL_RGBA8, 32, 1}, {2, 16, 0}};
    for (const auto& [components, bits, reads] : cases) {
        gl_.uploads.back().components = components;
        gl_.log.clear();
        EXPECT_TRUE(textures_.GetTextureInfo(id_, nullptr, nullptr, &bits_, nullptr, &read_));
        std::free(read_);
        EXPECT_EQ(bits_, bits);
        EXPECT_EQ(gl_.Count("glGetTexImage"), reads);
    }
}

TEST_F(TextureInfo, WithoutMemoryForThePixelsFails)
{
    EXPECT_FALSE(textures_.GetTextureInfo(id_, &width_, nullptr, nullptr, nullptr, &read_,
                                          [](std::size_t) -> void* { return nullptr; }));
    EXPECT_EQ(read_, nullptr);
    EXPECT_EQ(gl_.Count("glGetTexImage"), 0u);
}

}  // namespace

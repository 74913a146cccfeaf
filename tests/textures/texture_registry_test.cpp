#include "support/allocation_failure.h"
#include "support/message_capture.h"
#include "support/recording_gl.h"
#include "textures/ctexture_mgr_imp.h"

#include <gmock/gmock.h>

#include <map>
#include <numeric>
#include <random>

namespace {

using namespace tessara::test;
using namespace testing;

constexpr unsigned char kPixels[4 * 4 * 4] = {1, 2, 3};

class TextureRegistry : public testing::Test {
protected:
    TextureRegistry() { RecordingGl::Reset(); }
    ~TextureRegistry() override
    {
        while (!textures_.records.empty())
            textures_.ReleaseTexture(textures_.records.back()->id);
    }

    std::uint32_t Create(const std::string& element, const std::string& name, std::int32_t width = 4,
                         std::int32_t height = 4, std::int32_t depth = 32)
    {
        std::uint32_t id = 77;
        EXPECT_TRUE(textures_.CreateTexture(element.c_str(), name.c_str(), width, height, depth, kPixels, &id));
        return id;
    }

    bool Fails(const std::string& element, const std::string& name, std::int32_t depth = 32)
    {
        std::uint32_t id = 77;
        const bool made = textures_.CreateTexture(element.c_str(), name.c_str(), 4, 4, depth, kPixels, &id);
        return !made && id == 0 && textures_.records.empty();
    }

    RecordingGl& gl_ = RecordingGl::Get();
    MessageCapture messages_;
    CTextureMgrImp textures_;
};

TEST_F(TextureRegistry, ThePairOfNamesSharesOneUploadUntilItsLastRelease)
{
    const std::uint32_t first = Create("surface", "a");
    gl_.log.clear();
    EXPECT_EQ(Create("surface", "a", 2, 2, 8), first);
    EXPECT_THAT(gl_.log, ElementsAre("glEnable(GL_TEXTURE_2D)"));
    EXPECT_EQ(textures_.records[0]->refCount, 2u);
    EXPECT_EQ(textures_.records[0]->bitDepth, 32);
    EXPECT_NE(Create("other", "a"), first);

    gl_.log.clear();
    EXPECT_TRUE(textures_.ReleaseTexture(first));
    EXPECT_THAT(gl_.log, IsEmpty());
    EXPECT_TRUE(textures_.ReleaseTexture(first));
    EXPECT_THAT(gl_.log, ElementsAre("glDeleteTextures(1, {1})", "glGetError()"));
    EXPECT_FALSE(textures_.ReleaseTexture(first));
    EXPECT_EQ(gl_.log.size(), 2u);
}

TEST_F(TextureRegistry, HoldsFollowASimpleModelOverAnySequence)
{
    std::mt19937 random(7);
    std::map<std::string, std::uint32_t> ids;
    std::map<std::uint32_t, std::uint32_t> holds;
    for (int step = 0; step < 4000; ++step) {
        const std::string name = "t" + std::to_string(random() % 12);
        const std::uint32_t id = ids[name];
        const bool known = holds.contains(id);
        switch (random() % 4) {
        case 0:
            ids[name] = Create("e", name);
            EXPECT_EQ(ids[name] == id, known);
            ++holds[ids[name]];
            break;
        case 1:
            EXPECT_EQ(textures_.AddTextureRef(id), known);
            if (known)
                ++holds[id];
            break;
        default:
            EXPECT_EQ(textures_.ReleaseTexture(id), known);
            if (known && --holds[id] == 0)
                holds.erase(id);
        }
        ASSERT_EQ(textures_.records.size(), holds.size());
    }
    for (const TextureRecord* record : textures_.records)
        EXPECT_EQ(record->refCount, holds[record->id]);
    EXPECT_EQ(gl_.Count("glGenTextures") - gl_.Count("glDeleteTextures"), holds.size());
}

TEST_F(TextureRegistry, AReleaseKeepsTheOrderOfTheOthersAndSurvivesAGlError)
{
    const std::uint32_t a = Create("e", "a");
    const std::uint32_t b = Create("e", "b");
    const std::uint32_t c = Create("e", "c");
    gl_.errors = {GL_INVALID_OPERATION};
    EXPECT_TRUE(textures_.ReleaseTexture(b));
    EXPECT_THAT(messages_.lines, ElementsAre("GLError: invalid operation on CTextureMgrImp::ReleaseTexture \n"));
    std::int32_t index = -1;
    EXPECT_TRUE(textures_.FindTextureIndex(a, &index));
    EXPECT_EQ(index, 0);
    EXPECT_TRUE(textures_.FindTextureIndex(c, &index));
    EXPECT_EQ(index, 1);
    std::uint32_t id = 55;
    EXPECT_FALSE(textures_.FindTextureIndex(b, &index));
    EXPECT_FALSE(textures_.FindTexture("e", "b", &id));
    EXPECT_EQ(index, 1);
    EXPECT_EQ(id, 55u);
}

TEST_F(TextureRegistry, TheRecordKeepsTheCreatorsSizeWithoutItsSign)
{
    Create("e", "a", -4, -2, 24);
    const TextureRecord& record = *textures_.records[0];
    EXPECT_EQ(record.width, 4);
    EXPECT_EQ(record.height, 2);
    EXPECT_EQ(record.bitDepth, 24);
    EXPECT_EQ(gl_.uploads.at(0).width, 4);
    EXPECT_EQ(gl_.uploads.at(0).pixels[0], 1);  // not mirrored
    std::uint32_t id = 77;
    EXPECT_TRUE(textures_.CreateTexture("e", "lowest", INT32_MIN, 4, 24, kPixels, &id));
    EXPECT_EQ(id, 0u);
}

TEST_F(TextureRegistry, ATextureWithoutPixelsIsRegisteredUnderTheIdZero)
{
    std::uint32_t id = 77;
    for (const char* name : {"a", "b", "a"})
        EXPECT_TRUE(textures_.CreateTexture("e", name, 4, 4, 24, nullptr, &id));
    EXPECT_EQ(id, 0u);
    ASSERT_EQ(textures_.records.size(), 2u);
    EXPECT_EQ(textures_.records[0]->refCount, 2u);
    EXPECT_EQ(gl_.Count("glGenTextures"), 0u);
}

TEST_F(TextureRegistry, NamesThatDoNotFitAreRefusedAndNotCut)
{
    EXPECT_NE(Create(std::string(49, 'e'), std::string(257, 'n')), 0u);
    textures_.ReleaseTexture(1);
    EXPECT_TRUE(Fails(std::string(50, 'e'), "n"));
    EXPECT_TRUE(Fails("e", std::string(258, 'n')));
    EXPECT_THAT(messages_.lines, testing::SizeIs(2));
    EXPECT_EQ(gl_.Count("glGenTextures"), 1u);
}

TEST_F(TextureRegistry, FailuresToCreateLeaveNoRecordAndTheIdZero)
{
    gl_.errors = {GL_OUT_OF_MEMORY};
    EXPECT_TRUE(Fails("e", "a"));
    EXPECT_THAT(messages_.lines, ElementsAre("GLError: out of memory on CTextureMgrImp::GenerateTexture \n"));
    EXPECT_TRUE(Fails("e", "a", 16));
    gl_.buildResult = 7;
    EXPECT_TRUE(Fails("e", "a"));
    ASSERT_EQ(messages_.boxes.size(), 1u);
    EXPECT_EQ(messages_.boxes[0].first, "Error:Image Loading");
    EXPECT_EQ(messages_.boxes[0].second, "Graphic Card Out of Memory\nImage is too big");
}

TEST_F(TextureRegistry, ACreateWithoutMemorySaysSoAndLeavesTheRegistryAlone)
{
    {
        const tessara::test::RefusedSize records(sizeof(TextureRecord));
        EXPECT_TRUE(Fails("e", "a"));
    }
    EXPECT_THAT(messages_.lines, ElementsAre("Execption on CTextureMgrImp::CreateTexture.\n"));
    EXPECT_THAT(gl_.log, ElementsAre("glEnable(GL_TEXTURE_2D)"));
}

TEST_F(TextureRegistry, BindingAnIdThatIsNotRegisteredMakesNoCall)
{
    const std::uint32_t id = Create("e", "a");
    gl_.log.clear();
    EXPECT_FALSE(textures_.BindTexture(id + 1));
    EXPECT_FALSE(textures_.BindTexture(0));
    EXPECT_THAT(gl_.log, IsEmpty());
    EXPECT_TRUE(textures_.BindTexture(id));
    EXPECT_TRUE(textures_.DisableTexture());
    EXPECT_THAT(gl_.log,
                ElementsAre("glEnable(GL_TEXTURE_2D)", "glBindTexture(GL_TEXTURE_2D, 1)", "glDisable(GL_TEXTURE_2D)"));
}

TEST(TextureUnits, AreFetchedOnceAndSwitchedOffTogether)
{
    RecordingGl::Reset();
    RecordingGl& gl = RecordingGl::Get();
    MessageCapture messages;
    CTextureMgrImp textures;
    EXPECT_FALSE(textures.DisableCombinedTextures());
    EXPECT_THAT(gl.log, IsEmpty());
    EXPECT_THAT(messages.lines, ElementsAre("Fail trying to combine textures\n"));

    gl.extensions = "GL_ARB_texture_env_combine";
    EXPECT_FALSE(textures.InitMultitexture());
    EXPECT_FALSE(textures.IsMultitextureSupported());
    ASSERT_EQ(messages.boxes.size(), 1u);
    EXPECT_EQ(messages.boxes[0].second, "Your current setups does not support multitexturing");

    gl.extensions = "GL_ARB_multitexture";
    EXPECT_TRUE(textures.InitMultitexture());
    EXPECT_TRUE(textures.IsMultitextureSupported());
    gl.extensions = "";
    EXPECT_TRUE(textures.InitMultitexture());

    gl.log.clear();
    EXPECT_TRUE(textures.DisableCombinedTextures());
    EXPECT_THAT(gl.log, ElementsAre("glActiveTextureARB(GL_TEXTURE1_ARB)", "glDisable(GL_TEXTURE_2D)",
                                    "glActiveTextureARB(GL_TEXTURE0_ARB)", "glDisable(GL_TEXTURE_2D)"));
}

TEST(TextureUnits, AnExtensionIsAWholeWordOfTheExtensionString)
{
    RecordingGl::Reset();
    struct {
        const char* extensions;
        bool found;
    } cases[] = {
        {"GL_a", true},   {"GL_ab", false}, {"GL_ab GL_a", true},      {"GL_a GL_ab", true}, {"GL_b GL_a GL_c", true},
        {"XGL_a", false}, {"", false},      {"GL_aGL_a GL_aa", false}, {nullptr, false},
    };
    for (const auto& c : cases) {
        RecordingGl::Get().extensions = c.extensions;
        EXPECT_EQ(CTextureMgrImp::IsExtensionSupported("GL_a"), c.found) << (c.extensions ? c.extensions : "null");
    }
    RecordingGl::Get().extensions = "GL_b ";
    EXPECT_TRUE(CTextureMgrImp::IsExtensionSupported(""));
}

TEST(ImageFlip, MirrorsByTheSignsOfTheSize)
{
    // 3 x 3 pixels, each of the value 0 to 8 in all its bytes.
    const struct {
        std::int32_t width, height;
        std::vector<int> order;
    } cases[] = {
        {3, 3, {0, 1, 2, 3, 4, 5, 6, 7, 8}},
        {3, -3, {6, 7, 8, 3, 4, 5, 0, 1, 2}},
        {-3, 3, {2, 1, 0, 5, 4, 3, 8, 7, 6}},
        {-3, -3, {6, 7, 8, 3, 4, 5, 0, 1, 2}},
    };
    for (const std::uint32_t bits : {8u, 24u, 32u}) {
        for (const auto& c : cases) {
            std::vector<unsigned char> image;
            std::vector<unsigned char> expected;
            for (int i = 0; i < 9; ++i) {
                image.insert(image.end(), bits / 8, static_cast<unsigned char>(i));
                expected.insert(expected.end(), bits / 8, static_cast<unsigned char>(c.order[static_cast<size_t>(i)]));
            }
            EXPECT_TRUE(CTextureMgrImp::FlipImage(c.width, c.height, bits, image.data()));
            EXPECT_EQ(image, expected) << c.width << " x " << c.height << " x " << bits;
        }
    }
    EXPECT_FALSE(CTextureMgrImp::FlipImage(3, 3, 8, nullptr));
}

}  // namespace

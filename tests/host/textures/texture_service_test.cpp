#include "host/textures/texture_service.h"
#include "platform/com/bstr.h"
#include "support/message_capture.h"
#include "support/recording_gl.h"

#include <gmock/gmock.h>

namespace {

using tessara::BstrHolder;
using tessara::TextureService;
using tessara::test::MessageCapture;
using tessara::test::RecordingGl;
using testing::ElementsAre;
using testing::IsEmpty;

class TextureServiceTest : public testing::Test {
protected:
    TextureServiceTest()
    {
        RecordingGl::Reset();
        service_ = MakeObject<TextureService>();
    }

    CTextureMgrImp& Textures()
    {
        CTextureMgrImp* textures = nullptr;
        EXPECT_EQ(service_->GetImplementation(&textures), S_OK);
        return *textures;
    }

    HRESULT Create(const char* element, const char* name, ULONG* id, LONG bits = 24)
    {
        service_->SetElementName(BstrHolder(element).Get());
        service_->SetTextureName(BstrHolder(name).Get());
        return service_->CreateTexture(2, 1, bits, pixels_, id);
    }

    RecordingGl& gl_ = RecordingGl::Get();
    MessageCapture messages_;
    ComPtr<TextureService> service_;
    unsigned char pixels_[8] = {1, 2, 3, 4, 5, 6};
};

TEST_F(TextureServiceTest, MeetsItsContextAtTheFirstCallThatHasOne)
{
    gl_.hasContext = false;
    EXPECT_EQ(service_->HasMultitexture(), 0);
    EXPECT_FALSE(Textures().IsMultitextureSupported());
    EXPECT_THAT(messages_.boxes, IsEmpty());

    gl_.hasContext = true;
    EXPECT_NE(service_->HasMultitexture(), 0);
    EXPECT_TRUE(Textures().IsMultitextureSupported());
    EXPECT_TRUE(Textures().useAnisotropy);
    gl_.log.clear();
    service_->HasMultitexture();
    EXPECT_THAT(gl_.log, IsEmpty());
}

TEST_F(TextureServiceTest, ADriverWithoutTheExtensionsIsToldOfOnce)
{
    gl_.extensions = "GL_EXT_bgra";
    EXPECT_EQ(service_->HasMultitexture(), 0);
    EXPECT_EQ(service_->HasMultitexture(), 0);
    EXPECT_FALSE(Textures().useAnisotropy);
    EXPECT_EQ(messages_.boxes.size(), 1u);
    EXPECT_EQ(service_->SelectTextureUnit(GL_TEXTURE1_ARB), E_FAIL);
    EXPECT_EQ(service_->ResetTextureUnit(), E_FAIL);
}

TEST_F(TextureServiceTest, TexturesAreMadeUnderTheLastNamesGiven)
{
    ULONG first = 0;
    ULONG second = 0;
    EXPECT_EQ(Create("TESSARA_SURFACE", "key", &first), S_OK);
    EXPECT_EQ(service_->CreateTexture(2, 1, 24, pixels_, &second), S_OK);
    EXPECT_EQ(first, second);
    EXPECT_STREQ(Textures().records.at(0)->elementName, "TESSARA_SURFACE");
    EXPECT_STREQ(Textures().records.at(0)->textureName, "key");
    EXPECT_EQ(service_->ReleaseTexture(first), S_OK);
    EXPECT_EQ(service_->ReleaseTexture(first), S_OK);
    EXPECT_EQ(service_->ReleaseTexture(first), E_FAIL);
    EXPECT_THAT(Textures().records, IsEmpty());
}

TEST_F(TextureServiceTest, ATextureThatCannotBeMadeIsAFailureWithTheIdZero)
{
    ULONG id = 77;
    EXPECT_EQ(Create("e", "n", &id, 16), E_FAIL);
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(Create(std::string(50, 'e').c_str(), "n", &id), E_FAIL);
    EXPECT_EQ(service_->CreateTexture(2, 1, 24, pixels_, nullptr), E_POINTER);

    // Without pixels there is no texture, and its names stay free.
    Create("e", "blank", &id);
    service_->ReleaseTexture(id);
    messages_.lines.clear();
    const std::pair<LONG, const void*> empty[] = {{0, pixels_}, {-2147483647 - 1, pixels_}, {2, nullptr}};
    for (const auto& [side, pixels] : empty)
        EXPECT_EQ(service_->CreateTexture(side, 1, 24, pixels, &id), E_FAIL);
    EXPECT_EQ(messages_.lines.size(), 3u);
    EXPECT_THAT(Textures().records, IsEmpty());
    EXPECT_EQ(Create("e", "blank", &id), S_OK);
    EXPECT_NE(id, 0u);
    EXPECT_EQ(service_->GetImplementation(nullptr), E_POINTER);
}

TEST_F(TextureServiceTest, BindsUnitsAndTexturesInTheOrderOfTheCalls)
{
    ULONG id = 0;
    ASSERT_EQ(Create("e", "n", &id), S_OK);
    gl_.log.clear();
    EXPECT_EQ(service_->SelectTextureUnit(GL_TEXTURE1_ARB), S_OK);
    EXPECT_EQ(service_->BindTexture(id), S_OK);
    EXPECT_EQ(service_->BindTexture(id + 1), E_FAIL);
    EXPECT_EQ(service_->UnbindTexture(), S_OK);
    EXPECT_EQ(service_->ResetTextureUnit(), S_OK);
    EXPECT_THAT(gl_.log, ElementsAre("glActiveTextureARB(GL_TEXTURE1_ARB)", "glEnable(GL_TEXTURE_2D)",
                                     "glBindTexture(GL_TEXTURE_2D, 1)", "glDisable(GL_TEXTURE_2D)",
                                     "glActiveTextureARB(GL_TEXTURE1_ARB)", "glDisable(GL_TEXTURE_2D)",
                                     "glActiveTextureARB(GL_TEXTURE0_ARB)", "glDisable(GL_TEXTURE_2D)"));
}

TEST_F(TextureServiceTest, ReadsTheBoundTextureBackIntoABufferOfTheCallers)
{
    ULONG id = 0;
    ASSERT_EQ(Create("e", "n", &id), S_OK);
    LONG width = 0;
    LONG height = 0;
    LONG bits = 0;
    void* pixels = nullptr;
    EXPECT_EQ(service_->GetTextureData(id, &width, &height, &bits, 0, &pixels), S_OK);
    EXPECT_EQ(std::tie(width, height, bits), std::make_tuple(2, 1, 24));
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(std::memcmp(pixels, pixels_, 6), 0);
    CoTaskMemFree(pixels);

    EXPECT_EQ(service_->GetTextureData(id, &width, &height, nullptr, 0, nullptr), S_OK);
    EXPECT_EQ(service_->GetTextureData(id + 1, &width, &height, &bits, 0, &pixels), E_FAIL);
    EXPECT_EQ(std::tie(width, height, bits), std::make_tuple(0, 0, 0));
    EXPECT_EQ(pixels, nullptr);
}

}  // namespace

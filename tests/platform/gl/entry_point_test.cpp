#include "platform/gl/entry_point.h"
#include "support/recording_gl.h"

#include <gtest/gtest.h>

namespace {

using tessara::test::RecordingGl;

class EntryPoint : public testing::Test {
protected:
    EntryPoint() { RecordingGl::Reset(); }
};

TEST_F(EntryPoint, AnExtensionsEntryPointIsGivenWhereTheContextHasTheExtension)
{
    const auto active = reinterpret_cast<ActiveTextureProc>(wglGetProcAddress("glActiveTextureARB"));
    ASSERT_NE(active, nullptr);
    active(GL_TEXTURE1_ARB);
    EXPECT_EQ(RecordingGl::Get().log.back(), "glActiveTextureARB(GL_TEXTURE1_ARB)");
    EXPECT_NE(wglGetProcAddress("glMultiTexCoord2fARB"), nullptr);
    EXPECT_NE(wglGetProcAddress("glClientActiveTextureARB"), nullptr);
}

TEST_F(EntryPoint, AnExtensionThatTheContextLacksGivesNullAlthoughTheLibraryAnswers)
{
    // The start of a longer word isn't the word.
    for (const char* extensions : {"", "GL_ARB_multitexture_more", "XGL_ARB_multitexture GL_ARB_depth_texture"}) {
        RecordingGl::Get().extensions = extensions;
        EXPECT_EQ(wglGetProcAddress("glActiveTextureARB"), nullptr) << extensions;
    }
    RecordingGl::Get().extensions = nullptr;
    EXPECT_EQ(wglGetProcAddress("glActiveTextureARB"), nullptr);
}

TEST_F(EntryPoint, AnEntryPointOfALaterVersionIsGivenFromThatVersionOn)
{
    RecordingGl::Get().version = "2.1 recording";
    EXPECT_EQ(wglGetProcAddress("glGenerateMipmap"), nullptr);
    RecordingGl::Get().version = "4.5 (Compatibility Profile)";
    EXPECT_NE(wglGetProcAddress("glGenerateMipmap"), nullptr);
}

TEST_F(EntryPoint, NamesThatAreNoEntryPointsGiveNull)
{
    for (const char* name : {"glNoSuchThingARB", "glNoSuchThing", "", "malloc", "glob", "wglNoSuchThing"})
        EXPECT_EQ(wglGetProcAddress(name), nullptr) << name;
    EXPECT_EQ(wglGetProcAddress(nullptr), nullptr);
    EXPECT_NE(wglGetProcAddress("glBlendFunc"), nullptr);
}

TEST_F(EntryPoint, WithoutAContextOnlyTheExtensionStringsNameHasAnAnswer)
{
    RecordingGl::Get().hasContext = false;
    EXPECT_EQ(wglGetProcAddress("glActiveTextureARB"), nullptr);
    EXPECT_EQ(wglGetProcAddress("glBlendFunc"), nullptr);
    const PROC strings = wglGetProcAddress("wglGetExtensionsStringARB");
    ASSERT_NE(strings, nullptr);
    EXPECT_STREQ(reinterpret_cast<const char* (*)(void*)>(strings)(nullptr), "WGL_ARB_extensions_string");
}

}  // namespace

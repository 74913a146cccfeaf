#include "platform/com/bstr.h"

#include <gtest/gtest.h>

namespace {

using namespace tessara;

/// Text in the characters of a BSTR.
std::basic_string<OLECHAR> Units(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

TEST(Bstr, LengthInBytesStandsBeforeTheTextAndAZeroBehindIt)
{
    const BSTR text = SysAllocString(Units(u"abc").c_str());
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<const char*>(text) - 4, 4);
    EXPECT_EQ(bytes, 6u);
    EXPECT_EQ(SysStringLen(text), 3u);
    EXPECT_EQ(text[3], 0);
    SysFreeString(text);
    const BSTR zero = SysAllocStringLen(Units({u"a\0b", 3}).data(), 3);
    EXPECT_EQ(SysStringLen(zero), 3u);
    EXPECT_EQ(NarrowText(zero), std::string("a\0b", 3));
    SysFreeString(zero);
    for (const unsigned length : {0x7FFFFFFFu, 0xFFFFFFFFu})
        EXPECT_EQ(SysAllocStringLen(nullptr, length), nullptr) << "too long";
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(NarrowText(nullptr), "");
}

TEST(Bstr, Utf8RoundTripsOnAllPlanes)
{
    for (const char* text : {"", "plain", "Höhe – 高さ", "\xF0\x9F\x8F\x94 summit"})
        EXPECT_EQ(BstrHolder(text).Narrow(), text);
}

TEST(Bstr, DamagedTextBecomesReplacementCharacters)
{
    EXPECT_EQ(WideText("a\xFFz"), Units(u"a\uFFFDz"));
    EXPECT_EQ(WideText("\xE2\x82"), Units(u"\uFFFD\uFFFD"));
    EXPECT_EQ(WideText("\xC0\xAF"), Units(u"\uFFFD\uFFFD"));  // overlong
    EXPECT_EQ(WideText("\xED\xA0\x80")[0], u'\uFFFD');        // a surrogate in UTF-8
    const OLECHAR lone[] = {'x', 0xD800, 'y', 0};
    const BSTR text = SysAllocString(lone);
    EXPECT_EQ(NarrowText(text), "x\xEF\xBF\xBDy");
    SysFreeString(text);
}

TEST(Variant, ClearFreesWhatItOwnsAndLeavesItEmpty)
{
    VARIANT variant;
    VariantInit(&variant);
    EXPECT_EQ(variant.vt, VT_EMPTY);
    variant.vt = VT_BSTR;
    variant.bstrVal = MakeBstr("text");
    EXPECT_EQ(VariantClear(&variant), S_OK);
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_EQ(variant.bstrVal, nullptr);
}

}  // namespace

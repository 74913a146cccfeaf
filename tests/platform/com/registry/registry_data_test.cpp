#include "platform/com/guid_text.h"
#include "platform/com/registry/registry_data.h"
#include "platform/com/registry/registry_error.h"
#include "platform/com/registry/registry_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

namespace {

using namespace tessara;
using namespace testing;

TEST(GuidText, GoesThereAndBack)
{
    constexpr GUID id = {0xC10E608B, 0xED92, 0x4A87, {0x94, 0x1F, 0x01, 0x17, 0x85, 0x49, 0x4F, 0x43}};
    EXPECT_EQ(GuidText(id), "{C10E608B-ED92-4A87-941F-011785494F43}");
    EXPECT_EQ(ParseGuid("{C10E608B-ED92-4A87-941F-011785494F43}"), id);
    EXPECT_EQ(ParseGuid("{c10e608b-ed92-4a87-941f-011785494f43}"), id);
    for (const char* bad : {"", "{}", "C10E608B-ED92-4A87-941F-011785494F43", "{C10E608B-ED92-4A87-941F-011785494F4}",
                            "{C10E608B-ED92-4A87-941F-011785494F43} ", "{C10E608BXED92-4A87-941F-011785494F43}",
                            "{+10E608B-ED92-4A87-941F-011785494F43}"})
        EXPECT_EQ(ParseGuid(bad), std::nullopt) << bad;
}

TEST(RegistryData, FindsNamesInAnyCaseAndKeepsTheirSpelling)
{
    RegistryData data;
    data.SetValue("Tools\\Hammer", "Weight", "2");
    data.SetValue("TOOLS\\hammer\\Head", "", "steel");
    data.SetValue("tools\\HAMMER", "weight", "3");
    EXPECT_EQ(*data.FindValue("TOOLS\\HAMMER", "WEIGHT"), "3");
    EXPECT_EQ(*data.FindValue("Tools\\Hammer\\Head"), "steel");
    EXPECT_EQ(data.FindValue("Tools\\Hammer"), nullptr);
    EXPECT_EQ(data.FindValue("Tools\\Saw", "Weight"), nullptr);
    EXPECT_THAT(data.Subkeys("tools"), ElementsAre("Hammer"));
    EXPECT_EQ(data.CreateKey("tools\\hammer\\head\\Edge"), "Tools\\Hammer\\Head\\Edge");
}

TEST(RegistryData, AKeyGoesWithAllThatIsBelowItAndNothingElse)
{
    RegistryData data;
    for (const char* path : {"A", "A\\B\\C", "A\\B D", "A B", "A.1", "AB", "A\\Z"})
        data.CreateKey(path);
    EXPECT_THAT(data.Subkeys("A"), ElementsAre("B", "B D", "Z"));
    data.DeleteTree("A\\b");
    EXPECT_THAT(data.Subkeys("A"), ElementsAre("B D", "Z"));
    data.DeleteTree("A");
    data.DeleteTree("clsid");
    EXPECT_TRUE(data.HasKey("CLSID")) << "always there";
    EXPECT_FALSE(data.HasKey("A"));
    EXPECT_FALSE(data.HasKey("A\\Z"));
    for (const char* path : {"A B", "A.1", "AB", "CLSID"})
        EXPECT_TRUE(data.HasKey(path)) << path;
}

TEST(RegistryData, RefusesNamesThatCannotBeWritten)
{
    RegistryData data;
    for (const std::string& path :
         {std::string(), std::string("\\A"), std::string("A\\"), std::string("A\\\\B"), std::string("A\nB"),
          std::string(256, 'x'), std::string("A\0B", 3), std::string("A\x7f")})
        EXPECT_THROW(data.CreateKey(path), RegistryError) << path;
    EXPECT_THROW(data.SetValue("A", "line\nfeed", "x"), RegistryError);
    EXPECT_NO_THROW(data.CreateKey(std::string(255, 'x')));
}

RegistryData Sample()
{
    RegistryData data;
    data.SetValue("CLSID\\{1}", "", "quote \" backslash \\ bell \a line\nfeed \xC3\xA4 \xFF");
    data.SetValue("CLSID\\{1}\\InprocServer32", "", "/a path/with [brackets]=");
    data.SetValue("CLSID\\{1}\\InprocServer32", "Threading\"Model\\", std::string("zero \0.", 7));
    data.SetValue("odd ] key\\[x]", "", "");
    data.CreateKey("Empty");
    return data;
}

TEST(RegistryText, KeepsEveryByte)
{
    EXPECT_EQ(ReadRegistryText(WriteRegistryText(Sample()), "store"), Sample());
    EXPECT_EQ(ReadRegistryText(WriteRegistryText({}), "store"), RegistryData());
    // Stores of other versions are read: the form is fixed.
    RegistryData small;
    small.SetValue("CLSID\\{1}", "", "a \"b\"");
    small.SetValue("CLSID\\{1}", "x", "\t");
    EXPECT_EQ(WriteRegistryText(small), "Tessara class registry 1\n\n[CLSID]\n\n[CLSID\\{1}]\n@=\"a \\\"b\\\"\"\n"
                                        "\"x\"=\"\\x09\"\n\nend 209AB007\n");
}

std::string Refusal(const std::string& text)
{
    try {
        ReadRegistryText(text, "/some/store");
    } catch (const RegistryError& error) {
        EXPECT_EQ(error.Result(), REGDB_E_READREGDB);
        EXPECT_THAT(error.what(), HasSubstr("/some/store"));
        return error.what();
    }
    return {};
}

TEST(RegistryText, RefusesWhatWasCutShortOrChanged)
{
    const std::string whole = WriteRegistryText(Sample());
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(Refusal(whole.substr(0, length)), "") << length;
    for (std::size_t bit = 0; bit < 8 * whole.size(); ++bit) {
        std::string changed = whole;
        changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ 1 << bit % 8);
        EXPECT_NE(Refusal(changed), "") << bit;
    }
    EXPECT_NE(Refusal(whole + "\n"), "");
    EXPECT_THAT(Refusal("Tessara class registry 2\n"), HasSubstr("has a form"));
    EXPECT_THAT(Refusal("#!/bin/sh\n"), HasSubstr("doesn't begin"));
    EXPECT_THAT(Refusal(whole.substr(0, whole.size() - 5)), HasSubstr("end is missing"));
}

/// Lines in a sound frame. The checksum is worked out in another way than the reader's: with a table.
std::string Framed(const std::string& lines)
{
    std::uint32_t table[256];
    for (std::uint32_t i = 0; i < 256; ++i) {
        table[i] = i;
        for (int bit = 0; bit < 8; ++bit)
            table[i] = table[i] & 1 ? table[i] >> 1 ^ 0xEDB88320 : table[i] >> 1;
    }
    const std::string text = "Tessara class registry 1\n" + lines;
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char c : text)
        sum = table[(sum ^ static_cast<unsigned char>(c)) & 0xFF] ^ sum >> 8;
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08X", ~sum);
    return text + "end " + digits + "\n";
}

TEST(RegistryText, NamesTheLineThatIsNoKeyAndNoValue)
{
    EXPECT_EQ(Refusal(Framed("[A]\n@=\"x\"\n")), "");
    for (const char* bad : {"[A]\nx=\"1\"\n", "[A]\n\"x\"=1\n", "[A]\n\"x\"\n", "[A]\n\"x\"=\"1\n", "[A]\n@=\"1\" \n",
                            "[A]\n@=\"\\n\"\n", "[A]\n@=\"\\x0g\"\n", "[A]\n@=\"\\x0\n", "[A]\n@=\"\\", "[A]\n@\n",
                            "[A]\n=\"1\"\n", "[A]\n[B\n", "[A]\n[]\n", "[A]\n[B\\\\C]\n", "[A]\n\"x"})
        EXPECT_THAT(Refusal(Framed(bad)), HasSubstr("line 3")) << bad;
    EXPECT_THAT(Refusal(Framed("@=\"no key\"\n")), HasSubstr("line 2"));
    std::string deep = "[A";
    for (int i = 0; i < 20000; ++i)
        deep += "\\A";
    EXPECT_THAT(Refusal(Framed(deep + "]\n")), HasSubstr("more than 64 keys above it"));
    EXPECT_THAT(Refusal(Framed("[A]\n@=\"1\"\n@=\"2\"\n")), HasSubstr("line 4"));
}

}  // namespace

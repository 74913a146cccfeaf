#include "platform/com/registry/registry_data.h"
#include "platform/com/registry/registry_error.h"
#include "platform/com/registry/registry_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace tessara;
using namespace testing;

constexpr char kScript[] = R"(
HKCR
{
    My.Class = s 'it''s a class'
    {
        CLSID = s '{1}'
    }
    NoRemove CLSID
    {
        ForceRemove {1} = s Plain
        {
            InprocServer32 = s '%MODULE%' { val ThreadingModel = s 'Apartment' }
            'A key { in } quotes' = s '100%% %MODULE%!'
        }
    }
})";

RegistryData Registered(RegistryData data = {})
{
    RunRegistryScript(kScript, ScriptAction::Register, "/x's/y %z", data);
    return data;
}

RegistryData Unregistered(RegistryData data)
{
    RunRegistryScript(kScript, ScriptAction::Unregister, "", data);
    return data;
}

TEST(RegistryScript, MakesItsKeysAndValues)
{
    const RegistryData data = Registered();
    EXPECT_EQ(data.All().size(), 6u);
    EXPECT_EQ(*data.FindValue("My.Class"), "it's a class");
    EXPECT_EQ(*data.FindValue("My.Class\\CLSID"), "{1}");
    EXPECT_EQ(data.FindValue("CLSID"), nullptr);
    EXPECT_EQ(*data.FindValue("CLSID\\{1}"), "Plain");
    EXPECT_EQ(*data.FindValue("CLSID\\{1}\\InprocServer32"), "/x's/y %z");
    EXPECT_EQ(*data.FindValue("CLSID\\{1}\\InprocServer32", "ThreadingModel"), "Apartment");
    EXPECT_EQ(*data.FindValue("CLSID\\{1}\\A key { in } quotes"), "100% /x's/y %z!");
}

TEST(RegistryScript, ForceRemoveClearsBeforeItWrites)
{
    RegistryData data = Registered();
    data.SetValue("CLSID\\{1}\\Old\\Older", "", "left over");
    data.SetValue("CLSID\\{1}", "Extra", "left over");
    data.SetValue("My.Class\\Foreign", "", "stays");
    const RegistryData again = Registered(data);
    EXPECT_FALSE(again.HasKey("CLSID\\{1}\\Old"));
    EXPECT_EQ(again.FindValue("CLSID\\{1}", "Extra"), nullptr);
    EXPECT_TRUE(again.HasKey("My.Class\\Foreign"));
}

TEST(RegistryScript, UnregistersByTheRuleOfEachKey)
{
    EXPECT_EQ(Unregistered(Registered()), RegistryData());
    EXPECT_EQ(Unregistered({}), RegistryData());  // on a clean machine

    RegistryData data = Registered();
    data.SetValue("CLSID\\{1}\\Foreign", "", "goes with its parent");
    data.SetValue("CLSID\\{2}", "", "another class");
    data.SetValue("My.Class\\Foreign", "", "another maker's");
    const RegistryData after = Unregistered(data);
    EXPECT_THAT(after.Subkeys("CLSID"), ElementsAre("{2}"));
    EXPECT_THAT(after.Subkeys("My.Class"), ElementsAre("Foreign"));
    EXPECT_EQ(after.FindValue("My.Class"), nullptr);
}

TEST(RegistryScript, SaysInWhichLineItIsWrong)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "(line 1)"},
        {"HKLM\n{\n}", "HKCR"},
        {"'HKCR'\n{\n}", "HKCR"},
        {"HKCR", "brace"},
        {"HKCR\n{\n  A = s 'x'\n", "(line 4)"},
        {"HKCR\n{\n  A = s 'x\n'\n}", "quote without an end (line 3)"},
        {"HKCR\n{\n  A = d '1'\n}", "no string (line 3)"},
        {"HKCR\n{\n  A = s\n}", "(line 4)"},
        {"HKCR\n{\n  = s 'x'\n}", "without a name (line 3)"},
        {"HKCR\n{\n  A { val = s 'x' }\n}", "(line 3)"},
        {"HKCR\n{\n  A { val B }\n}", "(line 3)"},
        {"HKCR\n{\n  A = s '%PATH%'\n}", "%MODULE%"},
        {"HKCR\n{\n  A = s '50%'\n}", "%MODULE%"},
        {"HKCR\n{\n}\n}", "behind its end"},
    };
    for (const auto& [script, words] : cases) {
        RegistryData data;
        try {
            RunRegistryScript(script, ScriptAction::Register, "/m", data);
            ADD_FAILURE() << script;
        } catch (const RegistryError& error) {
            EXPECT_EQ(error.Result(), E_FAIL);
            EXPECT_THAT(error.what(), HasSubstr(words)) << script;
        }
    }
    std::string deep = "HKCR {";
    for (int i = 0; i < 100000; ++i)
        deep += " k {";
    RegistryData data;
    EXPECT_THROW(RunRegistryScript(deep, ScriptAction::Register, "/m", data), RegistryError);
    EXPECT_THROW(RunRegistryScript("HKCR { 'a\\' = s 'x' }", ScriptAction::Register, "/m", data), RegistryError);
}

}  // namespace

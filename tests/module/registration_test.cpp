// A host that knows the class id and nothing else: the module enters itself into the registry of classes, and is found
// there.

#include "platform/com/class_registry.h"
#include "platform/com/com_ptr.h"
#include "platform/com/module_class.h"
#include "platform/com/module_resource.h"
#include "platform/com/module_server.h"
#include "platform/com/registry/registry_store.h"
#include "platform/com/version_record.h"
#include "support/message_capture.h"
#include "support/registry_sandbox.h"
#include "surface/itessara.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace tessara;
using namespace tessara::test;
using namespace testing;
namespace fs = std::filesystem;

constexpr char kModule[] = TESSARA_MODULE_PATH;
constexpr char kClassId[] = "{C10E608B-ED92-4A87-941F-011785494F43}";
constexpr tessara::TypeLibraryId kLibrary = {LIBID_TESSARALib, 1, 0, 0x409, nullptr};

RegistryData Stored(RegistryScope scope = RegistryScope::User)
{
    return tessara::ReadRegistryStore(tessara::WritableRegistryStore(scope));
}

/// What a registration of the module leaves in an empty store.
RegistryData Expected(const std::string& module = kModule)
{
    RegistryData data;
    const std::string clsid = std::string("CLSID\\") + kClassId;
    data.SetValue("Tessara.CoTessara.1", "", "CoTessara Class");
    data.SetValue("Tessara.CoTessara.1\\CLSID", "", kClassId);
    data.SetValue("Tessara.CoTessara", "", "CoTessara Class");
    data.SetValue("Tessara.CoTessara\\CLSID", "", kClassId);
    data.SetValue("Tessara.CoTessara\\CurVer", "", "Tessara.CoTessara.1");
    data.SetValue(clsid, "", "CoTessara Class");
    data.SetValue(clsid + "\\ProgID", "", "Tessara.CoTessara.1");
    data.SetValue(clsid + "\\VersionIndependentProgID", "", "Tessara.CoTessara");
    data.SetValue(clsid + "\\InprocServer32", "", module);
    data.SetValue(clsid + "\\InprocServer32", "ThreadingModel", "Apartment");
    data.SetValue(clsid + "\\TypeLib", "", "{B1EBF9BA-3A62-4193-9925-81A94A007E87}");
    const std::string library = "TypeLib\\{B1EBF9BA-3A62-4193-9925-81A94A007E87}\\1.0";
    data.SetValue(library, "", "Tessara 1.0 Type Library");
    data.SetValue(library + "\\409\\linux", "", module);
    data.SetValue(library + "\\FLAGS", "", "0");
    data.SetValue(library + "\\HELPDIR", "", module.substr(0, module.rfind('/')));
    return data;
}

/// What is left when the module goes: no key that wasn't always there, but for the one that all type libraries share.
RegistryData ExpectedAfterwards()
{
    RegistryData data;
    data.CreateKey("TypeLib");
    return data;
}

HRESULT Create(ComPtr<ITessara>& surface)
{
    return CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, surface.OutVoid());
}

class Registration : public testing::Test {
protected:
    ~Registration() override { CoFreeUnusedLibraries(); }

    /// A file with the module's bytes, some of them others.
    std::string CopyOfModule(const std::string& name, const std::string& from = {}, const std::string& to = {}) const
    {
        std::string bytes = tessara::test::ReadBytes(kModule);
        for (std::size_t at = 0; !from.empty() && (at = bytes.find(from, at)) != std::string::npos;)
            bytes.replace(at, from.size(), to);
        return sandbox.Write(sandbox.Path(name), bytes);
    }

    RegistrySandbox sandbox;
    MessageCapture messages;
};

TEST_F(Registration, TwiceLeavesOneSetOfEntries)
{
    ASSERT_EQ(RegisterServer(CopyOfModule("old/Tessara.so")), S_OK);
    ASSERT_EQ(RegisterServer(kModule), S_OK);
    EXPECT_EQ(Stored().All(), Expected().All());
    EXPECT_THAT(messages.lines, IsEmpty());
}

TEST_F(Registration, GoesByTheRulesOfItsKeys)
{
    EXPECT_EQ(UnregisterServer(kModule), S_OK);
    EXPECT_FALSE(fs::exists(sandbox.Path("user"))) << "nothing to take away, and nothing made";
    RegisterServer(kModule);
    EXPECT_EQ(UnregisterServer(kModule), S_OK);
    EXPECT_EQ(Stored(), ExpectedAfterwards());
    EXPECT_TRUE(Stored().HasKey("CLSID"));
    EXPECT_EQ(UnregisterServer(kModule), S_OK);

    RegistryData others = ExpectedAfterwards();
    others.SetValue("CLSID\\{11111111-1111-1111-1111-111111111111}", "", "Another class");
    others.SetValue("TypeLib\\{B1EBF9BA-3A62-4193-9925-81A94A007E87}\\2.0\\409\\linux", "", "/newer");
    tessara::RegistryWriter(tessara::WritableRegistryStore(RegistryScope::User)).Replace(others);
    RegisterServer(kModule);
    EXPECT_EQ(UnregisterServer(kModule), S_OK);
    EXPECT_EQ(Stored(), others);
}

TEST_F(Registration, GivesTheClassAName)
{
    CLSID found = {};
    EXPECT_EQ(CLSIDFromProgID(u"Tessara.CoTessara", &found), CO_E_CLASSSTRING);
    RegisterServer(kModule);
    for (const char16_t* name : {u"Tessara.CoTessara", u"Tessara.CoTessara.1", u"tessara.COTESSARA"}) {
        EXPECT_EQ(CLSIDFromProgID(name, &found), S_OK);
        EXPECT_EQ(found, CLSID_CoTessara);
    }
    EXPECT_EQ(CLSIDFromProgID(u"Tessara", &found), CO_E_CLASSSTRING);
    EXPECT_EQ(found, CLSID{});
    EXPECT_EQ(CLSIDFromProgID(nullptr, &found), E_POINTER);
}

TEST_F(Registration, TheUsersComesBeforeTheMachines)
{
    const std::string machines = CopyOfModule("machine.so"), users = CopyOfModule("user.so");
    const RegistryScope before = tessara::SetRegistrationScope(RegistryScope::System);
    RegisterServer(machines);
    std::string found;
    EXPECT_EQ(tessara::FindRegisteredModule(CLSID_CoTessara, found), S_OK);
    EXPECT_EQ(found, machines);
    tessara::SetRegistrationScope(before);
    RegisterServer(users);
    EXPECT_EQ(tessara::FindRegisteredModule(CLSID_CoTessara, found), S_OK);
    EXPECT_EQ(found, users);
    EXPECT_EQ(Stored(RegistryScope::System), Expected(machines));

    const auto content = tessara::ListRegisteredClasses();
    ASSERT_EQ(content.classes.size(), 2u);
    EXPECT_EQ(content.classes[0].modulePath, users);
    EXPECT_EQ(content.classes[0].progId, "Tessara.CoTessara.1");
    EXPECT_EQ(content.classes[0].threadingModel, "Apartment");
    EXPECT_FALSE(content.classes[0].hidden);
    EXPECT_EQ(content.classes[1].store, sandbox.MachineStore());
    EXPECT_TRUE(content.classes[1].hidden);
    EXPECT_THAT(content.faults, IsEmpty());
}

TEST_F(Registration, ADamagedStoreIsReportedAndKept)
{
    sandbox.Write(sandbox.UserStore(), "not a registry\n");
    ComPtr<ITessara> surface;
    EXPECT_EQ(RegisterServer(kModule), REGDB_E_READREGDB);
    EXPECT_EQ(UnregisterServer(kModule), S_OK);
    EXPECT_EQ(Create(surface), REGDB_E_READREGDB);
    EXPECT_THAT(messages.lines, testing::AllOf(testing::SizeIs(3), testing::Each(HasSubstr(sandbox.UserStore()))));
    EXPECT_EQ(tessara::test::ReadBytes(sandbox.UserStore()), "not a registry\n");
    EXPECT_THAT(tessara::ListRegisteredClasses().faults, ElementsAre(HasSubstr(sandbox.UserStore())));
}

TEST_F(Registration, AModuleThatIsGoneOrIsNoneHasAResultAndALine)
{
    const std::string path = CopyOfModule("Tessara.so");
    RegisterServer(path);
    ComPtr<ITessara> surface;
    fs::remove(path);
    EXPECT_EQ(Create(surface), CO_E_DLLNOTFOUND);
    sandbox.Write(path, "text");
    EXPECT_EQ(Create(surface), CO_E_ERRORINDLL);
    fs::copy_file(TESSARA_PLATFORM_PATH, path, fs::copy_options::overwrite_existing);
    EXPECT_EQ(Create(surface), CO_E_ERRORINDLL);
    EXPECT_THAT(messages.lines, testing::AllOf(testing::SizeIs(3), testing::Each(HasSubstr(path))));
    EXPECT_EQ(RegisterServer(path), CO_E_ERRORINDLL);
    EXPECT_EQ(RegisterServer(sandbox.Path("missing.so")), CO_E_DLLNOTFOUND);

    RegistryData relative = Stored();
    relative.SetValue(std::string("CLSID\\") + kClassId + "\\InprocServer32", "", "Tessara.so");
    tessara::RegistryWriter(tessara::WritableRegistryStore(RegistryScope::User)).Replace(relative);
    EXPECT_EQ(Create(surface), REGDB_E_INVALIDVALUE);
}

TEST_F(Registration, ThatFailsReportsItsFirstFailureAndEntersNothing)
{
    const std::pair<const char*, const char*> noDescription = {".tessara.TYPELIB.1", ".tessara.TYPELIB.2"};
    const std::pair<const char*, const char*> badScript = {"= s '%MODULE%'", "= s '%FOLDER%'"};
    std::string path = CopyOfModule("Tessara.so", noDescription.first, noDescription.second);
    EXPECT_EQ(RegisterServer(path), TYPE_E_CANTLOADLIBRARY);
    EXPECT_FALSE(fs::exists(sandbox.UserStore()));
    EXPECT_THAT(messages.lines, ElementsAre(HasSubstr(path)));

    RegisterServer(kModule);
    path = CopyOfModule("Tessara.so", badScript.first, badScript.second);
    EXPECT_EQ(RegisterServer(path), E_FAIL);
    std::string bytes = tessara::test::ReadBytes(path);
    for (std::size_t at = 0; (at = bytes.find(noDescription.first, at)) != std::string::npos;)
        bytes.replace(at, std::strlen(noDescription.first), noDescription.second);
    EXPECT_EQ(RegisterServer(sandbox.Write("both/Tessara.so", bytes)), E_FAIL);  // the script comes first
    EXPECT_EQ(Stored(), Expected());
}

TEST_F(Registration, EntersTheAbsolutePathOfAModuleThatWasLoadedByARelativeOne)
{
    const std::string path = CopyOfModule("folder with 'quotes' %/Tessara.so");
    const fs::path before = fs::current_path();
    fs::current_path(fs::path(path).parent_path());
    void* module = dlopen("./Tessara.so", RTLD_NOW | RTLD_LOCAL);
    fs::current_path(before);
    ASSERT_NE(module, nullptr) << dlerror();
    const auto registerServer = reinterpret_cast<HRESULT (*)()>(dlsym(module, "DllRegisterServer"));
    EXPECT_EQ(registerServer(), S_OK);
    dlclose(module);
    EXPECT_EQ(Stored(), Expected(path));
    EXPECT_EQ(tessara::ProbeServer(path, CLSID_CoTessara), S_OK);
    EXPECT_EQ(tessara::ProbeServer(path, LIBID_TESSARALib), CLASS_E_CLASSNOTAVAILABLE);
}

TEST_F(Registration, MakesTheTypeDescriptionKnown)
{
    std::string text;
    EXPECT_EQ(tessara::FindTypeDescription(kLibrary, text), TYPE_E_LIBNOTREGISTERED);
    RegisterServer(kModule);
    ASSERT_EQ(tessara::FindTypeDescription(kLibrary, text), S_OK);
    for (const char* part :
         {"\"library\": \"TESSARALib\"", "\"id\": \"{B1EBF9BA-3A62-4193-9925-81A94A007E87}\"", "\"version\": \"1.0\"",
          "\"locale\": 1033", "Tessara 1.0 Type Library", "CoTessara Class", "ITessara Interface",
          "{\"name\": \"TESSARA_RENDER_MODE_REALTIME\", \"value\": 2}", "method CreateSurface",
          "\"slot\": 56, \"name\": \"CreateTextureSurface3D\"",
          "{\"name\": \"t\", \"type\": \"float\", \"pointers\": 1, \"elements\": 3, \"in\": false, \"out\": true}"})
        EXPECT_THAT(text, HasSubstr(part));
    EXPECT_THAT(text, testing::Not(HasSubstr("\"slot\": 57")));
}

TEST(ModuleFile, CarriesItsVersionAndItsName)
{
    const auto record = tessara::ReadVersionRecord(kModule);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->fileVersion, (tessara::VersionRecord::Version{6, 5, 0, 0}));
    EXPECT_EQ(record->productVersion, record->fileVersion);
    EXPECT_EQ(record->fileOs, 4u);
    EXPECT_EQ(record->fileType, 2u);
    EXPECT_EQ(record->language, 0x409u);
    EXPECT_EQ(record->codePage, 0x4B0u);
    EXPECT_EQ(record->strings.at("ProductVersion"), "6, 5, 0, 0");
    EXPECT_EQ(record->strings.at("FileVersion") + record->strings.at("OLESelfRegister"), "6, 5, 0, 0");
    EXPECT_EQ(tessara::ReadModuleResource(kModule, "STRING", 100), "Tessara");
    EXPECT_TRUE(tessara::ReadModuleResource(kModule, "REGISTRY", 102));
}

}  // namespace

// The module as the system sees it: registered with regsvr32, found by its class id, read by the system's own loader of
// type libraries.

#include "host/basic_host.h"
#include "host/camera.h"
#include "host/elevation_matrix.h"
#include "platform/com/bstr.h"
#include "platform/com/com_object.h"
#include "platform/com/registry/registry_tree_win32.h"
#include "platform/gl/offscreen_context.h"
#include "platform/system/wide_text_win32.h"
#include "surface/itessara.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace tessara::test {

namespace {

using namespace testing;

constexpr char kClass[] = "{C10E608B-ED92-4A87-941F-011785494F43}";
const GUID kLibrary = {0xB1EBF9BA, 0x3A62, 0x4193, {0x99, 0x25, 0x81, 0xA9, 0x4A, 0x00, 0x7E, 0x87}};

std::wstring ModulePath()
{
    return ToWide("Z:" TESSARA_MODULE_PATH);
}

/// Runs a program of the system's. \return its exit code
DWORD Run(std::wstring command)
{
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
        return ~0u;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = ~0u;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return code;
}

DWORD RegisterServer()
{
    return Run(L"regsvr32.exe /s " + ModulePath());
}

DWORD UnregisterServer()
{
    return Run(L"regsvr32.exe /s /u " + ModulePath());
}

/// What the registry has of the component, a line a value.
std::vector<std::string> Entries(HKEY root = HKEY_LOCAL_MACHINE)
{
    RegistryData places;
    for (const std::string& key :
         {std::string("CLSID\\") + kClass, std::string("Tessara.CoTessara"), std::string("Tessara.CoTessara.1"),
          std::string("TypeLib\\{B1EBF9BA-3A62-4193-9925-81A94A007E87}")})
        places.SetValue(key, {}, "?");
    std::vector<std::string> lines;
    const RegistryData found = RegistryTree(root).Read(places);
    for (const auto& [path, values] : found.All()) {
        for (const auto& [name, text] : values)
            if (path != "CLSID")
                lines.push_back(path + " [" + name + "] " + text);
    }
    return lines;
}

class Module : public testing::Test {
protected:
    Module() { UnregisterServer(); }
    ~Module() override { UnregisterServer(); }
};

TEST_F(Module, RegistersTheEntriesOfItsClassAndTakesThemOutAgain)
{
    const std::string key = std::string("CLSID\\") + kClass;
    const std::string library = "TypeLib\\{B1EBF9BA-3A62-4193-9925-81A94A007E87}\\1.0";
    EXPECT_THAT(Entries(), IsEmpty());
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(RegisterServer(), 0u);
        EXPECT_THAT(Entries(),
                    UnorderedElementsAre(
                        key + " [] CoTessara Class",
                        AllOf(StartsWith(key + "\\InprocServer32 [] Z:\\"), EndsWith("DLL")),
                        key + "\\InprocServer32 [ThreadingModel] Apartment", key + "\\ProgID [] Tessara.CoTessara.1",
                        key + "\\TypeLib [] {B1EBF9BA-3A62-4193-9925-81A94A007E87}",
                        key + "\\VersionIndependentProgID [] Tessara.CoTessara", "Tessara.CoTessara [] CoTessara Class",
                        std::string("Tessara.CoTessara\\CLSID [] ") + kClass,
                        "Tessara.CoTessara\\CurVer [] Tessara.CoTessara.1", "Tessara.CoTessara.1 [] CoTessara Class",
                        std::string("Tessara.CoTessara.1\\CLSID [] ") + kClass,
                        library + " [] Tessara 1.0 Type Library", StartsWith(library + "\\409\\win64 [] Z:\\"),
                        StartsWith(library + "\\FLAGS [] "), StartsWith(library + "\\HELPDIR [] ")));
    }
    EXPECT_EQ(UnregisterServer(), 0u);
    EXPECT_THAT(Entries(), IsEmpty());
    EXPECT_EQ(UnregisterServer(), 0u);
}

TEST_F(Module, ARegistrationThatFailsHalfWayLeavesWhatWasThere)
{
    RegistryTree tree(HKEY_CURRENT_USER);
    RegistryData before, after;
    before.SetValue("Tessara.Half", {}, "old");
    before.SetValue("Tessara.Half\\Below", "name", "text");
    const RegistryData nothing;
    tree.Change(nothing, before);
    const RegistryData read = tree.Read(before);
    EXPECT_EQ(read.All().count("Tessara.Half\\Below"), 1u);
    after.SetValue("Tessara.Half", {}, "new");
    after.SetValue("Tessara.New", {}, "new");
    HKEY locked = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes\\Tessara.Z", 0, nullptr, REG_OPTION_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, &locked, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(locked);
    // Below a key that goes with the session nothing can be kept.
    after.SetValue("Tessara.Z\\Below", {}, "x");
    EXPECT_THROW(tree.Change(read, after), std::runtime_error);
    EXPECT_EQ(tree.Read(before), read);
    EXPECT_FALSE(tree.Read(after).HasKey("Tessara.New"));
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Classes\\Tessara.Half");
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Classes\\Tessara.Z");
}

TEST_F(Module, ServesItsClassPlainAndInAnAggregate)
{
    ComPtr<ITessara> terrain;
    EXPECT_EQ(
        CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, terrain.OutVoid()),
        REGDB_E_CLASSNOTREG);
    ASSERT_EQ(RegisterServer(), 0u);
    ASSERT_EQ(
        CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, terrain.OutVoid()),
        S_OK);
    CLSID named = {};
    EXPECT_EQ(CLSIDFromProgID(L"Tessara.CoTessara", &named), S_OK);
    EXPECT_TRUE(named == CLSID_CoTessara);

    class Outer final : public ComObject<IUnknown> {};
    const ComPtr<Outer> outer = MakeObject<Outer>();
    void* out = nullptr;
    EXPECT_EQ(CoCreateInstance(CLSID_CoTessara, outer.Get(), CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, &out),
              CLASS_E_NOAGGREGATION);
    ComPtr<IUnknown> inner;
    ASSERT_EQ(CoCreateInstance(CLSID_CoTessara, outer.Get(), CLSCTX_INPROC_SERVER, IID_IUnknown, inner.OutVoid()),
              S_OK);
    EXPECT_TRUE(inner.As<ITessara>());
}

TEST_F(Module, GoesWhenNothingOfItIsInUse)
{
    ASSERT_EQ(RegisterServer(), 0u);
    ComPtr<ITessara> terrain;
    ASSERT_EQ(
        CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, terrain.OutVoid()),
        S_OK);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_NE(GetModuleHandleW(L"Tessara.DLL"), nullptr);
    terrain = nullptr;
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"Tessara.DLL"), nullptr);
}

std::string Taken(BSTR text)
{
    BstrHolder holder;
    *holder.Out() = text;
    return holder.Narrow();
}

TEST_F(Module, ItsTypeLibraryReadsBackAsDescribed)
{
    ASSERT_EQ(RegisterServer(), 0u);
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadRegTypeLib(kLibrary, 1, 0, 0x409, library.Out()), S_OK);
    ASSERT_EQ(library->GetTypeInfoCount(), 3u);
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(library->GetTypeInfoOfGuid(InterfaceId<ITessara>, type.Out()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_INTERFACE);
    EXPECT_EQ(attributes->wTypeFlags & TYPEFLAG_FDISPATCHABLE, 0);
    ASSERT_EQ(attributes->cFuncs, 54);
    type->ReleaseTypeAttr(attributes);

    std::vector<std::string> names;
    std::vector<VARTYPE> defaults;
    for (UINT i = 0; i < 54; ++i) {
        FUNCDESC* function = nullptr;
        ASSERT_EQ(type->GetFuncDesc(i, &function), S_OK) << i;
        BSTR name = nullptr, help = nullptr;
        type->GetDocumentation(function->memid, &name, &help, nullptr, nullptr);
        names.push_back(Taken(name));
        EXPECT_EQ(Taken(help), "method " + (names.back() == "InitMatrix" ? "CreateSurface" : names.back()));
        EXPECT_EQ(function->oVft, static_cast<SHORT>((3 + i) * sizeof(void*))) << names.back();
        EXPECT_EQ(function->elemdescFunc.tdesc.vt, VT_HRESULT);
        EXPECT_EQ(function->funckind, FUNC_PUREVIRTUAL);
        for (SHORT argument = 0; argument < function->cParams; ++argument) {
            const PARAMDESC& description = function->lprgelemdescParam[argument].paramdesc;
            if (description.wParamFlags & PARAMFLAG_FHASDEFAULT)
                defaults.push_back(description.pparamdescex->varDefaultValue.vt);
        }
        type->ReleaseFuncDesc(function);
    }
    EXPECT_EQ(names.front(), "InitServer");
    EXPECT_EQ(names[25], "InitMatrix");
    EXPECT_EQ(names.back(), "CreateTextureSurface3D");
    EXPECT_THAT(defaults, ElementsAre(VT_BSTR, VT_I4, VT_I4, VT_I4, VT_I4));

    ComPtr<ITypeInfo> modes;
    EXPECT_EQ(library->GetTypeInfo(0, modes.Out()), S_OK);
    VARDESC* constant = nullptr;
    ASSERT_EQ(modes->GetVarDesc(1, &constant), S_OK);
    EXPECT_EQ(constant->lpvarValue->lVal, TESSARA_RENDER_MODE_REALTIME);
    modes->ReleaseVarDesc(constant);
}

TEST_F(Module, WritesTheTrianglesOfAFrameToAFileWithAUnicodeName)
{
    ASSERT_EQ(RegisterServer(), 0u);
    ComPtr<ITessara> terrain;
    ASSERT_EQ(
        CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, terrain.OutVoid()),
        S_OK);
    const OffscreenContext context;
    const auto matrix = MakeObject<ElevationMatrix>();
    const auto camera = MakeObject<Camera>();
    camera->SetPosition({8.0, 30.0, 8.0});
    camera->SetDirection({0.0, -1.0, 0.0});
    camera->SetUp({0.0, 0.0, -1.0});
    terrain->InitServer();
    terrain->SetKVO(MakeObject<BasicHost>(nullptr, nullptr).Get());
    terrain->SetMatrix(matrix.Get());
    terrain->SetSize(17, 17);
    ASSERT_EQ(terrain->InitMatrix(), S_OK);
    terrain->SetElevationScale(10.0f);
    terrain->SetLOD(50.0f);
    ASSERT_EQ(terrain->InitQuadTree(), S_OK);
    EXPECT_EQ(terrain->Draw3D(camera.Get()), S_OK);

    const auto path = std::filesystem::temp_directory_path() / L"Gelände 地形.txt";
    EXPECT_EQ(terrain->GetRenderedPolygons(BstrHolder(ToNarrow(path.wstring())).Get(), camera.Get()), S_OK);
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    file.close();
    EXPECT_THAT(text, StartsWith("16.000000\t0.050000\t2.000000\n"));
    EXPECT_THAT(text, Not(HasSubstr("\r")));
    EXPECT_TRUE(std::filesystem::remove(path));
    EXPECT_EQ(terrain->StopServer(), S_OK);
}

}  // namespace

}  // namespace tessara::test

#include "idl/header_check.h"
#include "idl/idl_source.h"
#include "idl/tokens.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using tessara::idl::CompareWithHeader;
using tessara::idl::Library;
using tessara::idl::ReadIdl;
using tessara::idl::ReadSource;
using tessara::idl::SourceError;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kIdl = TESSARA_SOURCE_DIR "/src/surface/tessara.idl";
const std::string kHeader = TESSARA_SOURCE_DIR "/src/surface/itessara.h";

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

TEST(TypeDescription, HoldsWhatHostsLookFor)
{
    const Library library = ReadIdl(ReadSource(kIdl), kIdl);
    EXPECT_EQ(library.name, "TESSARALib");
    EXPECT_EQ(library.help, "Tessara 1.0 Type Library");
    EXPECT_EQ(library.locale, 0x409u);
    ASSERT_EQ(library.interfaces.size(), 1u);
    const auto& interface = library.interfaces[0];
    EXPECT_EQ(interface.base, "IUnknown");
    EXPECT_EQ(interface.methods.size(), 54u);
    int optional = 0;
    for (const auto& method : interface.methods) {
        EXPECT_EQ(method.help, "method " + (method.name == "InitMatrix" ? "CreateSurface" : method.name));
        for (const auto& argument : method.arguments) {
            optional += argument.optional;
            EXPECT_EQ(argument.optional, argument.defaultValue.has_value());
        }
    }
    EXPECT_EQ(optional, 5);
    EXPECT_EQ(library.classes.at(0).help, "CoTessara Class");
    EXPECT_THAT(library.classes.at(0).interfaces, ElementsAre("ITessara"));
    EXPECT_EQ(library.enumerations.at(0).values.size(), 2u);
}

TEST(TypeDescription, EachDifferenceFromTheHeaderIsFound)
{
    const Library library = ReadIdl(ReadSource(kIdl), kIdl);
    const std::string header = ReadSource(kHeader);
    EXPECT_THAT(CompareWithHeader(library, header, kHeader), IsEmpty());
    const std::pair<const char*, const char*> changes[] = {
        {"SetLOD(float f)", "SetLOD(double f)"},
        {"SetLOD(float f)", "SetLOD(float lod)"},
        {"SetLOD(float f)", "SetLOD(float f, int more)"},
        {"SetLOD(float f)", "SetLOD()"},
        {"GetLOD(float* f)", "GetLOD(float** f)"},
        {"GetTranslation(float* t)", "GetTranslation(float t)"},
        {"UseColor(LONG b)", "UseColor(ULONG b)"},
        {"UINT face, UINT mode", "UINT mode, UINT face"},
        {"int minY, int minX", "int minX, int minY"},
        {"BSTR table, VARIANT region", "BSTR table, VARIANT* region"},
        {"HRESULT STDMETHODCALLTYPE Build3D()", "LONG STDMETHODCALLTYPE Build3D()"},
        {"virtual HRESULT STDMETHODCALLTYPE Build3D() = 0;", ""},
        {"TESSARA_RENDER_MODE_REALTIME = 2", "TESSARA_RENDER_MODE_REALTIME = 3"},
        {"0xE375A947", "0xE375A948"},
        {"0x01, 0x17, 0x85", "0x01, 0x18, 0x85"},
        {"0x99, 0x25, 0x81", "0x99, 0x26, 0x81"},
        {"0x6445", "0x6446"},
    };
    for (const auto& [from, to] : changes)
        EXPECT_THAT(CompareWithHeader(library, Replaced(header, from, to), "h"), testing::Not(IsEmpty())) << from;
    // Two methods of the same form that change places.
    std::string swapped = Replaced(header, "Build3D()", "Other()");
    swapped = Replaced(swapped, "InitServer()", "Build3D()");
    EXPECT_THAT(CompareWithHeader(library, Replaced(swapped, "Other()", "InitServer()"), "h"),
                ElementsAre("h: method 1 of ITessara is 'Build3D', in the description 'InitServer'",
                            "h: method 7 of ITessara is 'InitServer', in the description 'Build3D'"));
}

TEST(TypeDescription, AHeaderThatDeclaresInAnotherWayIsRefused)
{
    const Library library = ReadIdl(ReadSource(kIdl), kIdl);
    const std::string header = ReadSource(kHeader);
    for (const auto& [from, to] :
         {std::pair("struct ITessara : IUnknown", "struct ITessara : IDispatch"),
          std::pair("virtual HRESULT STDMETHODCALLTYPE StopServer", "void Extra(); virtual"),
          std::pair("StopServer() = 0", "StopServer() const = 0"), std::pair("CLSID_CoTessara", "CLSID_Other")})
        EXPECT_THROW(CompareWithHeader(library, Replaced(header, from, to), "h"), SourceError) << from;
}

TEST(IdlSource, SaysInWhichLineItIsWrong)
{
    const std::string idl = ReadSource(kIdl);
    const std::pair<const char*, const char*> changes[] = {
        {"[in] float f)", "float f)"},       {"interface ITessara;", "interface IOther;"},
        {"version(1.0)", "version(one)"},    {"uuid(C10E608B-ED92-4A87-941F-011785494F43),", ""},
        {"HRESULT Build3D();", "HRESULT;"},  {"coclass CoTessara\n    {", "coclass CoTessara"},
        {"library TESSARALib", "TESSARALib"}};
    for (const auto& [from, to] : changes) {
        try {
            ReadIdl(Replaced(idl, from, to), "t.idl");
            ADD_FAILURE() << from;
        } catch (const SourceError& error) {
            EXPECT_THAT(error.what(), HasSubstr("t.idl:"));
        }
    }
    for (std::size_t length = 0; length < idl.size() - 8; length += 97)
        EXPECT_THROW(ReadIdl(idl.substr(0, length), "t.idl"), SourceError) << length;
    EXPECT_THROW(ReadSource("/nowhere.idl"), SourceError);
}

}  // namespace

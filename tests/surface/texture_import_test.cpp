#include "platform/ui/cwnd.h"
#include "support/fake_image_file.h"
#include "support/scripted_window_system.h"
#include "surface/surface_fixture.h"

#include <algorithm>
#include <optional>

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ImportTest : public SurfaceTest {
protected:
    ImportTest() { Wire(); }

    HRESULT Import(IUnknown* parent = nullptr)
    {
        windows.files = {"/pictures/ground.png"};
        return surface->ImportTextureSource(parent);
    }

    LONG UsesSource()
    {
        LONG uses = -1;
        surface->IsUsingTextureSource(&uses);
        return uses;
    }

    ScriptedWindowSystem windows{log};
    ComPtr<FakeImageFile> image = MakeObject<FakeImageFile>(log);
    std::optional<ServedClass> served{std::in_place, CLSID_ImageFile, image.Get()};
};

TEST_F(ImportTest, ACancelledQuestionCallsNobody)
{
    surface->UseTextureSource(1);
    EXPECT_EQ(surface->ImportTextureSource(nullptr), E_FAIL);
    EXPECT_THAT(TakeLog(), ElementsAre("AskForFile()"));
    EXPECT_EQ(UsesSource(), 1);
}

TEST_F(ImportTest, TheQuestionIsForAnImageFile)
{
    CWnd parent;
    int window = 0;
    parent.Attach(&window);
    surface->ImportTextureSource(reinterpret_cast<IUnknown*>(&parent));
    EXPECT_EQ(windows.lastParent, &window);
    const FileQuestion& question = windows.lastQuestion;
    EXPECT_TRUE(question.open);
    EXPECT_TRUE(question.confirmOverwrite);
    EXPECT_EQ(question.extension, "*.*");
    EXPECT_EQ(question.name, "");
    std::string filters;
    for (const auto& filter : question.filters)
        filters += filter.name + "|" + filter.patterns + "|";
    EXPECT_EQ(filters, "JPEG Files (*.jpg)|*.jpg|Bitmap Files (*.bmp)|*.bmp|PNG Files (*.png)|*.png|"
                       "Adobe Photoshop Files (*.psd)|*.psd|Targa Files (*.tga)|*.tga|More Files... (*.*)|*.*|");
}

TEST_F(ImportTest, AnImageReplacesTheSourceTexture)
{
    EXPECT_EQ(Import(), S_OK);
    EXPECT_THAT(TakeLog(),
                ElementsAre("AskForFile()", "BeginWaitCursor()", "GetProgressWindow()", "SetProgressWindow(some)",
                            "SetTextureMgr(some)", "SetFileName(/pictures/ground.png)", "Open()", "GetWidth()",
                            "GetHeight()", "ReadPixels()", "GetPixels()", "GetBitsPerPixel()",
                            "SetElementName(TESSARA_SURFACE)", "SetTextureName(key1)", "CreateTexture(3, 2, 32)",
                            "UnbindTexture()", "Close()", "EndWaitCursor()"));
    EXPECT_EQ(UsesSource(), 1);
    EXPECT_EQ(textures->lastPixels, std::vector<BYTE>(image->pixel, std::end(image->pixel)));
    EXPECT_EQ(image->References(), 1u);
    EXPECT_EQ(progress->References(), 1u);
    EXPECT_EQ(windows.waiting, 0);

    EXPECT_EQ(Import(), S_OK);
    const CallLog calls = TakeLog();
    const auto released = std::find(calls.begin(), calls.end(), "ReleaseTexture(100)");
    EXPECT_EQ(*(released + 3), "CreateTexture(3, 2, 32)") << "the old texture goes first";
    surface->ActivateSourceTexture();
    EXPECT_THAT(TakeLog(), testing::Contains("BindTexture(101)"));
}

TEST_F(ImportTest, AFileThatCannotBeReadIsReportedAndKeepsTheSlot)
{
    Import();
    surface->UseTextureSource(0);
    TakeLog();
    image->openResult = static_cast<HRESULT>(0x80040005);
    EXPECT_EQ(Import(), E_FAIL);
    EXPECT_THAT(TakeLog(),
                ElementsAre("AskForFile()", "BeginWaitCursor()", "GetProgressWindow()", "SetProgressWindow(some)",
                            "SetTextureMgr(some)", "SetFileName(/pictures/ground.png)", "Open()",
                            "ShowMessage(Error Importing Texture)", "EndWaitCursor()"));
    EXPECT_EQ(UsesSource(), 0);
    EXPECT_EQ(surface->ActivateSourceTexture(), S_OK);
    EXPECT_EQ(image->References(), 1u);
    EXPECT_EQ(progress->References(), 1u);

    host->progress = nullptr;
    EXPECT_EQ(Import(), E_FAIL);
    EXPECT_EQ(windows.waiting, 0);
}

TEST_F(ImportTest, AReaderWithoutPixelsGivesTheResultOfItsOpenAndKeepsTheSlot)
{
    Import();
    surface->UseTextureSource(0);
    TakeLog();
    image->hasPixels = false;
    image->openResult = S_FALSE;
    EXPECT_EQ(Import(), S_FALSE);
    EXPECT_THAT(TakeLog(), testing::Not(testing::Contains("ReleaseTexture(100)")));
    EXPECT_EQ(UsesSource(), 0);
    EXPECT_EQ(surface->ActivateSourceTexture(), S_OK);
    EXPECT_EQ(image->References(), 1u);
}

TEST_F(ImportTest, AFailedCreateLeavesTheSlotEmpty)
{
    Import();
    surface->UseTextureSource(0);
    TakeLog();
    textures->createResult = static_cast<HRESULT>(0x80040002);
    EXPECT_EQ(Import(), static_cast<HRESULT>(0x80040002));
    const CallLog calls = TakeLog();
    ASSERT_GE(calls.size(), 3u);
    EXPECT_EQ(CallLog(calls.end() - 3, calls.end()), (CallLog{"UnbindTexture()", "Close()", "EndWaitCursor()"}));
    EXPECT_EQ(surface->ActivateSourceTexture(), E_FAIL);
    EXPECT_EQ(UsesSource(), 0);
}

TEST_F(ImportTest, WithoutAReaderNothingBegins)
{
    served.reset();
    EXPECT_EQ(Import(), E_FAIL);
    EXPECT_THAT(TakeLog(), ElementsAre("AskForFile()"));
}

TEST_F(ImportTest, WithoutADisplayTheQuestionIsCancelledWhateverItsParent)
{
    SetWindowSystem(&NullWindowSystem());
    EXPECT_EQ(surface->ImportTextureSource(reinterpret_cast<IUnknown*>(static_cast<std::uintptr_t>(8))), E_FAIL);
    EXPECT_THAT(TakeLog(), IsEmpty());
    SetWindowSystem(&windows);
}

TEST_F(ImportTest, NothingIsExportedInAnyState)
{
    EXPECT_EQ(surface->ExportTextureSource(nullptr), E_FAIL);
    EXPECT_EQ(surface->ExportTextureCanvas(nullptr), E_FAIL);
    EXPECT_THAT(TakeLog(), IsEmpty());
    Import();
    surface->CreateTextureSurface2D();
    textures->image = {1, 1, 32, {1, 2, 3, 4}, S_OK};
    TakeLog();
    EXPECT_EQ(surface->ExportTextureSource(nullptr), E_FAIL);
    EXPECT_THAT(TakeLog(), ElementsAre("ResetTextureUnit()", "BindTexture(100)", "GetTextureData(100, 0)"));
    EXPECT_EQ(surface->ExportTextureCanvas(nullptr), E_FAIL);
    EXPECT_THAT(TakeLog(), IsEmpty());
}

}  // namespace

}  // namespace tessara::test

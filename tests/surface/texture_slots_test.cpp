#include "surface/surface_fixture.h"

namespace tessara::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SlotsTest : public SurfaceTest {
protected:
    SlotsTest() { Wire(); }

    HRESULT LoadDetail(const char* name, const char* table, bool user)
    {
        VARIANT selector;
        VariantInit(&selector);
        const BstrHolder nameText(name);
        const BstrHolder tableText(table);
        return surface->SetTextureDetailFromDB(nameText.Get(), tableText.Get(), user ? &selector : nullptr);
    }
    std::string DetailNames()
    {
        BstrHolder name;
        BstrHolder table;
        BstrHolder database;
        surface->GetDBTextureDetailName(name.Out(), table.Out());
        surface->GetDataBaseSource(database.Out());
        return name.Narrow() + "/" + table.Narrow() + "/" + database.Narrow();
    }
};

TEST_F(SlotsTest, ADetailTextureTakesItsPlaceAfterTheLoad)
{
    EXPECT_EQ(DetailNames(), "//");
    EXPECT_EQ(LoadDetail("k1", "t1", false), S_OK);
    EXPECT_THAT(TakeLog(), ElementsAre("LoadTextureFromDB(k1, t1, system)", "UnbindTexture()"));
    EXPECT_EQ(DetailNames(), "k1/t1/APPDB");
    host->loadResult = S_FALSE;  // a success too
    EXPECT_EQ(LoadDetail("k2", "t2", true), S_FALSE);
    EXPECT_THAT(TakeLog(), ElementsAre("LoadTextureFromDB(k2, t2, user)", "ReleaseTexture(77)", "UnbindTexture()"));
    EXPECT_EQ(DetailNames(), "k2/t2/USERDB");
}

TEST_F(SlotsTest, AFailedLoadKeepsTheSlot)
{
    LoadDetail("k1", "t1", true);
    TakeLog();
    host->loadedId = 78;
    host->loadResult = static_cast<HRESULT>(0x80040001);
    EXPECT_EQ(LoadDetail("k2", "t2", false), static_cast<HRESULT>(0x80040001));
    EXPECT_THAT(TakeLog(), ElementsAre("LoadTextureFromDB(k2, t2, system)", "UnbindTexture()"));
    EXPECT_EQ(DetailNames(), "k1/t1/USERDB");
    surface->ActivateDetailTexture();
    EXPECT_THAT(TakeLog(), testing::Contains("BindTexture(77)"));
}

TEST_F(SlotsTest, ActivationSelectsTheUnitWhereThereAreUnits)
{
    EXPECT_EQ(surface->ActivateSourceTexture(), E_FAIL);
    EXPECT_THAT(TakeLog(), IsEmpty());
    surface->CreateTextureSurface3D(4);
    TakeLog();
    EXPECT_EQ(surface->ActivateSourceTexture(), S_OK);
    EXPECT_THAT(TakeLog(), ElementsAre("GetTextureMgr()", "SelectTextureUnit(33984)", "BindTexture(100)"));
    EXPECT_EQ(RecordingGl::Get().log.back(), "glEnable(GL_TEXTURE_2D)");
    textures->multitexture = 0;
    EXPECT_EQ(surface->ActivateDetailTexture(), S_OK);
    EXPECT_THAT(TakeLog(), ElementsAre("GetTextureMgr()", "BindTexture(0)"));
    EXPECT_EQ(surface->ActivateCanvasTexture(), S_OK);
    EXPECT_THAT(TakeLog(), ElementsAre("GetTextureMgr()", "ResetTextureUnit()", "BindTexture(0)"));
    host->textures = nullptr;
    EXPECT_EQ(surface->ActivateSourceTexture(), S_OK);
    EXPECT_EQ(surface->ActivateDetailTexture(), S_OK);
    EXPECT_EQ(surface->ActivateCanvasTexture(), E_FAIL);
    EXPECT_EQ(textures->References(), 2u);
}

TEST_F(SlotsTest, Draw2DShowsTheWholeCanvasWhateverItIsAsked)
{
    matrix->Resize(3, 2);
    surface->SetCanvasOffset(10.0f, 20.0f);
    EXPECT_EQ(surface->Draw2D(5, 5, 6, 6), S_OK);
    EXPECT_THAT(RecordingGl::Get().Calls(),
                ElementsAre("glPushMatrix()", "glBegin(GL_QUADS)", "glTexCoord2f(0, 0)", "glVertex3f(10, 22, 0)",
                            "glTexCoord2f(1, 0)", "glVertex3f(13, 22, 0)", "glTexCoord2f(1, 1)",
                            "glVertex3f(13, 20, 0)", "glTexCoord2f(0, 1)", "glVertex3f(10, 20, 0)", "glEnd()",
                            "glPopMatrix()"));
    EXPECT_THAT(TakeLog(),
                ElementsAre("GetTextureMgr()", "GetWidth()", "GetHeight()", "BindTexture(0)", "UnbindTexture()"));
    matrix->Resize(3, 0);
    EXPECT_EQ(surface->Draw2D(0, 0, 0, 0), E_FAIL);
}

TEST_F(SlotsTest, TilingAndBrightnessGoToTheTerrain)
{
    float x = 3.0f;
    float y = 0.0f;
    surface->SetTextureDetailTiling(&x, nullptr);
    x = 0.0f;
    surface->GetTextureDetailTiling(&x, &y);
    EXPECT_EQ(x, 3.0f);
    EXPECT_EQ(y, 16.0f);
    int gamma = 0;
    surface->GetTextureDetailRGBGamma(&gamma);
    EXPECT_EQ(gamma, 2);
    LONG on = 5;
    surface->IsUsingTextureSource(&on);
    EXPECT_EQ(on, 0);
    const BstrHolder anything("anything");
    surface->SetDataBaseSource(anything.Get());
    EXPECT_EQ(DetailNames(), "//anything");
}

TEST_F(SlotsTest, ThePreviewPaintsThePaletteUpsideDownAndReusesItsTexture)
{
    matrix->Resize(2, 2);
    matrix->At(0, 0).value = 0.0f;
    matrix->At(1, 0).value = 1.0f;
    matrix->At(0, 1).value = -1.0f;  // under the range: the top entry
    matrix->At(1, 1).value = 0.1f;   // entry 25
    EXPECT_EQ(surface->CreateTextureSurface2D(), S_OK);
    EXPECT_THAT(TakeLog(),
                ElementsAre("GetWidth()", "GetHeight()", "GetPalette()", "GetProgressWindow()",
                            "SetProgressTitle(Creating terrain 2D preview ....)", "SetProgressRange(2)",
                            "BeginProgress(1)", "GetCell(0, 0)", "GetCell(1, 0)", "StepProgress(1)", "GetCell(0, 1)",
                            "GetCell(1, 1)", "StepProgress(1)", "SetElementName(TESSARA_SURFACE)",
                            "SetTextureName(key3)", "CreateTexture(2, 2, 24)", "EndProgress(1)", "UnbindTexture()"));
    EXPECT_EQ(textures->lastPixels, (std::vector<BYTE>{255, 255, 255, 0, 176, 0, 0, 136, 0, 255, 255, 255}));

    EXPECT_EQ(surface->CreateTextureSurface2D(), S_OK);
    const CallLog again = TakeLog();
    EXPECT_THAT(
        std::vector(again.end() - 5, again.end()),
        ElementsAre("GetTextureMgr()", "ResetTextureUnit()", "BindTexture(100)", "EndProgress(1)", "UnbindTexture()"));
    ASSERT_EQ(RecordingGl::Get().uploads.size(), 1u);
    EXPECT_EQ(RecordingGl::Get().uploads[0].format, static_cast<GLenum>(GL_BGR_EXT));
    EXPECT_EQ(RecordingGl::Get().uploads[0].unpackAlignment, 1);
    EXPECT_EQ(RecordingGl::Get().unpackAlignment, 4);

    textures->bindResult = E_FAIL;  // something else is bound
    EXPECT_EQ(surface->CreateTextureSurface2D(), S_OK);
    host->textures = nullptr;
    EXPECT_EQ(surface->CreateTextureSurface2D(), S_OK);
    EXPECT_EQ(RecordingGl::Get().uploads.size(), 1u);
}

TEST_F(SlotsTest, ThePreviewFailsBeforeItShowsProgress)
{
    matrix->palette = nullptr;
    EXPECT_EQ(surface->CreateTextureSurface2D(), E_FAIL);
    matrix->palette = &matrix->ownPalette;
    matrix->Resize(0, 4);
    EXPECT_EQ(surface->CreateTextureSurface2D(), E_FAIL);
    EXPECT_THAT(TakeLog(), testing::Not(testing::Contains("GetProgressWindow()")));
}

TEST_F(SlotsTest, TheBlankSourceIsWhiteAndReplacesTheOldOne)
{
    EXPECT_EQ(surface->CreateTextureSurface3D(2), S_OK);
    EXPECT_THAT(TakeLog(), ElementsAre("SetElementName(TESSARA_SURFACE)", "SetTextureName(key1)",
                                       "CreateTexture(2, 2, 32)", "UnbindTexture()"));
    EXPECT_EQ(textures->lastPixels, std::vector<BYTE>(16, 0xFF));
    textures->createResult = E_FAIL;
    EXPECT_EQ(surface->CreateTextureSurface3D(2), E_FAIL);
    EXPECT_EQ(TakeLog().front(), "ReleaseTexture(100)");
    EXPECT_EQ(surface->ActivateSourceTexture(), E_FAIL);  // the old one has gone
    EXPECT_EQ(surface->CreateTextureSurface3D(-1), E_FAIL);
    EXPECT_EQ(surface->CreateTextureSurface3D(0x7FFFFFFF), E_FAIL);  // too much memory
}

TEST_F(SlotsTest, StopServerGivesEveryTextureBack)
{
    surface->CreateTextureSurface3D(1);
    LoadDetail("k", "t", false);
    surface->CreateTextureSurface2D();
    TakeLog();
    surface->StopServer();
    EXPECT_THAT(TakeLog(), ElementsAre("ReleaseTexture(100)", "ReleaseTexture(77)", "ReleaseTexture(101)"));
}

}  // namespace

}  // namespace tessara::test

// Import, delete, apply.

#include "dialog/detail_fixture.h"

namespace tessara::test {

namespace {

using namespace testing;

constexpr char kReplace[] = "ShowMessage(Tessara, The element already exist!\nDo you want to replace it?, 4)";
constexpr char kDelete[] = "ShowMessage(Delete, There is not undo for this operation, do you want to proceed?, 4)";

class ElementsTest : public DetailDialogTest {
protected:
    ElementsTest() { SetDetail("Moss", "USERDB"); }

    CallLog Import(ScriptedDialog& dialog, const std::string& name, int answer = IDNO)
    {
        windows.files = {"/pictures/ground.png"};
        windows.answers = {answer};
        dialog.Type(kNameField, name);
        return After(dialog, [](ScriptedDialog& it) { it.Click(kImportButton); });
    }
};

const CallLog kRefill = {"OpenTextureDatabase(user)",
                         "SetTableName(TerrainTextureDetail)",
                         "ListElements()",
                         "UseTextureDetail(1)",
                         "RequestRedraw(8, 0)",
                         "LoadPreviewTexture(u1, TerrainTextureDetail, user)"};

CallLog Join(CallLog first, const CallLog& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const CallLog kStore = {"CreateImageFile()",
                        "SetFileName(/pictures/ground.png)",
                        "SetProgressWindow(some)",
                        "SetTextureMgr(none)",
                        "BeginWaitCursor()",
                        "Open()",
                        "GetWidth()",
                        "GetHeight()",
                        "ReadPixels()",
                        "GetPixels()",
                        "GetBitsPerPixel()",
                        "NewElementKey()",
                        "SetElementKey(key4)",
                        "SetDisplayName(Rock)",
                        "SetWidth(3)",
                        "SetHeight(2)",
                        "SetBitsPerPixel(32)",
                        "SetPixels(some)",
                        "StoreElement()",
                        "Close()",
                        "EndWaitCursor()"};

TEST_F(ElementsTest, AnImportStoresTheImageUnderANewKey)
{
    Run([this](ScriptedDialog& dialog) {
        const CallLog begin = {"AskForFile()", "OpenTextureDatabase(user)", "SetDisplayName(Rock)",
                               "DisplayNameExists()"};
        EXPECT_EQ(Import(dialog, "Rock"), Join(Join(begin, kStore), kRefill));
        EXPECT_EQ(windows.lastParent, &dialog);
        EXPECT_TRUE(windows.lastQuestion.open);
        EXPECT_EQ(windows.lastQuestion.filters.size(), 6u);
        EXPECT_EQ(dialog.RowText(kElementList, 3), "Rock");
        EXPECT_THAT(dialog.SelectedRows(kElementList), ElementsAre(0));
        EXPECT_EQ(dialog.GetText(kNameField), "Rock");
        EXPECT_EQ(user->References(), 1u);
        EXPECT_EQ(image->References(), 1u);
    });
}

TEST_F(ElementsTest, ANameInUseIsReplacedWithTheUsersConsentOnly)
{
    user->elements = {{"u1", "Lawn"}, {"u2", "Rock"}};
    Run([this](ScriptedDialog& dialog) {
        const CallLog asked = {"AskForFile()", "OpenTextureDatabase(user)", "SetDisplayName(Rock)",
                               "DisplayNameExists()", kReplace};
        EXPECT_EQ(Import(dialog, "Rock", IDNO), asked);
        EXPECT_EQ(Import(dialog, "Rock", IDYES), Join(Join(Join(asked, {"DeleteElement()"}), kStore), kRefill));
        EXPECT_EQ(user->elements, (FakeDatabase::Elements{{"u1", "Lawn"}, {"key4", "Rock"}}));
    });
}

TEST_F(ElementsTest, AnImportThatDoesNotBeginChangesNothing)
{
    Run([this](ScriptedDialog& dialog) {
        EXPECT_THAT(Import(dialog, ""),
                    ElementsAre("ShowMessage(Tessara, First: enter a name for the element to import, 0)"));
        dialog.Type(kNameField, "Rock");
        windows.files.clear();
        EXPECT_THAT(After(dialog, [](auto& it) { it.Click(kImportButton); }), ElementsAre("AskForFile()"));
    });
}

TEST_F(ElementsTest, AnImageThatCannotBeReadLeavesTheListAsItIs)
{
    user->elements[1].second = "Rock";
    image->openResult = E_FAIL;
    Run([this](ScriptedDialog& dialog) {
        const CallLog calls = Import(dialog, "Rock", IDYES);
        EXPECT_EQ(CallLog(calls.end() - 5, calls.end()),
                  (CallLog{"SetTextureMgr(none)", "BeginWaitCursor()", "Open()", "Close()", "EndWaitCursor()"}));
        EXPECT_EQ(dialog.RowCount(kElementList), 3);
        EXPECT_EQ(user->elements.size(), 2u);
        EXPECT_EQ(image->References(), 1u);
    });
    host->image = nullptr;
    Run([this](ScriptedDialog& dialog) {
        EXPECT_THAT(Import(dialog, "Gravel"),
                    Contains("ShowMessage(The image can't be imported: there is no reader for image files.)"));
    });
}

TEST_F(ElementsTest, DeletesEachSelectedRowThroughADatabaseOfItsOwn)
{
    Run([this](ScriptedDialog& dialog) {
        dialog.PickRows(kElementList, {1, 2}, 2);
        windows.answers = {IDNO};
        EXPECT_THAT(After(dialog, [](auto& it) { it.Click(kDeleteButton); }), ElementsAre(kDelete));
        windows.answers = {IDYES};
        const CallLog deletes = {kDelete,           "OpenTextureDatabase(user)", "SetElementKey(u2)",
                                 "DeleteElement()", "OpenTextureDatabase(user)", "SetElementKey(u3)",
                                 "DeleteElement()"};
        EXPECT_EQ(After(dialog, [](auto& it) { it.Click(kDeleteButton); }), Join(deletes, kRefill));
        EXPECT_EQ(dialog.RowCount(kElementList), 1);
        EXPECT_EQ(user->References(), 1u);

        dialog.PickRows(kElementList, {}, 0);
        windows.answers = {IDYES};
        EXPECT_THAT(After(dialog, [](auto& it) { it.Click(kDeleteButton); }), ElementsAre(kDelete));
        EXPECT_EQ(user->elements.size(), 1u);

        dialog.PickRows(kElementList, {0}, 0);
        windows.answers = {IDYES};
        dialog.Click(kDeleteButton);
        EXPECT_EQ(dialog.RowCount(kElementList), 0);
        EXPECT_THAT(
            After(dialog, [](auto& it) { it.Click(kApplyButton); }),
            ElementsAre("LoadTextureFromDB(u1, TerrainTextureDetail, user)", "UnbindTexture()", "RequestRedraw(8, 0)"));
    });
}

TEST_F(ElementsTest, AppliesTheElementWithItsDisplayName)
{
    SetDetail("Grass", "APPDB");
    Run([this](ScriptedDialog& dialog) {
        EXPECT_THAT(After(dialog, [](auto& it) { it.Click(kApplyButton); }),
                    ElementsAre("SetUserTextureName(Grass)", "LoadTextureFromDB(k1, TerrainTextureDetail, system)",
                                "UnbindTexture()", "RequestRedraw(8, 0)"));
        dialog.Pick(kElementList, 1);
        EXPECT_THAT(After(dialog, [](auto& it) { it.Click(kApplyButton); }),
                    ElementsAre("SetUserTextureName()", "LoadTextureFromDB(k2, TerrainTextureDetail, system)",
                                "ReleaseTexture(77)", "UnbindTexture()", "RequestRedraw(8, 0)"));
    });
}

}  // namespace

}  // namespace tessara::test

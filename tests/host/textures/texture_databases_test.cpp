#include "host/textures/texture_databases.h"
#include "host/textures/texture_service.h"
#include "host/textures/texture_store.h"
#include "platform/com/bstr.h"
#include "support/message_capture.h"
#include "support/recording_gl.h"
#include "support/scratch_folder.h"

#include <gmock/gmock.h>

namespace {

using namespace tessara;
using tessara::test::MessageCapture;
using tessara::test::RecordingGl;
using tessara::test::ScratchFolder;
using testing::HasSubstr;
using Access = SqliteFile::Access;

class TextureDatabasesTest : public testing::Test {
protected:
    TextureDatabasesTest()
    {
        RecordingGl::Reset();
        TextureStore system(folder_.Path("system.db"), Access::ReadWrite);
        TextureStore user(folder_.Path("user.db"), Access::ReadWrite);
        system.Add(kDetailTable, {"grass", "Grass", 1, 1, 24}, std::vector<std::uint8_t>{1, 2, 3});
        system.Add("Other", {"grass", "Grass", 1, 1, 8}, std::vector<std::uint8_t>{4});
        user.Add(kDetailTable, {"grass", "Lawn", 1, 1, 32}, std::vector<std::uint8_t>{5, 6, 7, 8});
    }

    HRESULT Load(const char* name, const char* table, bool user, ULONG* id)
    {
        return databases_.LoadTexture(*service_, name, table, user, id);
    }

    ScratchFolder folder_;
    MessageCapture messages_;
    RecordingGl& gl_ = RecordingGl::Get();
    TextureDatabases databases_{{folder_.Path("system.db"), false}, {folder_.Path("user.db"), true}};
    ComPtr<TextureService> service_ = MakeObject<TextureService>();
};

TEST_F(TextureDatabasesTest, TexturesAreSharedByDatabaseTableAndKey)
{
    ULONG ids[5] = {};
    EXPECT_EQ(Load("grass", kDetailTable, false, &ids[0]), S_OK);
    EXPECT_EQ(Load("Grass", "", false, &ids[1]), S_OK);  // by its display name
    EXPECT_EQ(Load("grass", "Other", false, &ids[2]), S_OK);
    EXPECT_EQ(Load("grass", kDetailTable, true, &ids[3]), S_OK);
    EXPECT_EQ(ids[0], ids[1]);
    EXPECT_NE(ids[0], ids[2]);
    EXPECT_NE(ids[0], ids[3]);
    ASSERT_EQ(gl_.uploads.size(), 3u);
    EXPECT_EQ(gl_.uploads[0].pixels, (std::vector<unsigned char>{1, 2, 3}));
    EXPECT_EQ(gl_.uploads[1].pixels, (std::vector<unsigned char>{4}));
    EXPECT_EQ(gl_.uploads[2].pixels, (std::vector<unsigned char>{5, 6, 7, 8}));
    for (const ULONG id : {ids[0], ids[0], ids[2], ids[3]})
        EXPECT_EQ(service_->ReleaseTexture(id), S_OK);
    EXPECT_EQ(service_->ReleaseTexture(ids[0]), E_FAIL);
}

TEST_F(TextureDatabasesTest, AFailureLeavesTheIdAloneAndSaysWhy)
{
    ULONG id = 77;
    EXPECT_EQ(Load("moss", kDetailTable, false, &id), E_FAIL);
    EXPECT_THAT(messages_.lines.at(0), HasSubstr("system.db\" has no element \"moss\""));
    EXPECT_EQ(Load("", "", false, &id), E_FAIL);
    EXPECT_EQ(messages_.lines.size(), 1u);
    EXPECT_EQ(databases_.LoadPreview("moss", "", true, &id), E_FAIL);
    gl_.buildResult = 1;
    EXPECT_EQ(Load("grass", "", false, &id), E_FAIL);
    EXPECT_EQ(databases_.LoadPreview("grass", "", false, &id), E_FAIL);
    EXPECT_EQ(id, 77u);
}

TEST_F(TextureDatabasesTest, APreviewIsAPlainTextureThatNoServiceKnows)
{
    ULONG name = 0;
    EXPECT_EQ(databases_.LoadPreview("grass", kDetailTable, true, &name), S_OK);
    EXPECT_EQ(name, 1u);
    EXPECT_EQ(gl_.boundTexture[0], 1u);
    EXPECT_EQ(gl_.uploads.at(0).components, 4);
    CTextureMgrImp* textures = nullptr;
    service_->GetImplementation(&textures);
    EXPECT_TRUE(textures->records.empty());
}

TEST_F(TextureDatabasesTest, AnOpenDatabaseWorksOnTheOneThatWasChosen)
{
    const auto exists = [this](bool user, const char* name) {
        const ComPtr<ITextureDatabase> database = databases_.Open(user);
        database->SetDisplayName(BstrHolder(name).Get());
        return database->DisplayNameExists() != 0;
    };
    EXPECT_TRUE(exists(false, "Grass"));
    EXPECT_FALSE(exists(false, "Lawn"));
    EXPECT_TRUE(exists(true, "Lawn"));
    EXPECT_EQ(databases_.Open(false)->DeleteElement(), E_ACCESSDENIED);
}

}  // namespace

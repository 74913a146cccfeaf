#include "host/console_progress.h"
#include "host/host_classes.h"
#include "host/kvo_host.h"
#include "host/textures/texture_service.h"
#include "platform/com/bstr.h"
#include "services/image_file.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

namespace tessara {
namespace {

ULONG Count(IUnknown& object)
{
    object.AddRef();
    return object.Release();
}

TEST(KvoHost, HandsOutItsServicesWithAReference)
{
    std::ostringstream output;
    auto progress = MakeObject<ConsoleProgress>(output, false);
    const auto host = MakeObject<KvoHost>(nullptr, ComPtr<IProgressWindow>(progress.Get()));
    const ULONG held = Count(*progress);
    {
        ComPtr<IProgressWindow> given;
        EXPECT_EQ(host->GetProgressWindow(given.Out()), S_OK);
        EXPECT_EQ(given.Get(), progress.Get());
        EXPECT_EQ(Count(*progress), held + 1);
    }
    EXPECT_EQ(Count(*progress), held);
    ComPtr<ITextureMgr> textures;
    EXPECT_EQ(host->GetTextureMgr(textures.Out()), S_OK);
    EXPECT_FALSE(textures);
}

TEST(KvoHost, ClearsOutArgumentsAndRefusesNullOnes)
{
    const auto host = MakeObject<KvoHost>(nullptr, nullptr);
    EXPECT_EQ(host->GetTextureMgr(nullptr), E_POINTER);
    EXPECT_EQ(host->GetProgressWindow(nullptr), E_POINTER);
    EXPECT_EQ(host->CreateImageFile(nullptr), E_POINTER);
    EXPECT_EQ(host->OpenTextureDatabase(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(host->NewElementKey(nullptr), E_POINTER);
    ComPtr<IProgressWindow> progress;
    EXPECT_EQ(host->GetProgressWindow(progress.Out()), S_OK);
    EXPECT_FALSE(progress);
}

TEST(KvoHost, KeysNeverRepeatAndFitAnElementName)
{
    const auto host = MakeObject<KvoHost>(nullptr, nullptr);
    std::set<std::string> keys;
    for (int i = 0; i < 1000; ++i) {
        BstrHolder key;
        ASSERT_EQ(host->NewElementKey(key.Out()), S_OK);
        const std::string text = key.Narrow();
        EXPECT_GE(text.size(), 34u);
        EXPECT_LE(text.size(), 49u);
        EXPECT_TRUE(keys.insert(text).second) << text;
    }
}

TEST(KvoHost, OpensTheTwoDatabasesAndReadsImagesBesideItself)
{
    const test::ScratchFolder folder;
    std::ostringstream output;
    const auto progress = MakeObject<ConsoleProgress>(output, false);
    const auto report = [&](const std::string& line) { progress->Say(line); };
    const TextureDatabases databases({folder.Path("missing.db"), false}, {folder.Path("user.db"), true}, report);
    const auto host = MakeObject<KvoHost>(ComPtr<ITextureMgr>(MakeObject<TextureService>().Get()), nullptr, databases);
    ComPtr<ITextureDatabase> database;
    VARIANT user;
    EXPECT_EQ(host->OpenTextureDatabase(database.Out(), &user), S_OK);
    EXPECT_EQ(database->DeleteElement(), S_FALSE);
    EXPECT_EQ(host->OpenTextureDatabase(database.Out(), nullptr), S_OK);
    EXPECT_EQ(database->DeleteElement(), E_ACCESSDENIED);

    ULONG id = 77;
    EXPECT_EQ(host->LoadTextureFromDB(BstrHolder("grass").Get(), nullptr, &id, nullptr), E_FAIL);
    EXPECT_EQ(id, 77u);
    EXPECT_NE(output.str().find(folder.Path("missing.db")), std::string::npos);
    EXPECT_EQ(host->LoadPreviewTexture(BstrHolder("grass").Get(), nullptr, &id, &user), E_FAIL);
    EXPECT_EQ(id, 0u);

    const HostClasses classes = RegisterHostClasses();
    ComPtr<IImageFile> image;
    EXPECT_EQ(host->CreateImageFile(image.Out()), S_OK);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->Open(), E_FAIL);
}

class Console : public testing::Test {
protected:
    ComPtr<ConsoleProgress> Make(bool bars) { return MakeObject<ConsoleProgress>(output, bars); }

    static void Work(ConsoleProgress& progress)
    {
        const BstrHolder title("Painting");
        progress.SetProgressTitle(title.Get());
        progress.SetProgressRange(4);
        progress.BeginProgress(1);
        for (int i = 0; i < 5; ++i)
            progress.StepProgress(1);
        progress.EndProgress(1);
    }

    std::ostringstream output;
};

TEST_F(Console, IsSilentInAPipe)
{
    const auto progress = Make(false);
    Work(*progress);
    EXPECT_EQ(output.str(), "");
    const BstrHolder message("Done.");
    progress->ShowMessage(message.Get());
    EXPECT_EQ(output.str(), "Done.\n");
}

TEST_F(Console, ShowsABarOnATerminalAndWipesIt)
{
    const auto progress = Make(true);
    Work(*progress);
    const std::string text = output.str();
    EXPECT_NE(text.find("Painting ["), std::string::npos);
    EXPECT_NE(text.find("] 50 %"), std::string::npos);
    EXPECT_NE(text.find("] 100 %"), std::string::npos);
    EXPECT_EQ(text.find("125 %"), std::string::npos);
    EXPECT_EQ(text.back(), '\r');
    EXPECT_EQ(text.find('\n'), std::string::npos);
}

TEST_F(Console, AMessageGetsALineOfItsOwn)
{
    const auto progress = Make(true);
    progress->Show("Reading", 0.5);
    progress->Say("Filled 3 cells.");
    EXPECT_NE(output.str().find("\rFilled 3 cells.\n"), std::string::npos);
}

}  // namespace
}  // namespace tessara

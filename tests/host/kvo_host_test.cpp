#include "host/console_progress.h"
#include "host/kvo_host.h"
#include "platform/com/bstr.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

namespace tessara {
namespace {

TEST(KvoHost, HandsOutItsServicesWithAReference)
{
    std::ostringstream output;
    auto progress = MakeObject<ConsoleProgress>(output, false);
    const auto host = MakeObject<KvoHost>(nullptr, ComPtr<IProgressWindow>(progress.Get()));
    {
        ComPtr<IProgressWindow> given;
        EXPECT_EQ(host->GetProgressWindow(given.Out()), S_OK);
        EXPECT_EQ(given.Get(), progress.Get());
        EXPECT_EQ(progress->AddRef(), 4u);
        progress->Release();
    }
    EXPECT_EQ(progress->AddRef(), 3u);
    progress->Release();
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

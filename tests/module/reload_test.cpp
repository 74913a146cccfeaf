// Loading and unloading. This program links no OpenGL and no surface: all that comes with the module goes with it.

#include "platform/com/com_ptr.h"
#include "platform/com/module_class.h"
#include "platform/com/module_server.h"
#include "platform/ui/registered_message.h"
#include "support/registry_sandbox.h"
#include "surface/itessara.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <atomic>
#include <thread>

namespace {

constexpr char kModule[] = TESSARA_MODULE_PATH;

bool IsLoaded()
{
    void* module = dlopen(kModule, RTLD_NOW | RTLD_NOLOAD);
    if (module)
        dlclose(module);
    return module != nullptr;
}

ComPtr<ITessara> Create()
{
    ComPtr<ITessara> surface;
    EXPECT_EQ(
        CoCreateInstance(CLSID_CoTessara, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<ITessara>, surface.OutVoid()),
        S_OK);
    return surface;
}

ComPtr<IClassFactory> Factory()
{
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(CoGetClassObject(CLSID_CoTessara, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.OutVoid()),
              S_OK);
    return factory;
}

bool IsLoadedAfterFreeing()
{
    CoFreeUnusedLibraries();
    return IsLoaded();
}

class Reload : public testing::Test {
protected:
    Reload() { EXPECT_EQ(tessara::RegisterServer(kModule), S_OK); }
    ~Reload() override { EXPECT_FALSE(IsLoadedAfterFreeing()); }

    tessara::test::RegistrySandbox sandbox;
};

TEST_F(Reload, RegisteringLeavesNothingLoaded)
{
    EXPECT_FALSE(IsLoaded());
    EXPECT_EQ(tessara::ProbeServer(kModule, CLSID_CoTessara), S_OK);
    EXPECT_FALSE(IsLoaded());
}

TEST_F(Reload, AModuleStaysAsLongAsSomethingOfItIsHeld)
{
    auto surface = Create();
    EXPECT_TRUE(IsLoadedAfterFreeing());
    auto factory = Factory();
    surface = nullptr;
    EXPECT_TRUE(IsLoadedAfterFreeing());
    factory->LockServer(1);
    factory = nullptr;
    EXPECT_TRUE(IsLoadedAfterFreeing());
    Factory()->LockServer(0);
    EXPECT_TRUE(IsLoaded());
    EXPECT_FALSE(IsLoadedAfterFreeing());
    surface = Create();
    EXPECT_EQ(surface->InitServer(), S_OK);
    EXPECT_EQ(surface->StopServer(), S_OK);
}

TEST_F(Reload, AModuleStaysAsLongAsTheClassTableHoldsItsFactory)
{
    DWORD cookie = 0;
    ASSERT_EQ(
        CoRegisterClassObject(CLSID_CoTessara, Factory().Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie),
        S_OK);
    EXPECT_TRUE(IsLoadedAfterFreeing());
    EXPECT_NE(Create().Get(), nullptr);
    EXPECT_EQ(CoRevokeClassObject(cookie), S_OK);
    EXPECT_FALSE(IsLoadedAfterFreeing());
}

TEST_F(Reload, ThreadsThatAskAtOnceLoadAModuleOnce)
{
    for (int round = 0; round < 20; ++round) {
        std::atomic<int> ready{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&ready] {
                ++ready;
                while (ready < 4)
                    std::this_thread::yield();
                for (int k = 0; k < 50; ++k)
                    Create();
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_TRUE(IsLoaded());
        EXPECT_FALSE(IsLoadedAfterFreeing());
    }
}

TEST_F(Reload, TheNumbersOfTheSpinMessagesAreTakenAtTheStart)
{
    Create();
    const UINT fresh = RegisterWindowMessage("a message that only this test knows");
    const UINT up = RegisterWindowMessage("UWM_SPINUP-{384D476A-93A7-45f1-812C-0E729C0D1CFC}");
    const UINT down = RegisterWindowMessage("UWM_SPINDOWN-{DF6BCD85-0622-4f26-BE2B-117BA1AE9226}");
    EXPECT_GE(up, 0xC000u);
    EXPECT_LT(up, fresh);
    EXPECT_LT(down, fresh);
    EXPECT_NE(up, down);
}

/// Pages that the process has mapped.
std::size_t MappedPages()
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages;
}

std::size_t OpenFiles()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

TEST_F(Reload, AThousandTimesLeaksNothing)
{
    std::size_t pages = 0, files = 0, bytes = 0;
    for (int i = 0; i < 1100; ++i) {
        if (i == 100) {  // the first rounds fill caches
            pages = MappedPages();
            files = OpenFiles();
            bytes = mallinfo2().uordblks;
        }
        auto surface = Create();
        ASSERT_EQ(surface->InitServer(), S_OK);
        surface->StopServer();
        surface = nullptr;
        ASSERT_FALSE(IsLoadedAfterFreeing()) << i;
    }
    EXPECT_EQ(OpenFiles(), files);
    // Under a sanitizer, whose allocator counts nothing here, its own search for leaks does the rest.
    if (bytes != 0) {
        EXPECT_LT(mallinfo2().uordblks, bytes + 16000);  // the smallest leak there can be would make 32000
        EXPECT_LT(MappedPages(), pages + 500);
    }
}

TEST(ReloadUnregistered, AClassThatTheHostEnteredIsLoadedAgain)
{
    const tessara::test::RegistrySandbox sandbox;
    ASSERT_EQ(tessara::RegisterModuleClass(CLSID_CoTessara, kModule), S_OK);
    for (int i = 0; i < 3; ++i) {
        Create();
        EXPECT_TRUE(IsLoaded());
        EXPECT_FALSE(IsLoadedAfterFreeing());
    }
}

}  // namespace

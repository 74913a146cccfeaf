// The module as a host sees it that knows nothing but its file, its exports and its ids.

#include "platform/com/com_object.h"
#include "surface/itessara.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

constexpr GUID kUnknownId = {9, 9, 9, {9}};

class ModuleTest : public testing::Test {
protected:
    ModuleTest() : module(dlopen(TESSARA_MODULE_PATH, RTLD_NOW | RTLD_LOCAL))
    {
        EXPECT_NE(module, nullptr) << dlerror();
        getClassObject = reinterpret_cast<HRESULT (*)(REFCLSID, REFIID, void**)>(dlsym(module, "DllGetClassObject"));
        canUnloadNow = reinterpret_cast<HRESULT (*)()>(dlsym(module, "DllCanUnloadNow"));
    }
    ~ModuleTest() override
    {
        EXPECT_EQ(canUnloadNow(), S_OK);
        dlclose(module);
    }
    ComPtr<IClassFactory> Factory() const
    {
        ComPtr<IClassFactory> factory;
        EXPECT_EQ(getClassObject(CLSID_CoTessara, IID_IClassFactory, factory.OutVoid()), S_OK);
        return factory;
    }

    void* module;
    HRESULT (*getClassObject)(REFCLSID, REFIID, void**);
    HRESULT (*canUnloadNow)();
};

/// A controlling object that knows one interface of its own and nothing else.
class Outer final : public ComObject<IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void**) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

TEST_F(ModuleTest, ServesOneClass)
{
    void* out = &out;
    EXPECT_EQ(getClassObject(kUnknownId, IID_IClassFactory, &out), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(getClassObject(CLSID_CoTessara, IID_IClassFactory, nullptr), E_POINTER);
    out = &out;
    EXPECT_EQ(getClassObject(CLSID_CoTessara, kUnknownId, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(Factory().Get(), Factory().Get());  // made once
}

TEST_F(ModuleTest, RefusesWhatItCannotMake)
{
    const auto factory = Factory();
    void* out = &out;
    EXPECT_EQ(factory->CreateInstance(nullptr, kUnknownId, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    const auto outer = MakeObject<Outer>();
    out = &out;
    EXPECT_EQ(factory->CreateInstance(outer.Get(), InterfaceId<ITessara>, &out), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(factory->CreateInstance(outer.Get(), kUnknownId, &out), CLASS_E_NOAGGREGATION);
}

TEST_F(ModuleTest, InAnAggregateTheOuterObjectControls)
{
    const auto outer = MakeObject<Outer>();
    {
        ComPtr<IUnknown> inner;
        ASSERT_EQ(Factory()->CreateInstance(outer.Get(), IID_IUnknown, inner.OutVoid()), S_OK);
        EXPECT_EQ(canUnloadNow(), S_FALSE);
        const auto surface = inner.As<ITessara>();
        ASSERT_TRUE(surface);
        EXPECT_EQ(surface->AddRef(), 3u);  // counted at the outer object
        surface->Release();
        EXPECT_TRUE(surface.As<IClassFactory>());  // and answered by it
        EXPECT_FALSE(surface.As<ITessara>());
        EXPECT_EQ(surface->InitServer(), S_OK);
        EXPECT_EQ(surface->StopServer(), S_OK);
    }
    EXPECT_EQ(canUnloadNow(), S_OK);
    EXPECT_EQ(outer->AddRef(), 2u);
    outer->Release();
}

TEST_F(ModuleTest, ExportsFourFunctionsAndNothingElse)
{
    for (const char* name : {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"})
        EXPECT_NE(dlsym(module, name), nullptr) << name;
    const std::string command = std::string("nm -D --defined-only '") + TESSARA_MODULE_PATH + "' | wc -l";
    std::FILE* pipe = popen(command.c_str(), "r");
    int count = 0;
    ASSERT_EQ(std::fscanf(pipe, "%d", &count), 1);
    pclose(pipe);
    EXPECT_EQ(count, 4);
}

}  // namespace

#include "platform/com/com_object.h"
#include "platform/com/module_class.h"

#include <gtest/gtest.h>

namespace {

constexpr CLSID kClass = {0xABCD, 1, 2, {3}};
constexpr CLSID kOther = {0xABCD, 1, 2, {4}};

class CountingFactory : public ComObject<IClassFactory> {
public:
    explicit CountingFactory(HRESULT result) : result_(result) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void**) override
    {
        ++calls;
        return result_;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
    int calls = 0;

private:
    HRESULT result_;
};

HRESULT Create(REFCLSID clsid)
{
    void* out = nullptr;
    return CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &out);
}

TEST(ClassTable, AnUnknownClassIsNotRegistered)
{
    void* out = &out;
    EXPECT_EQ(CoCreateInstance(kOther, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &out), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(static_cast<std::uint32_t>(REGDB_E_CLASSNOTREG), 0x80040154u);
    EXPECT_EQ(CoCreateInstance(kOther, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, nullptr), E_POINTER);
}

TEST(ClassTable, TheNewestFactoryOfAClassServesItUntilItIsRevoked)
{
    const auto older = MakeObject<CountingFactory>(S_OK);
    const auto newer = MakeObject<CountingFactory>(S_FALSE);
    DWORD olderCookie = 0;
    DWORD newerCookie = 0;
    ASSERT_EQ(CoRegisterClassObject(kClass, older.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &olderCookie), S_OK);
    ASSERT_EQ(CoRegisterClassObject(kClass, newer.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &newerCookie), S_OK);
    EXPECT_EQ(Create(kClass), S_FALSE);
    EXPECT_EQ(CoRevokeClassObject(newerCookie), S_OK);
    EXPECT_EQ(Create(kClass), S_OK);
    EXPECT_EQ(CoRevokeClassObject(olderCookie), S_OK);
    EXPECT_EQ(Create(kClass), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(CoRevokeClassObject(olderCookie), CO_E_OBJNOTREG);
    EXPECT_EQ(older->calls, 1);
    EXPECT_EQ(newer->calls, 1);
    EXPECT_EQ(older->AddRef(), 2u);  // the table holds no reference any more
    older->Release();
}

TEST(ClassTable, AModuleThatCannotBeLoadedSaysSo)
{
    constexpr CLSID missing = {0xABCD, 9, 9, {1}};
    ASSERT_EQ(tessara::RegisterModuleClass(missing, "/nowhere/missing.so"), S_OK);
    EXPECT_EQ(Create(missing), CO_E_DLLNOTFOUND);
    EXPECT_EQ(tessara::RegisterModuleClass(missing, nullptr), E_INVALIDARG);
}

}  // namespace

#include "platform/com/com_object.h"
#include "platform/com/guard.h"

#include <gtest/gtest.h>

#include <stdexcept>

struct IFirst : IUnknown {
    virtual LONG STDMETHODCALLTYPE First() = 0;
};
struct ISecond : IUnknown {
    virtual LONG STDMETHODCALLTYPE Second() = 0;
};
template <>
inline constexpr GUID InterfaceId<IFirst> = {1, 2, 3, {4}};
template <>
inline constexpr GUID InterfaceId<ISecond> = {5, 6, 7, {8}};

namespace {

constexpr GUID kUnknownId = {9, 9, 9, {9}};

class Twofold : public ComObject<IFirst, ISecond> {
public:
    explicit Twofold(int& alive) : alive_(alive) { ++alive_; }
    LONG STDMETHODCALLTYPE First() override { return 1; }
    LONG STDMETHODCALLTYPE Second() override { return 2; }

protected:
    ~Twofold() override { --alive_; }

private:
    int& alive_;
};

TEST(ComObject, AnswersForEachInterfaceOfItsListWithOneIdentity)
{
    int alive = 0;
    const auto object = MakeObject<Twofold>(alive);
    const auto second = ComPtr<IFirst>(object.Get()).As<ISecond>();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->Second(), 2);
    EXPECT_EQ(second.As<IFirst>()->First(), 1);
    EXPECT_EQ(second.As<IUnknown>().Get(), ComPtr<IFirst>(object.Get()).As<IUnknown>().Get());
}

TEST(ComObject, RefusesAnUnknownInterfaceAndClearsTheOutPointer)
{
    int alive = 0;
    const auto object = MakeObject<Twofold>(alive);
    void* out = &alive;
    EXPECT_EQ(object->QueryInterface(kUnknownId, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST(ComObject, HandOutDeletesAnObjectThatLacksTheInterface)
{
    int alive = 0;
    void* out = nullptr;
    EXPECT_EQ(HandOut(new Twofold(alive), kUnknownId, &out), E_NOINTERFACE);
    EXPECT_EQ(alive, 0);
    ASSERT_EQ(HandOut(new Twofold(alive), InterfaceId<ISecond>, &out), S_OK);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(static_cast<ISecond*>(out)->Release(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST(Guard, TurnsExceptionsIntoResultCodes)
{
    EXPECT_EQ(Guard([] { return S_FALSE; }), S_FALSE);
    EXPECT_EQ(Guard([]() -> HRESULT { throw std::bad_alloc(); }), E_OUTOFMEMORY);
    EXPECT_EQ(Guard([]() -> HRESULT { throw std::bad_alloc(); }, E_FAIL), E_FAIL);
    EXPECT_EQ(Guard([]() -> HRESULT { throw std::runtime_error("x"); }), E_FAIL);
    EXPECT_EQ(Guard([]() -> HRESULT { throw 1; }), E_FAIL);
}

}  // namespace

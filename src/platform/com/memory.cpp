#include "platform/com/com.h"

#include <cstdlib>

namespace {

constexpr std::size_t kPrefix = sizeof(std::uint32_t);

char* BlockOf(BSTR text)
{
    return reinterpret_cast<char*>(text) - kPrefix;
}

}  // namespace

extern "C" {

BSTR SysAllocStringLen(const OLECHAR* text, UINT length)
{
    if (length > (UINT32_MAX - sizeof(OLECHAR)) / sizeof(OLECHAR))
        return nullptr;
    const UINT bytes = length * static_cast<UINT>(sizeof(OLECHAR));
    auto* block = static_cast<char*>(std::malloc(kPrefix + bytes + sizeof(OLECHAR)));
    if (!block)
        return nullptr;
    std::memcpy(block, &bytes, kPrefix);
    auto* result = reinterpret_cast<OLECHAR*>(block + kPrefix);
    if (text)
        std::memcpy(result, text, bytes);
    result[length] = 0;
    return result;
}

BSTR SysAllocString(const OLECHAR* text)
{
    if (!text)
        return nullptr;
    UINT length = 0;
    while (text[length] != 0)
        ++length;
    return SysAllocStringLen(text, length);
}

UINT SysStringLen(BSTR text)
{
    if (!text)
        return 0;
    UINT bytes = 0;
    std::memcpy(&bytes, BlockOf(text), kPrefix);
    return bytes / static_cast<UINT>(sizeof(OLECHAR));
}

void SysFreeString(BSTR text)
{
    if (text)
        std::free(BlockOf(text));
}

void VariantInit(VARIANT* variant)
{
    if (variant)
        std::memset(variant, 0, sizeof(*variant));
}

HRESULT VariantClear(VARIANT* variant)
{
    if (!variant)
        return E_INVALIDARG;
    if (variant->vt == VT_BSTR)
        SysFreeString(variant->bstrVal);
    else if (variant->vt == VT_UNKNOWN && variant->punkVal)
        variant->punkVal->Release();
    VariantInit(variant);
    return S_OK;
}

void* CoTaskMemAlloc(std::size_t size)
{
    return std::malloc(size ? size : 1);
}

void CoTaskMemFree(void* memory)
{
    std::free(memory);
}
}

#include "host/memory_place.h"

#include "platform/com/bstr.h"
#include "platform/com/guard.h"

#include <algorithm>

namespace tessara {

namespace {

/// Takes the BSTR over.
std::string TakeName(BSTR name)
{
    BstrHolder holder;
    *holder.Out() = name;
    return holder.Narrow();
}

}  // namespace

HRESULT MemoryPlace::AddNode(ParserNode parent, BSTR name, const void* bytes, LONG size, LONG)
{
    return Guard([&] {
        const std::string text = TakeName(name);
        if (parent || text.empty() || size < 0 || (size > 0 && !bytes))
            return E_INVALIDARG;
        const auto* first = static_cast<const BYTE*>(bytes);
        values_[text].assign(first, first + size);
        return S_OK;
    });
}

HRESULT MemoryPlace::GetNodeValue(ParserNode node, void* buffer, LONG* count, LONG)
{
    if (!count)
        return E_POINTER;
    *count = 0;
    if (!node || !buffer)
        return E_INVALIDARG;
    const auto& bytes = *static_cast<const std::vector<BYTE>*>(node);
    std::copy(bytes.begin(), bytes.end(), static_cast<BYTE*>(buffer));
    *count = static_cast<LONG>(bytes.size());
    return S_OK;
}

HRESULT MemoryPlace::FindNode(ParserNode parent, BSTR name, LONG index, ParserNode* node)
{
    return Guard([&] {
        const std::string text = TakeName(name);
        if (!node)
            return E_POINTER;
        *node = nullptr;
        const auto found = values_.find(text);
        if (parent || index != -1 || found == values_.end())
            return E_FAIL;
        *node = &found->second;
        return S_OK;
    });
}

}  // namespace tessara

#pragma once

// A place in a project, in memory.

#include "services/parser.h"
#include "support/fake_services.h"

#include <cstring>
#include <map>
#include <set>

namespace tessara::test {

/// Keeps values in a map, writes its calls into the log, and fails as told.
class FakeParser final : public Fake<IParser> {
public:
    struct Value {
        LONG typeCode = 0;
        std::vector<BYTE> bytes;
        bool operator==(const Value&) const = default;
    };

    using Values = std::map<std::string, Value, std::less<>>;

    using Fake::Fake;

    static std::vector<BYTE> BytesOf(const std::vector<float>& numbers)
    {
        const auto* bytes = reinterpret_cast<const BYTE*>(numbers.data());
        return {bytes, bytes + numbers.size() * sizeof(float)};
    }
    template <class T>
    void Put(const std::string& name, LONG typeCode, const std::vector<T>& items)
    {
        const auto* bytes = reinterpret_cast<const BYTE*>(items.data());
        values[name] = {typeCode, {bytes, bytes + items.size() * sizeof(T)}};
    }
    void PutText(const std::string& name, const std::string& text)
    {
        std::vector<char> bytes(text.begin(), text.end());
        bytes.push_back(0);
        Put(name, 0x40, bytes);
    }
    template <class T>
    std::vector<T> Get(const std::string& name) const
    {
        const auto found = values.find(name);
        if (found == values.end())
            return {};
        std::vector<T> items(found->second.bytes.size() / sizeof(T));
        if (!items.empty())
            std::memcpy(items.data(), found->second.bytes.data(), items.size() * sizeof(T));
        return items;
    }
    std::string GetText(const std::string& name) const
    {
        const auto found = values.find(name);
        return found == values.end() ? "(none)" : reinterpret_cast<const char*>(found->second.bytes.data());
    }

    HRESULT STDMETHODCALLTYPE AddNode(ParserNode parent, BSTR name, const void* bytes, LONG size,
                                      LONG typeCode) override
    {
        const Name text(name);
        Log("AddNode", text.characters, size, typeCode);
        if (parent || Fails())
            return E_FAIL;
        return Guard([&] {
            const auto* first = static_cast<const BYTE*>(bytes);
            values[text.characters] = {typeCode, {first, first + size}};
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE GetNodeValue(ParserNode node, void* buffer, LONG* count, LONG typeCode) override
    {
        const auto& [name, value] = *static_cast<std::pair<const std::string, Value>*>(node);
        Log("GetNodeValue", name.c_str(), typeCode);
        if (Fails() || unreadable.contains(name))
            return E_FAIL;
        if (!value.bytes.empty())
            std::memcpy(buffer, value.bytes.data(), value.bytes.size());
        *count = uncounted.contains(name) ? 0 : static_cast<LONG>(value.bytes.size());
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE FindNode(ParserNode parent, BSTR name, LONG index, ParserNode* node) override
    {
        const Name text(name);
        Log("FindNode", text.characters);
        const auto found = values.find(text.characters);
        if (parent || index != -1 || Fails() || found == values.end())
            return E_FAIL;
        *node = &*found;
        return S_OK;
    }

    Values values;
    std::set<std::string> unreadable;  ///< found, with a failure for their bytes
    std::set<std::string> uncounted;   ///< found, with a count of 0
    int failingCall = 0;               ///< 1 fails the next call, 2 the one after it ...; 0 none

private:
    /// A node's name without an allocation. Takes the BSTR over.
    struct Name {
        explicit Name(BSTR name)
        {
            const UINT length = std::min<UINT>(SysStringLen(name), sizeof characters - 1);
            std::copy_n(name, length, characters);
            SysFreeString(name);
        }
        char characters[64] = {};
    };
    bool Fails() { return failingCall != 0 && --failingCall == 0; }
};

}  // namespace tessara::test

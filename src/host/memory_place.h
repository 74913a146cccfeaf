#pragma once

#include "../platform/com/com_object.h"
#include "../services/parser.h"

#include <map>
#include <string>
#include <vector>

namespace tessara {

/// A place for saved values in memory alone: what a terrain saves into it, another one can load. It delivers values of
/// any size, so a reader must know who wrote them.
class MemoryPlace final : public ComObject<IParser> {
public:
    HRESULT STDMETHODCALLTYPE AddNode(ParserNode parent, BSTR name, const void* bytes, LONG size,
                                      LONG typeCode) override;
    HRESULT STDMETHODCALLTYPE GetNodeValue(ParserNode node, void* buffer, LONG* count, LONG typeCode) override;
    HRESULT STDMETHODCALLTYPE FindNode(ParserNode parent, BSTR name, LONG index, ParserNode* node) override;

protected:
    ~MemoryPlace() override = default;

private:
    std::map<std::string, std::vector<BYTE>, std::less<>> values_;
};

}  // namespace tessara

#pragma once

#include "platform/ui/dialog_template.h"
#include "platform/ui/image.h"

#include <span>
#include <string>

namespace tessara {

struct StringResource {
    UINT id;
    const char* text;
};

/// A picture that is made where it is needed.
struct BitmapResource {
    UINT id;
    Image (*make)();
};

/// Enters resources of one kind, whose ids are unique in the module, into the module's table for as long as it lives. A
/// room that has resources keeps such an object beside the code that uses them.
template <class Resource>
class ResourceTable {
public:
    /// \param resources outlive this object
    explicit ResourceTable(std::span<const Resource> resources) noexcept : resources_(resources), next_(First())
    {
        First() = this;
    }
    ResourceTable(const ResourceTable&) = delete;
    ResourceTable& operator=(const ResourceTable&) = delete;
    ~ResourceTable()
    {
        ResourceTable** link = &First();
        while (*link != this)
            link = &(*link)->next_;
        *link = next_;
    }

    /// \return null for an id that no table has
    static const Resource* Find(UINT id) noexcept
    {
        for (const ResourceTable* table = First(); table; table = table->next_) {
            for (const Resource& resource : table->resources_) {
                if (resource.id == id)
                    return &resource;
            }
        }
        return nullptr;
    }

private:
    static ResourceTable*& First() noexcept
    {
        static ResourceTable* first = nullptr;
        return first;
    }

    std::span<const Resource> resources_;
    ResourceTable* next_;
};

using StringTable = ResourceTable<StringResource>;
using BitmapTable = ResourceTable<BitmapResource>;
using DialogTable = ResourceTable<DialogTemplate>;

}  // namespace tessara

/// A text of the module's string tables. \return empty for an unknown id
inline std::string LoadString(UINT id)
{
    const tessara::StringResource* resource = tessara::StringTable::Find(id);
    return resource ? resource->text : "";
}

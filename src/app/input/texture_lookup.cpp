#include "app/input/texture_lookup.h"

#include "host/textures/database_place.h"

namespace tessara {

std::optional<std::string> KeyOf(TextureStore& store, const std::string& name)
{
    for (const TextureEntry& entry : store.List(kDetailTable)) {
        if (entry.key == name)
            return name;
    }
    return store.FindName(kDetailTable, name);
}

}  // namespace tessara

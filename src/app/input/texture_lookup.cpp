#include "app/input/texture_lookup.h"

#include <stdexcept>

namespace tessara {

std::optional<std::string> KeyOf(TextureStore& store, const std::string& name)
{
    for (const TextureEntry& entry : store.List(kDetailTable)) {
        if (entry.key == name)
            return name;
    }
    return store.FindName(kDetailTable, name);
}

DetailTexture FindDetailTexture(const std::string& name)
{
    for (const bool ofUser : {true, false}) {
        const auto store = OpenStore(ofUser ? UserDatabase() : SystemDatabase());
        const auto key = store ? KeyOf(*store, name) : std::nullopt;
        if (!key)
            continue;
        for (const TextureEntry& entry : store->List(kDetailTable)) {
            if (entry.key == *key)
                return {*key, entry.displayName, ofUser};
        }
    }
    throw std::runtime_error("There is no texture \"" + name + "\". \"tessara textures list\" tells what there is.");
}

}  // namespace tessara

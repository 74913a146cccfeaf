#include "app/input/texture_lookup.h"

#include "platform/system/terminal_text.h"

#include <iostream>
#include <stdexcept>
#include <vector>

namespace tessara {

std::optional<std::string> KeyOf(TextureStore& store, const std::string& name)
{
    for (const TextureEntry& entry : store.List(kDetailTable)) {
        if (entry.key == name)
            return name;
    }
    return store.FindName(kDetailTable, name);
}

void TryDatabase(const DatabasePlace& place, const std::function<void(TextureStore&)>& use)
{
    try {
        if (const auto store = OpenStore(place))
            use(*store);
    } catch (const StorageError& error) {
        std::cerr << "tessara: " << TerminalText(error.what()) << '\n';
    }
}

DetailTexture FindDetailTexture(const std::string& name)
{
    std::optional<DetailTexture> found;
    for (const bool ofUser : {true, false}) {
        TryDatabase(ofUser ? UserDatabase() : SystemDatabase(), [&](TextureStore& store) {
            const auto key = KeyOf(store, name);
            for (const TextureEntry& entry : key ? store.List(kDetailTable) : std::vector<TextureEntry>()) {
                if (entry.key == *key && !found)
                    found = {*key, entry.displayName, ofUser};
            }
        });
        if (found)
            return *found;
    }
    throw std::runtime_error("There is no texture \"" + name + "\". \"tessara textures list\" tells what there is.");
}

}  // namespace tessara

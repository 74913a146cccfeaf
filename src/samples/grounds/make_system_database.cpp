// Makes the database of detail textures that is shipped with the library.
#include "host/textures/texture_store.h"
#include "platform/system/replacement_file.h"
#include "samples/grounds/detail_textures.h"

#include <cstdio>
#include <exception>
#include <string>

namespace {

void Paint(const std::string& path)
{
    tessara::TextureStore store(path, tessara::SqliteFile::Access::ReadWrite);
    for (const tessara::detail::DetailTexture& texture : tessara::detail::DetailTextures()) {
        const tessara::TextureEntry entry = {texture.key, texture.displayName, tessara::detail::kSide,
                                             tessara::detail::kSide, 24};
        store.Add(tessara::kDetailTable, entry, tessara::detail::Paint(texture));
    }
}

void Make(const std::string& path)
{
    tessara::ReplacementFile file(path, tessara::ReplacementFile::Kind::File);
    Paint(file.Path());
    file.PutInPlace();
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: make-system-database FILE\n", stderr);
        return 2;
    }
    const std::string path = argv[1];
    try {
        Make(path);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make-system-database: %s\n", error.what());
        return 1;
    }
}

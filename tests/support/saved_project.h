#pragma once

// A project with something in every value.

#include "support/fake_parser.h"

namespace tessara::test {

/// Texts are longer than a string keeps in itself; the matrix has 3 x 2 cells, the image 2 x 2 pixels of 8 bits.
inline void PutProject(FakeParser& place)
{
    place.Put<float>("KVOxml_LOD", 0x10, {7.0f});
    place.Put<float>("TRANSLATION", 0x10, {1.0f, 2.0f, 3.0f});
    place.Put<float>("ELEVATION_SCALE", 0x10, {4.0f});
    place.Put<float>("MIN_ELEVATION", 0x10, {10.0f});
    place.Put<float>("MAX_ELEVATION", 0x10, {20.0f});
    place.Put<LONG>("MATRIX_WIDTH", 8, {3});
    place.Put<LONG>("MATRIX_HEIGHT", 8, {2});
    place.Put<float>("MATRIX_DATA", 0x10, {0.0f, 0.1f, 0.2f, 0.3f, 0.4f, 0.6f});
    std::vector<BYTE> levels(256);
    for (const char* table : {"PALETTE_INFO_RED", "PALETTE_INFO_GREEN", "PALETTE_INFO_BLUE"}) {
        for (std::size_t i = 0; i < levels.size(); ++i)
            levels[i] = static_cast<BYTE>(table[13] + 3 * i);
        place.Put(table, 0x80, levels);
    }
    std::vector<LONG> nodes(256, 0);
    nodes[3] = nodes[200] = 1;
    place.Put("PALETTE_INFO_ARRAY_NODE", 2, nodes);
    place.Put<float>("PALETTE_INFO_MIN_ELV", 0x10, {5.0f});
    place.Put<float>("PALETTE_INFO_MAX_ELV", 0x10, {255.0f});
    place.Put<LONG>("TEXTURE_SRC_WIDTH", 8, {2});
    place.Put<LONG>("TEXTURE_SRC_HEIGHT", 8, {2});
    place.Put<BYTE>("TEXTURE_SRC_DATA", 0x280, {200, 201, 202, 203});
    place.Put<LONG>("TEXTURE_SRC_BITS", 2, {8});
    place.PutText("TEXTURE_DET_NAME", "a key that is longer than a short string.");
    place.PutText("TEXTURE_DET_TABLE", "a table that is longer than a short string.");
    place.PutText("TEXTURE_DET_NAME_USER", "a display name that is longer than a short string.");
    place.PutText("DATABASE", "USERDB");
    place.Put<LONG>("IS_USING_DETAIL", 2, {0});
    place.Put<LONG>("IS_USING_SOURCE", 2, {0});
    place.Put<float>("DETAIL_TILINGX", 0x10, {2.5f});
    place.Put<float>("DETAIL_TILINGY", 0x10, {3.5f});
    place.Put<LONG>("DETAIL_RGBGAMMA", 2, {4});
}

}  // namespace tessara::test

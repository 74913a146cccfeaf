#include "persistence/saved_value.h"

#include <gtest/gtest.h>

#include <map>

namespace tessara::test {

namespace {

using Integers = std::map<SavedId, LONG>;

bool Has(const char* name, std::int64_t size, const Integers& integers = {})
{
    const auto id = FindSavedValue(name);
    return id && HasSavedSize(*id, size, [&integers](SavedId other) {
               const auto found = integers.find(other);
               return found == integers.end() ? std::nullopt : std::optional(found->second);
           });
}

TEST(SavedValueTest, EachNameCallsForItsSize)
{
    const std::pair<const char*, std::int64_t> sizes[] = {
        {"KVOxml_LOD", 4},           {"TRANSLATION", 12},         {"ELEVATION_SCALE", 4},
        {"MATRIX_HEIGHT", 4},        {"PALETTE_INFO_GREEN", 256}, {"PALETTE_INFO_ARRAY_NODE", 1024},
        {"PALETTE_INFO_MAX_ELV", 4}, {"IS_USING_SOURCE", 4},      {"TEXTURE_SRC_BITS", 4}};
    for (const auto& [name, size] : sizes) {
        EXPECT_TRUE(Has(name, size)) << name;
        for (const std::int64_t other : {std::int64_t{-1}, std::int64_t{0}, size - 1, size + 1, size << 32})
            EXPECT_FALSE(Has(name, other)) << name << ' ' << other;
    }
    for (const char* text : {"DATABASE", "TEXTURE_DET_NAME", "TEXTURE_DET_TABLE", "TEXTURE_DET_NAME_USER"}) {
        for (const std::int64_t size : {0, 1, 2, 1024, 1025})
            EXPECT_EQ(Has(text, size), size >= 1 && size <= 1024) << text << ' ' << size;
    }
    EXPECT_FALSE(Has("SOMEBODY_ELSES", 4));
    EXPECT_FALSE(Has("kvoxml_lod", 4)) << "names are told apart by case";
}

TEST(SavedValueTest, ABlockHasAnItemForEachCellOfItsSize)
{
    const struct {
        LONG width, height;
        std::int64_t size;
        bool fits;
    } matrices[] = {{3, 2, 24, true},
                    {3, 2, 20, false},
                    {3, 2, 28, false},
                    {-3, -2, 24, false},
                    {0, 2, 0, false},
                    {65537, 65536, 65536 * 4, false},  // what the product wraps around to
                    {40000, 40000, std::int64_t{40000} * 40000 * 4, false}};
    for (const auto& m : matrices)
        EXPECT_EQ(Has("MATRIX_DATA", m.size, {{SavedId::MatrixWidth, m.width}, {SavedId::MatrixHeight, m.height}}),
                  m.fits)
            << m.width << " x " << m.height;
    EXPECT_FALSE(Has("MATRIX_DATA", 4, {{SavedId::MatrixWidth, 1}})) << "no height";

    Integers image = {{SavedId::SourceWidth, 5}, {SavedId::SourceHeight, 3}};
    const auto fits = [&image](std::int64_t size, std::optional<LONG> bits) {
        image.erase(SavedId::SourceBits);
        if (bits)
            image[SavedId::SourceBits] = *bits;
        return Has("TEXTURE_SRC_DATA", size, image);
    };
    for (const std::int64_t size : {15, 30, 45, 60, 61}) {
        EXPECT_EQ(fits(size, std::nullopt), size == 15 || size == 45 || size == 60) << size;
        for (const LONG bits : {0, 8, 16, 24, 32})
            EXPECT_EQ(fits(size, bits), bits != 16 && bits != 0 && size == 15 * bits / 8) << size << ' ' << bits;
    }
}

}  // namespace

}  // namespace tessara::test

#include "host/project/value_rules.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace tessara::test {

namespace {

using Integers = std::map<std::string, std::int32_t, std::less<>>;

bool Has(std::string_view name, std::int64_t size, const Integers& integers = {})
{
    return HasSize(RuleOf(name), size, [&integers](std::string_view other) {
        const auto found = integers.find(other);
        return found == integers.end() ? std::nullopt : std::optional(found->second);
    });
}

TEST(ValueRulesTest, EachNameCallsForItsSize)
{
    for (const auto& [name, size] : std::map<std::string, std::int64_t>{{"KVOxml_LOD", 4},
                                                                        {"TRANSLATION", 12},
                                                                        {"MATRIX_WIDTH", 4},
                                                                        {"PALETTE_INFO_GREEN", 256},
                                                                        {"PALETTE_INFO_ARRAY_NODE", 1024},
                                                                        {"PALETTE_INFO_MAX_ELV", 4},
                                                                        {"IS_USING_SOURCE", 4},
                                                                        {"DETAIL_RGBGAMMA", 4}}) {
        EXPECT_TRUE(Has(name, size)) << name;
        for (const std::int64_t other : {std::int64_t{-1}, std::int64_t{0}, size - 1, size + 1, size << 32})
            EXPECT_FALSE(Has(name, other)) << name << ' ' << other;
    }
    for (const std::int64_t size : {1, 2, 1024})
        EXPECT_TRUE(Has("DATABASE", size));
    EXPECT_FALSE(Has("DATABASE", 0));
    EXPECT_FALSE(Has("DATABASE", 1025));
    EXPECT_FALSE(Has("TEXTURE_DET_NAME_USER", 1025));
    EXPECT_FALSE(Has("SOMEBODY_ELSES", 4));
    EXPECT_FALSE(Has("kvoxml_lod", 4)) << "names are told apart by case";
}

TEST(ValueRulesTest, AMatrixHasAFloatForEachCell)
{
    const auto matrix = [](std::int32_t width, std::int32_t height) {
        return Integers{{"MATRIX_WIDTH", width}, {"MATRIX_HEIGHT", height}};
    };
    EXPECT_TRUE(Has("MATRIX_DATA", 24, matrix(3, 2)));
    EXPECT_FALSE(Has("MATRIX_DATA", 20, matrix(3, 2)));
    EXPECT_FALSE(Has("MATRIX_DATA", 28, matrix(3, 2)));
    EXPECT_FALSE(Has("MATRIX_DATA", 24, matrix(-3, -2)));
    EXPECT_FALSE(Has("MATRIX_DATA", 4, {{"MATRIX_WIDTH", 1}}));
    EXPECT_FALSE(Has("MATRIX_DATA", 4, matrix(65537, 65536))) << "65536 cells where the product wraps around";
    EXPECT_FALSE(Has("MATRIX_DATA", std::int64_t{40000} * 40000 * 4, matrix(40000, 40000)));
}

TEST(ValueRulesTest, AnImageGoesByItsDepthOrByAnyKnownOne)
{
    const auto image = [](std::int32_t bits) {
        return Integers{{"TEXTURE_SRC_WIDTH", 5}, {"TEXTURE_SRC_HEIGHT", 3}, {"TEXTURE_SRC_BITS", bits}};
    };
    const Integers noDepth = {{"TEXTURE_SRC_WIDTH", 5}, {"TEXTURE_SRC_HEIGHT", 3}};
    for (const std::int64_t size : {15, 45, 60}) {
        EXPECT_TRUE(Has("TEXTURE_SRC_DATA", size, noDepth));
        EXPECT_TRUE(Has("TEXTURE_SRC_DATA", size, image(static_cast<std::int32_t>(size / 15 * 8))));
        EXPECT_FALSE(Has("TEXTURE_SRC_DATA", size, image(size == 60 ? 24 : 32)));
        EXPECT_FALSE(Has("TEXTURE_SRC_DATA", size, image(0)));
    }
    EXPECT_FALSE(Has("TEXTURE_SRC_DATA", 30, noDepth));
    EXPECT_FALSE(Has("TEXTURE_SRC_DATA", 61, noDepth));
}

}  // namespace

}  // namespace tessara::test

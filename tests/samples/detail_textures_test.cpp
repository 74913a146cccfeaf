#include "host/textures/texture_store.h"
#include "samples/grounds/detail_textures.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>

namespace {

using namespace tessara;
using tessara::detail::kSide;

/// Painted once: it takes a while.
const std::vector<std::uint8_t>& Painted(std::size_t index)
{
    static std::map<std::size_t, std::vector<std::uint8_t>> pixels;
    const auto [place, isNew] = pixels.try_emplace(index);
    if (isNew)
        place->second = detail::Paint(detail::DetailTextures()[index]);
    return place->second;
}

class DetailTextureTest : public testing::TestWithParam<std::size_t> {
protected:
    const detail::DetailTexture& texture_ = detail::DetailTextures()[GetParam()];
    const std::vector<std::uint8_t>& pixels_ = Painted(GetParam());

    int At(int x, int y, int channel) const
    {
        const int index = (y % kSide * kSide + x % kSide) * 3 + channel;
        return pixels_[static_cast<std::size_t>(index)];
    }

    /// Average step of the lightness from one column or row to the next one.
    double Step(int at, bool columns) const
    {
        double sum = 0.0;
        for (int i = 0; i < kSide; ++i)
            sum += columns ? std::abs(At(at, i, 1) - At(at + 1, i, 1)) : std::abs(At(i, at, 1) - At(i, at + 1, 1));
        return sum / kSide;
    }
};

TEST_P(DetailTextureTest, IsMiddleGreyOnAverageWithWeakTints)
{
    double sums[3] = {};
    double squares = 0.0;
    for (std::size_t i = 0; i < pixels_.size(); ++i) {
        sums[i % 3] += pixels_[i];
        squares += i % 3 == 1 ? double{1} * pixels_[i] * pixels_[i] : 0.0;
    }
    const double count = double{kSide} * kSide;
    for (double& sum : sums)
        sum /= count;
    EXPECT_NEAR((sums[0] + sums[1] + sums[2]) / 3.0, 127.5, 5.0);
    for (const double channel : sums)
        EXPECT_NEAR(channel, 127.5, 18.0);
    EXPECT_GT(squares / count - sums[1] * sums[1], 14.0 * 14.0) << "there is something to see";
}

TEST_P(DetailTextureTest, ContinuesPastItsEdges)
{
    for (const bool columns : {true, false}) {
        double inside = 0.0;
        double roughest = 0.0;
        for (int at = 0; at < kSide - 1; ++at) {
            inside += Step(at, columns) / (kSide - 1);
            roughest = std::max(roughest, Step(at, columns));
        }
        EXPECT_LE(Step(kSide - 1, columns), std::max(1.5 * inside, roughest)) << (columns ? "columns" : "rows");
    }
}

TEST_P(DetailTextureTest, StandsInTheShippedDatabaseAsItIsPainted)
{
    const auto store = OpenStore(SystemDatabase());
    const std::vector<TextureEntry> entries = store->List(kDetailTable);
    ASSERT_EQ(entries.size(), detail::DetailTextures().size());
    EXPECT_EQ(entries[GetParam()].key, texture_.key);
    EXPECT_EQ(entries[GetParam()].displayName, texture_.displayName);
    EXPECT_EQ(store->Load(kDetailTable, texture_.key)->pixels, pixels_);
}

INSTANTIATE_TEST_SUITE_P(Textures, DetailTextureTest, testing::Range<std::size_t>(0, 12), [](const auto& index) {
    std::string name = detail::DetailTextures()[index.param].displayName;
    std::erase(name, ' ');
    return name;
});

TEST(DetailTextures, AreADozenOfDifferentKeys)
{
    std::set<std::string> keys;
    for (const detail::DetailTexture& texture : detail::DetailTextures())
        keys.insert(texture.key);
    EXPECT_EQ(keys.size(), 12u);
}

}  // namespace

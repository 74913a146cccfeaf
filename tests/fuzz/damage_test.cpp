// What the fuzz targets find with random inputs, for those who have no fuzzing compiler at hand.

#include "fuzz/targets.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace tessara::test {

namespace {

struct Target {
    const char* name;
    bool (*use)(Damage);
    int rounds;  ///< of an ordinary run
};

class RandomDamage : public testing::TestWithParam<Target> {};

TEST_P(RandomDamage, IsRefusedInWordsOrReadAsSoundData)
{
    EXPECT_TRUE(GetParam().use(Damage(std::vector<std::uint8_t>{1}))) << "no damage at all";
    std::mt19937 random(7);
    int opened = 0;
    // More of it for whoever asks: TESSARA_TEST_ROUNDS=100000.
    const char* asked = std::getenv("TESSARA_TEST_ROUNDS");
    const int rounds = asked ? std::atoi(asked) : GetParam().rounds;
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::uint8_t> input;
        // Mostly little damage: much of it is refused at once.
        for (std::size_t length = 4 + random() % (round % 8 == 0 ? 200 : 20); length > 0; --length)
            input.push_back(static_cast<std::uint8_t>(random() % 3 != 0 ? random() : random() % 3));
        input[0] = static_cast<std::uint8_t>(random());
        opened += GetParam().use(Damage(input)) ? 1 : 0;
    }
    std::printf("%d of %d damaged files were opened\n", opened, rounds);
    EXPECT_GT(opened, rounds / 50) << "hardly any damage got past the opening";
    EXPECT_LT(opened, rounds * 98 / 100) << "damage passed unseen";
}

INSTANTIATE_TEST_SUITE_P(Files, RandomDamage,
                         testing::Values(Target{"Elevation", &UseDamagedElevation, 400},
                                         Target{"Image", &UseDamagedImage, 400},
                                         Target{"Project", &UseDamagedProject, 800},
                                         Target{"Database", &UseDamagedDatabase, 400},
                                         Target{"Registry", &UseDamagedRegistry, 400}),
                         [](const auto& target) { return std::string(target.param.name); });

}  // namespace

}  // namespace tessara::test

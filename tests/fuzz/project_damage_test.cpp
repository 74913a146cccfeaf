// What the fuzz target finds with random inputs, for those who have no fuzzing compiler at hand.

#include "fuzz/project_fuzz.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace tessara::test {

namespace {

TEST(ProjectDamage, RandomDamageIsRefusedInWordsOrRead)
{
    std::mt19937 random(7);
    int opened[4] = {};
    int rounds[4] = {};
    // More of it for whoever asks: TESSARA_TEST_ROUNDS=100000.
    const char* asked = std::getenv("TESSARA_TEST_ROUNDS");
    const int most = asked ? std::atoi(asked) : 1600;
    for (int round = 0; round < most; ++round) {
        const unsigned kind = random() % 4;
        std::vector<std::uint8_t> input{static_cast<std::uint8_t>(kind)};
        // Mostly little damage: much of it is refused at once.
        for (std::size_t length = 3 + random() % (kind == 1 ? 20 : 200); length > 0; --length)
            input.push_back(static_cast<std::uint8_t>(random() % 3 != 0 ? random() : random() % 3));
        ++rounds[kind];
        opened[kind] += UseDamagedProject(input) ? 1 : 0;
    }
    EXPECT_GT(opened[1], 50) << "hardly any damage got past the opening";
    EXPECT_LT(opened[1], rounds[1]) << "all damage passed unseen";
    EXPECT_EQ(opened[2] + opened[3], rounds[2] + rounds[3]);
}

TEST(ProjectDamage, ACutProjectIsRefused)
{
    EXPECT_FALSE(UseDamagedProject(std::vector<std::uint8_t>{0, 0, 0, 50}));
    EXPECT_FALSE(UseDamagedProject(std::vector<std::uint8_t>{0, 0, 0x80, 0}));
    EXPECT_TRUE(UseDamagedProject(std::vector<std::uint8_t>{1})) << "no damage at all";
}

}  // namespace

}  // namespace tessara::test

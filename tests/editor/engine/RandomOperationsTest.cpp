// Seeded random edits checked after every step against a plain string model.
#include "EditingScript.h"

#include <gtest/gtest.h>

#include <random>

TEST(RandomOperations, TextMatchesAPlainStringAndCopiesStayUntouched) {
    for (std::uint32_t seed = 1; seed <= 400; ++seed) {
        std::mt19937 random(seed);
        test::EditingScript script([&](std::uint64_t low, std::uint64_t high) {
            return std::uniform_int_distribution<std::uint64_t>(low, high)(random);
        });
        script.Start();
        for (int step = 0; step < 40; ++step) {
            const std::string operation = script.Step();
            ASSERT_EQ(script.Check(), "") << operation << " at step " << step << ", seed " << seed;
        }
        ASSERT_EQ(script.CheckRevert(), "") << "seed " << seed;
    }
}

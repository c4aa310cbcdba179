#include "zelmediatypes/FrameRate.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>

using zelmediatypes::FrameRate;
using zelmediatypes::kTicksPerSecond;

TEST(FrameRate, EveryStandardRateHasItsExactTicksPerFrame) {
    struct Expected {
        FrameRate rate;
        std::int64_t ticksPerFrame;
        std::int64_t timecodeFramesPerSecond;
        bool dropFrame;
    };
    // Ticks per frame worked out by hand as 254016000000 * denominator / numerator.
    const Expected expected[] = {
        {zelmediatypes::kFrameRate_23976, 10594584000, 24, false},
        {zelmediatypes::kFrameRate_24, 10584000000, 24, false},
        {zelmediatypes::kFrameRate_25, 10160640000, 25, false},
        {zelmediatypes::kFrameRate_2997, 8475667200, 30, true},
        {zelmediatypes::kFrameRate_30, 8467200000, 30, false},
        {zelmediatypes::kFrameRate_50, 5080320000, 50, false},
        {zelmediatypes::kFrameRate_5994, 4237833600, 60, true},
        {zelmediatypes::kFrameRate_60, 4233600000, 60, false},
    };
    ASSERT_EQ(std::size(expected), zelmediatypes::kStandardFrameRates.size());
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const Expected& e = expected[i];
        SCOPED_TRACE(testing::PrintToString(e.rate));
        EXPECT_EQ(zelmediatypes::kStandardFrameRates[i], e.rate);
        EXPECT_EQ(e.rate.TicksPerFrame(), e.ticksPerFrame);
        EXPECT_EQ(e.rate.TicksPerFrame() * e.rate.FramesPerSecondNumerator(),
                  kTicksPerSecond * e.rate.FramesPerSecondDenominator())
            << "a frame is not a whole number of ticks";
        EXPECT_EQ(e.rate.TimecodeFramesPerSecond(), e.timecodeFramesPerSecond);
        EXPECT_EQ(e.rate.SupportsDropFrame(), e.dropFrame);
    }
}

TEST(FrameRate, FractionsAreReducedSoEqualRatesCompareEqual) {
    const auto rate = FrameRate::FromFramesPerSecond(60000, 2002);
    ASSERT_TRUE(rate.has_value());
    EXPECT_EQ(*rate, zelmediatypes::kFrameRate_2997);
    EXPECT_EQ(FrameRate::FromFramesPerSecond(50, 2), zelmediatypes::kFrameRate_25);
}

TEST(FrameRate, RatesWithoutWholeTicksPerFrameDoNotExist) {
    EXPECT_EQ(FrameRate::FromFramesPerSecond(11, 1), std::nullopt)
        << "11 does not divide the tick rate";
    EXPECT_EQ(FrameRate::FromFramesPerSecond(0, 1), std::nullopt);
    EXPECT_EQ(FrameRate::FromFramesPerSecond(24, 0), std::nullopt);
    EXPECT_EQ(FrameRate::FromFramesPerSecond(-24, 1), std::nullopt);
    EXPECT_EQ(FrameRate::FromFramesPerSecond(1, std::numeric_limits<std::int64_t>::max()),
              std::nullopt)
        << "must not overflow";
    EXPECT_TRUE(FrameRate::FromFramesPerSecond(15, 1).has_value());
}

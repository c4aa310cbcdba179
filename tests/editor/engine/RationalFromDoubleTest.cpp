#include "caption_editor/RationalFromDouble.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <utility>

using caption_editor::RationalFromDouble;
using Rational = boost::rational<std::int64_t>;

TEST(RationalFromDouble, TypedDecimalsAndSimpleRatiosComeBackExact) {
    const std::pair<double, Rational> table[] = {
        {0.5, {1, 2}},
        {0.25, {1, 4}},
        {0.1, {1, 10}},
        {0.1234, {617, 5000}},
        {1.0 / 3, {1, 3}},
        {0.0, {0, 1}},
        {1.0, {1, 1}},
        {-0.75, {-3, 4}},
        {0.1 + 0.2, {3, 10}},
        {12.34 / 100, {617, 5000}},
        {0.999999, {999999, 1000000}},
    };
    for (const auto& [value, expected] : table) {
        EXPECT_EQ(RationalFromDouble(value), expected) << value;
    }
}

TEST(RationalFromDouble, WithoutAnExactFractionGivesTheNearestWithinTheBound) {
    EXPECT_EQ(RationalFromDouble(std::numbers::pi, 1000), Rational(355, 113));
    EXPECT_EQ(RationalFromDouble(std::numbers::pi, 100), Rational(311, 99))
        << "a semiconvergent beats 22/7";
    EXPECT_EQ(RationalFromDouble(-std::numbers::sqrt2, 1000), Rational(-1393, 985));
    EXPECT_EQ(RationalFromDouble(0.4, 0), Rational(0)) << "a bound below 1 counts as 1";
    EXPECT_EQ(RationalFromDouble(1e-20), Rational(0));
}

TEST(RationalFromDouble, NonFiniteAndHugeValuesNeverOverflow) {
    constexpr std::int64_t kClamped = std::int64_t{1} << 62;
    EXPECT_EQ(RationalFromDouble(std::numeric_limits<double>::quiet_NaN()), Rational(0));
    EXPECT_EQ(RationalFromDouble(std::numeric_limits<double>::infinity()), Rational(kClamped));
    EXPECT_EQ(RationalFromDouble(-1e300), Rational(-kClamped));
    EXPECT_EQ(RationalFromDouble(0x1p52 + 1), Rational((std::int64_t{1} << 52) + 1));
    EXPECT_EQ(RationalFromDouble(1000.125), Rational(8001, 8));
    // Any denominator allowed: the numerator bound must stop the search.
    for (const double value : {0x1p51 + 0.5, 123456789.123456789, 1.0 / 3e12}) {
        const Rational result = RationalFromDouble(value, std::numeric_limits<std::int64_t>::max());
        EXPECT_LE(std::fabs(boost::rational_cast<double>(result) - value),
                  4 * std::numeric_limits<double>::epsilon() * value)
            << value << " gave " << result;
    }
}

TEST(RationalFromDouble, DecimalsAndFractionsRoundTripThroughDouble) {
    for (std::int64_t k = -10000; k <= 10000; ++k) {
        const auto value = static_cast<double>(k);
        ASSERT_EQ(RationalFromDouble(value / 10000), Rational(k, 10000)) << k;
        ASSERT_EQ(RationalFromDouble(value / 100 / 100), Rational(k, 10000)) << k << " percent";
    }
    std::mt19937_64 random(20240611);
    std::uniform_int_distribution<std::int64_t> millionths(0, 1'000'000);
    std::uniform_int_distribution<std::int64_t> denominators(1, 100'000);
    for (int i = 0; i < 20000; ++i) {
        const std::int64_t k = millionths(random);
        ASSERT_EQ(RationalFromDouble(static_cast<double>(k) / 1e6), Rational(k, 1'000'000)) << k;
        const std::int64_t denominator = denominators(random);
        const Rational exact(
            std::uniform_int_distribution<std::int64_t>(-3 * denominator, 3 * denominator)(random),
            denominator);
        ASSERT_EQ(RationalFromDouble(boost::rational_cast<double>(exact)), exact) << exact;
    }
}

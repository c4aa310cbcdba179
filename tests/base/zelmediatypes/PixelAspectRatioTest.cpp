#include "zelmediatypes/PixelAspectRatio.h"

#include <gtest/gtest.h>

#include <stdexcept>

using zelmediatypes::PixelAspectRatio;

TEST(PixelAspectRatio, IsAReducedPositiveFraction) {
    EXPECT_TRUE(PixelAspectRatio().IsSquare());
    const PixelAspectRatio anamorphic(1440, 1080);
    EXPECT_EQ(anamorphic.Numerator(), 4);
    EXPECT_EQ(anamorphic.Denominator(), 3);
    EXPECT_EQ(anamorphic, PixelAspectRatio(4, 3));
    EXPECT_DOUBLE_EQ(PixelAspectRatio(10, 11).ToDouble(), 10.0 / 11.0);
    EXPECT_TRUE(PixelAspectRatio(7, 7).IsSquare());
    EXPECT_THROW(PixelAspectRatio(0, 1), std::invalid_argument);
    EXPECT_THROW(PixelAspectRatio(-10, -11), std::invalid_argument);
}

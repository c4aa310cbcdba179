// Frame rates as people write them.
#include "TimeDisplayNames.h"

#include <gtest/gtest.h>

namespace {

TEST(FrameRateTextTest, ShowsDecimalsOnlyWhereTheRateHasThem) {
    using namespace zelmediatypes;
    EXPECT_EQ(host::FrameRateText(kFrameRate_2997), QStringLiteral("29.97"));
    EXPECT_EQ(host::FrameRateText(kFrameRate_23976), QStringLiteral("23.976"));
    EXPECT_EQ(host::FrameRateText(kFrameRate_5994), QStringLiteral("59.94"));
    EXPECT_EQ(host::FrameRateText(kFrameRate_25), QStringLiteral("25"));
    EXPECT_EQ(host::FrameRateText(kFrameRate_50), QStringLiteral("50"));
    EXPECT_EQ(host::FrameRateText(*FrameRate::FromFramesPerSecond(25, 2)), QStringLiteral("12.5"));
}

} // namespace

#include "zelmediatypes/TickTime.h"

#include "zelmediatypes/FrameRate.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <sstream>
#include <stdexcept>

using zelmediatypes::kTicksPerSecond;
using zelmediatypes::kTime_Max;
using zelmediatypes::kTime_Min;
using zelmediatypes::kTime_Zero;
using zelmediatypes::TickTime;

namespace {

constexpr std::int64_t kInt64Max = std::numeric_limits<std::int64_t>::max();
constexpr TickTime kOneTick{1};

} // namespace

TEST(TickTime, RangeIsSymmetricSoNegationNeverOverflows) {
    EXPECT_EQ(kTime_Max.GetTicks(), kInt64Max);
    EXPECT_EQ(kTime_Min.GetTicks(), -kInt64Max);
    EXPECT_EQ(-kTime_Min, kTime_Max);
    EXPECT_EQ(-kTime_Max, kTime_Min);
    EXPECT_EQ(TickTime(std::numeric_limits<std::int64_t>::min()), kTime_Min);
}

TEST(TickTime, ArithmeticSaturatesAtBothEnds) {
    EXPECT_EQ(kTime_Max + kOneTick, kTime_Max);
    EXPECT_EQ(kTime_Min - kOneTick, kTime_Min);
    EXPECT_EQ(kTime_Max - kTime_Min, kTime_Max);
    EXPECT_EQ(kTime_Min - kTime_Max, kTime_Min);
    EXPECT_EQ(kTime_Max * 2, kTime_Max);
    EXPECT_EQ(kTime_Max * -2, kTime_Min);
    EXPECT_EQ(-3 * kTime_Min, kTime_Max);
    EXPECT_EQ(TickTime::FromSeconds(kInt64Max / kTicksPerSecond + 1), kTime_Max);
    EXPECT_EQ(TickTime::FromSeconds(-kInt64Max / kTicksPerSecond - 1), kTime_Min);
    EXPECT_EQ(kTime_Min / -1, kTime_Max);

    TickTime t = kTime_Max;
    t += kOneTick;
    EXPECT_EQ(t, kTime_Max);
    t -= kOneTick;
    EXPECT_EQ(t.GetTicks(), kInt64Max - 1) << "the ends are not sticky";
}

TEST(TickTime, ArithmeticAwayFromTheEndsIsExact) {
    const TickTime oneSecond = TickTime::FromSeconds(1);
    EXPECT_EQ(oneSecond.GetTicks(), kTicksPerSecond);
    EXPECT_EQ((oneSecond * 3 - oneSecond / 2).GetTicks(), kTicksPerSecond * 5 / 2);
    EXPECT_EQ(TickTime(-7) / 2, TickTime(-3)) << "division truncates towards zero";
    EXPECT_LT(kTime_Min, TickTime(-1));
    EXPECT_LT(TickTime(-1), kTime_Zero);
    EXPECT_THROW(oneSecond / 0, std::domain_error);
}

TEST(TickTime, AlignToFrameSnapsDownToTheStartOfTheFrame) {
    const TickTime frame = zelmediatypes::kFrameRate_2997.FrameDuration();
    EXPECT_EQ(kTime_Zero.AlignToFrame(frame), kTime_Zero);
    EXPECT_EQ((frame * 5).AlignToFrame(frame), frame * 5);
    EXPECT_EQ((frame * 5 - kOneTick).AlignToFrame(frame), frame * 4);
    EXPECT_EQ((frame * 5 + kOneTick).AlignToFrame(zelmediatypes::kFrameRate_2997), frame * 5);
}

TEST(TickTime, AlignToFrameMovesNegativeTimesAwayFromZero) {
    const TickTime frame = zelmediatypes::kFrameRate_25.FrameDuration();
    EXPECT_EQ(TickTime(-1).AlignToFrame(frame), -frame);
    EXPECT_EQ((-frame).AlignToFrame(frame), -frame);
    EXPECT_EQ((-frame - kOneTick).AlignToFrame(frame), frame * -2);
}

TEST(TickTime, AlignToFrameAtTheEnds) {
    const TickTime frame = zelmediatypes::kFrameRate_5994.FrameDuration();
    const TickTime alignedMax = kTime_Max.AlignToFrame(frame);
    EXPECT_EQ(alignedMax.GetTicks() % frame.GetTicks(), 0);
    EXPECT_LT(kTime_Max - alignedMax, frame);
    EXPECT_EQ(kTime_Min.AlignToFrame(frame), kTime_Min)
        << "the frame holding kTime_Min starts below it, so the result saturates";
    EXPECT_THROW(kTime_Zero.AlignToFrame(kTime_Zero), std::invalid_argument);
    EXPECT_THROW(kTime_Zero.AlignToFrame(-frame), std::invalid_argument);
}

TEST(TickTime, PrintsTicksAndSeconds) {
    std::ostringstream os;
    os << TickTime(kTicksPerSecond * 3 / 2) << ' ' << kTime_Max << ' ' << kTime_Min;
    EXPECT_EQ(os.str(), "381024000000 ticks (1.5 s) kTime_Max kTime_Min");
}

#include "HSL/TimecodeInfo.h"

#include <gtest/gtest.h>

using namespace zelmediatypes;

TEST(TimecodeInfo, TimecodeDisplaysCountTheirOwnFramesOthersTheMedias) {
    const UIF::TimecodeInfo dropFrame =
        HSL::GetTimecodeInfo(kTimeDisplay_2997DropTimecode, kFrameRate_25, true);
    EXPECT_EQ(dropFrame.timeDisplay, kTimeDisplay_2997DropTimecode);
    EXPECT_EQ(dropFrame.frameDuration, kFrameRate_2997.FrameDuration());
    EXPECT_TRUE(dropFrame.alignToFrame);

    const UIF::TimecodeInfo frames = HSL::GetTimecodeInfo(kTimeDisplay_Frames, kFrameRate_50, true);
    EXPECT_EQ(frames.frameDuration, kFrameRate_50.FrameDuration());

    EXPECT_FALSE(HSL::GetTimecodeInfo(kTimeDisplay_Milliseconds, kFrameRate_25, true).alignToFrame)
        << "audio units are finer than frames";
    EXPECT_FALSE(HSL::GetTimecodeInfo(kTimeDisplay_25Timecode, kFrameRate_25, false).alignToFrame);
}

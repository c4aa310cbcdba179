#include "zelmediatypes/TimeDisplay.h"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>

using namespace zelmediatypes;

TEST(TimeDisplay, TimecodeDisplaysImplyTheRateTheyCount) {
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_23976Timecode), kFrameRate_23976);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_24Timecode), kFrameRate_24);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_25Timecode), kFrameRate_25);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_2997DropTimecode), kFrameRate_2997);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_2997NonDropTimecode), kFrameRate_2997);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_30Timecode), kFrameRate_30);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_50Timecode), kFrameRate_50);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_5994DropTimecode), kFrameRate_5994);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_5994NonDropTimecode), kFrameRate_5994);
    EXPECT_EQ(VideoFrameRate(kTimeDisplay_60Timecode), kFrameRate_60);
}

TEST(TimeDisplay, OtherDisplaysAndUnknownNumbersImplyNoRate) {
    for (const TimeDisplay display :
         {kTimeDisplay_Frames, kTimeDisplay_AudioSamples48kHz, kTimeDisplay_Milliseconds,
          kTimeDisplay_Unknown, static_cast<TimeDisplay>(4242)}) {
        EXPECT_EQ(VideoFrameRate(display), std::nullopt) << display;
        EXPECT_FALSE(IsDropFrame(display)) << display;
    }
    EXPECT_EQ(kTimeDisplay_Unknown, 999) << "stored in projects as 'not yet known'";
}

TEST(TimeDisplay, DropFrameDisplaysUseRatesThatSupportIt) {
    for (const TimeDisplay display :
         {kTimeDisplay_2997DropTimecode, kTimeDisplay_5994DropTimecode}) {
        EXPECT_TRUE(IsDropFrame(display)) << display;
        EXPECT_TRUE(VideoFrameRate(display)->SupportsDropFrame()) << display;
    }
    EXPECT_FALSE(IsDropFrame(kTimeDisplay_2997NonDropTimecode));
}

TEST(TimeDisplay, EveryTimecodeRateStartsInItsOwnTimecodeAndOthersInFrames) {
    for (const FrameRate& rate : kStandardFrameRates) {
        const TimeDisplay display = TimecodeDisplayForFrameRate(rate);
        if (display == kTimeDisplay_Frames) {
            continue;
        }
        EXPECT_EQ(VideoFrameRate(display), rate) << display;
        EXPECT_EQ(IsDropFrame(display), rate.SupportsDropFrame()) << display;
    }
    EXPECT_EQ(TimecodeDisplayForFrameRate(kFrameRate_2997), kTimeDisplay_2997DropTimecode);
    EXPECT_EQ(TimecodeDisplayForFrameRate(kFrameRate_25), kTimeDisplay_25Timecode);
    EXPECT_EQ(TimecodeDisplayForFrameRate(*FrameRate::FromFramesPerSecond(15, 1)),
              kTimeDisplay_Frames);
}

TEST(TimeDisplay, OnlySamplesAndMillisecondsCountAudio) {
    EXPECT_TRUE(IsAudioTimeDisplay(kTimeDisplay_AudioSamples48kHz));
    EXPECT_TRUE(IsAudioTimeDisplay(kTimeDisplay_Milliseconds));
    for (const TimeDisplay display :
         {kTimeDisplay_Frames, kTimeDisplay_25Timecode, kTimeDisplay_Unknown}) {
        EXPECT_FALSE(IsAudioTimeDisplay(display)) << display;
    }
}

TEST(TimeDisplay, PrintsNamesAndUnnamedNumbers) {
    std::ostringstream os;
    os << kTimeDisplay_5994DropTimecode << ' ' << static_cast<TimeDisplay>(4242);
    EXPECT_EQ(os.str(), "kTimeDisplay_5994DropTimecode TimeDisplay(4242)");
}

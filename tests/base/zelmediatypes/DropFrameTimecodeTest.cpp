// Every drop-frame label of a day, checked against libavutil's timecode functions.
#include "zelmediatypes/TimeLabel.h"

extern "C" {
#include <libavutil/rational.h>
#include <libavutil/timecode.h>
}

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

using namespace zelmediatypes;

#if defined(__SANITIZE_ADDRESS__)
// libavutil formats every oracle label with snprintf, and AddressSanitizer's check of each printf
// call would double the time of the day-long loops below. The only printf caller in this binary
// is libavutil, writing into the oracle's fixed buffer.
extern "C" const char* __asan_default_options() {
    return "check_printf=0";
}
#endif

namespace {

void ExpectADayOfLabelsMatchesLibavutil(TimeDisplay display, AVRational rate) {
    AVTimecode oracle{};
    ASSERT_EQ(av_timecode_init(&oracle, rate, AV_TIMECODE_FLAG_DROPFRAME, 0, nullptr), 0);
    const FrameRate frameRate = VideoFrameRate(display).value();
    const std::int64_t labelsPerDay = 24 * 3600 * frameRate.TimecodeFramesPerSecond();
    const std::int64_t droppedPerDay = 24 * 54 * frameRate.TimecodeFramesPerSecond() / 15;
    const std::int64_t framesPerDay = labelsPerDay - droppedPerDay;

    char expected[AV_TIMECODE_STR_SIZE];
    for (std::int64_t frame = 0; frame < framesPerDay; ++frame) {
        const TickTime time = frameRate.FrameDuration() * frame;
        const std::string label = FormatTimeLabel(time, display, frameRate);
        av_timecode_make_string(&oracle, expected, static_cast<int>(frame));
        if (label != expected) {
            FAIL() << "frame " << frame << ": " << label << ", libavutil says " << expected;
        }
        const TimeLabelParse parse = ParseTimeLabel(label, display, frameRate);
        if (parse.time != time) {
            FAIL() << "frame " << frame << ": " << label << " parses as " << parse;
        }
    }
    // The loop covered exactly one day, and labels go on past 24 hours rather than wrapping.
    EXPECT_EQ(std::string(expected),
              frameRate.TimecodeFramesPerSecond() == 30 ? "23:59:59;29" : "23:59:59;59");
    EXPECT_EQ(FormatTimeLabel(frameRate.FrameDuration() * framesPerDay, display, frameRate),
              "24:00:00;00");
}

} // namespace

TEST(DropFrameTimecode, EveryLabelOfADayAt2997MatchesLibavutilAndParsesBack) {
    ExpectADayOfLabelsMatchesLibavutil(kTimeDisplay_2997DropTimecode, AVRational{30000, 1001});
}

TEST(DropFrameTimecode, EveryLabelOfADayAt5994MatchesLibavutilAndParsesBack) {
    ExpectADayOfLabelsMatchesLibavutil(kTimeDisplay_5994DropTimecode, AVRational{60000, 1001});
}

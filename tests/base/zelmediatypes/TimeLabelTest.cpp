#include "zelmediatypes/TimeLabel.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

using namespace zelmediatypes;

namespace {

TickTime Frames(std::int64_t count, const FrameRate& rate) {
    return rate.FrameDuration() * count;
}

std::string Label(TickTime time, TimeDisplay display, const FrameRate& mediaRate = kFrameRate_25) {
    return FormatTimeLabel(time, display, mediaRate);
}

std::string ParseError(std::string_view label, TimeDisplay display) {
    const TimeLabelParse parse = ParseTimeLabel(label, display, kFrameRate_25);
    EXPECT_FALSE(parse.time.has_value()) << label << " parsed as " << parse;
    return parse.error;
}

} // namespace

TEST(TimeLabel, NonDropTimecodeCountsEveryFrame) {
    EXPECT_EQ(Label(Frames(24, kFrameRate_25), kTimeDisplay_25Timecode), "00:00:00:24");
    EXPECT_EQ(Label(Frames(25, kFrameRate_25), kTimeDisplay_25Timecode), "00:00:01:00");
    EXPECT_EQ(Label(Frames(59, kFrameRate_60), kTimeDisplay_60Timecode), "00:00:00:59");
    EXPECT_EQ(Label(Frames(86400, kFrameRate_23976), kTimeDisplay_23976Timecode), "01:00:00:00");
    // An hour of 29.97 video counted at 30 labels a second falls 3.6 seconds short.
    EXPECT_EQ(Label(TickTime::FromSeconds(3600), kTimeDisplay_2997NonDropTimecode), "00:59:56:12");
    EXPECT_EQ(Label(TickTime::FromSeconds(3600), kTimeDisplay_5994NonDropTimecode), "00:59:56:24");
    EXPECT_EQ(Label(TickTime::FromSeconds(25 * 3600), kTimeDisplay_30Timecode), "25:00:00:00");
}

TEST(TimeLabel, ATimeBetweenFramesShowsTheFrameHoldingIt) {
    const TickTime frame = kFrameRate_24.FrameDuration();
    EXPECT_EQ(Label(frame * 2 - TickTime(1), kTimeDisplay_24Timecode), "00:00:00:01");
    EXPECT_EQ(Label(TickTime(-1), kTimeDisplay_24Timecode), "-00:00:00:01");
    EXPECT_EQ(Label(-frame, kTimeDisplay_24Timecode), "-00:00:00:01");
    EXPECT_EQ(Label(-frame * 24 - TickTime(1), kTimeDisplay_24Timecode), "-00:00:01:01");
    EXPECT_EQ(Label(-Frames(1800, kFrameRate_2997), kTimeDisplay_2997DropTimecode), "-00:01:00;02");
}

TEST(TimeLabel, FramesAndAudioDisplays) {
    const TickTime oneAndAHalfSeconds = TickTime::FromSeconds(3) / 2;
    EXPECT_EQ(Label(oneAndAHalfSeconds, kTimeDisplay_Frames, kFrameRate_50), "75");
    EXPECT_EQ(Label(oneAndAHalfSeconds, kTimeDisplay_Frames, kFrameRate_2997), "44");
    EXPECT_EQ(Label(TickTime(-1), kTimeDisplay_Frames), "-1");
    EXPECT_EQ(Label(oneAndAHalfSeconds, kTimeDisplay_AudioSamples48kHz), "00:00:01:24000");
    EXPECT_EQ(Label(TickTime::FromSeconds(61) / 1000, kTimeDisplay_Milliseconds), "00:00:00.061");
    EXPECT_EQ(Label(TickTime(-1), kTimeDisplay_Milliseconds), "-00:00:00.001");
}

TEST(TimeLabel, ParsingAcceptsAnySeparatorAndFewerFields) {
    const auto parse = [](std::string_view label, TimeDisplay display) {
        return ParseTimeLabel(label, display, kFrameRate_25).time;
    };
    EXPECT_EQ(parse("00:00:01:00", kTimeDisplay_25Timecode), TickTime::FromSeconds(1));
    EXPECT_EQ(parse("00.00;01:00", kTimeDisplay_25Timecode), TickTime::FromSeconds(1));
    EXPECT_EQ(parse("1:00", kTimeDisplay_25Timecode), TickTime::FromSeconds(1));
    EXPECT_EQ(parse("7", kTimeDisplay_25Timecode), Frames(7, kFrameRate_25));
    EXPECT_EQ(parse("2:00:00", kTimeDisplay_25Timecode), TickTime::FromSeconds(120));
    EXPECT_EQ(parse("-00:00:01:00", kTimeDisplay_25Timecode), TickTime::FromSeconds(-1));
    EXPECT_EQ(parse("01:00;02", kTimeDisplay_2997DropTimecode), Frames(1800, kFrameRate_2997));
    EXPECT_EQ(parse("00:01:00:02", kTimeDisplay_2997NonDropTimecode),
              Frames(1802, kFrameRate_2997));
    EXPECT_EQ(parse("100:00:00:00", kTimeDisplay_24Timecode), TickTime::FromSeconds(360000));
    EXPECT_EQ(parse("-75", kTimeDisplay_Frames), TickTime::FromSeconds(-3));
    EXPECT_EQ(parse("00:00:01:24000", kTimeDisplay_AudioSamples48kHz),
              TickTime::FromSeconds(3) / 2);
    EXPECT_EQ(parse("1.5", kTimeDisplay_Milliseconds),
              TickTime::FromSeconds(1) + TickTime::FromSeconds(5) / 1000);
}

TEST(TimeLabel, ParsingNamesWhatIsWrong) {
    EXPECT_EQ(ParseError("", kTimeDisplay_25Timecode), "the label is empty");
    EXPECT_EQ(ParseError("-", kTimeDisplay_25Timecode), "no digits after '-'");
    EXPECT_EQ(ParseError("00:0x:00", kTimeDisplay_25Timecode),
              "unexpected character 'x' at position 5");
    EXPECT_EQ(ParseError("--1", kTimeDisplay_25Timecode), "unexpected character '-' at position 2");
    EXPECT_EQ(ParseError(" 1", kTimeDisplay_25Timecode), "unexpected character ' ' at position 1");
    EXPECT_EQ(ParseError("01::00", kTimeDisplay_25Timecode), "field 2 is empty");
    EXPECT_EQ(ParseError("01:00:", kTimeDisplay_25Timecode), "field 3 is empty");
    EXPECT_EQ(ParseError("1:2:3:4:5", kTimeDisplay_25Timecode), "too many fields: at most 4");
    EXPECT_EQ(ParseError("1:2", kTimeDisplay_Frames), "too many fields: at most 1");
    EXPECT_EQ(ParseError("00:00:00:25", kTimeDisplay_25Timecode), "frame 25 out of range 0-24");
    EXPECT_EQ(ParseError("00:00:00:30", kTimeDisplay_2997NonDropTimecode),
              "frame 30 out of range 0-29");
    EXPECT_EQ(ParseError("00:00:60:00", kTimeDisplay_25Timecode), "seconds 60 out of range 0-59");
    EXPECT_EQ(ParseError("00:60:00:00", kTimeDisplay_25Timecode), "minutes 60 out of range 0-59");
    EXPECT_EQ(ParseError("90:00", kTimeDisplay_25Timecode), "seconds 90 out of range 0-59");
    EXPECT_EQ(ParseError("00:00:00.1000", kTimeDisplay_Milliseconds),
              "millisecond 1000 out of range 0-999");
    EXPECT_EQ(ParseError("99999999999999999999", kTimeDisplay_Frames),
              "the number at position 19 is too large");
    EXPECT_EQ(ParseError("9999999999:00:00:00", kTimeDisplay_25Timecode),
              "the time is out of range");
    EXPECT_EQ(ParseError("-999999999999", kTimeDisplay_Frames), "the time is out of range");
}

TEST(TimeLabel, ParsingRejectsLabelsThatDropFrameTimecodeLeavesOut) {
    EXPECT_EQ(
        ParseError("00:01:00;01", kTimeDisplay_2997DropTimecode),
        "00:01:00;01 is not a drop-frame label: minutes not divisible by ten start at frame 02");
    EXPECT_EQ(
        ParseError("1:00;00", kTimeDisplay_2997DropTimecode),
        "00:01:00;00 is not a drop-frame label: minutes not divisible by ten start at frame 02");
    EXPECT_EQ(
        ParseError("05:59:00;03", kTimeDisplay_5994DropTimecode),
        "05:59:00;03 is not a drop-frame label: minutes not divisible by ten start at frame 04");
    const TickTime atTenMinutes =
        ParseTimeLabel("00:10:00;00", kTimeDisplay_2997DropTimecode, kFrameRate_25).time.value();
    EXPECT_EQ(atTenMinutes, Frames(17982, kFrameRate_2997));
    EXPECT_TRUE(ParseTimeLabel("00:01:00;04", kTimeDisplay_5994DropTimecode, kFrameRate_25).time);
}

TEST(TimeLabel, ParsingAFormattedLabelGivesTheStartOfItsUnit) {
    const TimeDisplay displays[] = {
        kTimeDisplay_23976Timecode,     kTimeDisplay_25Timecode,
        kTimeDisplay_2997DropTimecode,  kTimeDisplay_2997NonDropTimecode,
        kTimeDisplay_5994DropTimecode,  kTimeDisplay_Frames,
        kTimeDisplay_AudioSamples48kHz, kTimeDisplay_Milliseconds};
    const TickTime times[] = {kTime_Zero,
                              TickTime(1),
                              TickTime(-1),
                              TickTime::FromSeconds(-3725) - TickTime(12345),
                              TickTime::FromSeconds(100 * 3600) + TickTime(987654321),
                              kTime_Max,
                              kTime_Min + TickTime::FromSeconds(1)};
    for (const TimeDisplay display : displays) {
        const TickTime unit = display == kTimeDisplay_AudioSamples48kHz
                                  ? TickTime(kTicksPerSecond / 48000)
                              : display == kTimeDisplay_Milliseconds
                                  ? TickTime(kTicksPerSecond / 1000)
                                  : VideoFrameRate(display).value_or(kFrameRate_50).FrameDuration();
        for (const TickTime time : times) {
            const std::string label = FormatTimeLabel(time, display, kFrameRate_50);
            EXPECT_EQ(ParseTimeLabel(label, display, kFrameRate_50).time, time.AlignToFrame(unit))
                << display << ' ' << label;
        }
    }
}

TEST(TimeLabel, DisplaysWithoutLabelsAreRejected) {
    EXPECT_THROW(FormatTimeLabel(kTime_Zero, kTimeDisplay_Unknown, kFrameRate_25),
                 std::invalid_argument);
    EXPECT_THROW(ParseTimeLabel("00:00", static_cast<TimeDisplay>(4242), kFrameRate_25),
                 std::invalid_argument);
}

#pragma once

#include "zelmediatypes/FrameRate.h"

#include <cstdint>
#include <iosfwd>
#include <optional>

namespace zelmediatypes {

// The host's time display formats. Projects store them as 32-bit numbers, so the values are fixed
// forever; a stored number this build does not know is accepted by every function here and
// treated like kTimeDisplay_Unknown.
enum TimeDisplay : std::int32_t {
    // Timecodes, counting frames of the rate in their name.
    kTimeDisplay_23976Timecode = 100,
    kTimeDisplay_24Timecode = 101,
    kTimeDisplay_25Timecode = 102,
    kTimeDisplay_2997DropTimecode = 103,
    kTimeDisplay_2997NonDropTimecode = 104,
    kTimeDisplay_30Timecode = 105,
    kTimeDisplay_50Timecode = 106,
    kTimeDisplay_5994DropTimecode = 107,
    kTimeDisplay_5994NonDropTimecode = 108,
    kTimeDisplay_60Timecode = 109,
    // The frame number at the rate of the media shown.
    kTimeDisplay_Frames = 200,
    // Audio: samples at 48 kHz within each second, and milliseconds.
    kTimeDisplay_AudioSamples48kHz = 300,
    kTimeDisplay_Milliseconds = 301,
    // Not yet known, e.g. before a sequence has reported its format.
    kTimeDisplay_Unknown = 999,
};

// The frame rate a timecode display counts in; empty for every other display.
std::optional<FrameRate> VideoFrameRate(TimeDisplay display);

// The timecode display that counts frames of `rate`: drop-frame at 29.97 and
// 59.94; kTimeDisplay_Frames for a rate no timecode counts.
TimeDisplay TimecodeDisplayForFrameRate(const FrameRate& rate);

bool IsDropFrame(TimeDisplay display);

// Whether the display counts audio units (samples or milliseconds) rather than frames.
bool IsAudioTimeDisplay(TimeDisplay display);

// Prints the enumerator's name, or "TimeDisplay(n)" for a number that has none.
std::ostream& operator<<(std::ostream& os, TimeDisplay display);

} // namespace zelmediatypes

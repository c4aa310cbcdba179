#pragma once

#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TickTime.h"
#include "zelmediatypes/TimeDisplay.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace zelmediatypes {

// The text a time display shows for a time, and back.
//
// Labels by display:
//   timecodes                       HH:MM:SS:FF, drop-frame HH:MM:SS;FF, counting frames of the
//                                   display's own rate (mediaRate is ignored)
//   kTimeDisplay_Frames             the frame number at mediaRate, e.g. "1234"
//   kTimeDisplay_AudioSamples48kHz  HH:MM:SS:sssss, the sample within the second
//   kTimeDisplay_Milliseconds       HH:MM:SS.mmm
//
// A label names the frame, sample or millisecond (the unit) holding the time, rounding down, so a
// negative time between units shows the unit before it: one tick before zero is "-00:00:00:01".
// A negative label is the label of the negated unit with a leading '-'. Hours have at least two
// digits and do not wrap at 24.
//
// Non-drop timecode at 23.976, 29.97 and 59.94 counts 24, 30 or 60 frames per labelled second, so
// its labels run slower than the clock. Drop-frame timecode keeps its labels near the clock by
// leaving out frame labels 00 and 01 (00 to 03 at 59.94) at the start of every minute except
// minutes 00, 10, 20, 30, 40 and 50; no frame is skipped, only labels.

// Throws std::invalid_argument for kTimeDisplay_Unknown and numbers that are not a TimeDisplay.
std::string FormatTimeLabel(TickTime time, TimeDisplay display, const FrameRate& mediaRate);

struct TimeLabelParse {
    std::optional<TickTime> time; // the start of the labelled unit, when the label was valid
    std::string error;            // what was wrong with the label; empty when time is set
};

// Reads a label of the display's format back to the start of the unit it names, so
// ParseTimeLabel(FormatTimeLabel(t)) is t aligned to its unit.
//
// Fields may be separated by ':', ';' or '.', in any mix: whether a timecode is drop-frame follows
// from the display, not from the separator. Leading fields may be left out ("SS:FF", "MM:SS:FF");
// every field present must be in range except hours. An optional leading '-' makes the time
// negative. Whitespace is not skipped. A label that is wrong yields an error naming the fault:
// an unexpected character, an empty field, too many fields, a field out of range, a label that
// drop-frame timecode leaves out, or a time beyond kTime_Min or kTime_Max.
// Throws std::invalid_argument for displays FormatTimeLabel rejects.
TimeLabelParse ParseTimeLabel(std::string_view label, TimeDisplay display,
                              const FrameRate& mediaRate);

std::ostream& operator<<(std::ostream& os, const TimeLabelParse& parse);

} // namespace zelmediatypes

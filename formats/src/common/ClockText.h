#pragma once

#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace captionformats {

// hours:minutes:seconds plus a decimal fraction of a second given by its digits
// ("04" is 40 ms). Digits past the ninth are ignored; a total past TickTime's
// range saturates.
zelmediatypes::TickTime TimeFromClock(std::uint64_t hours, std::uint64_t minutes,
                                      std::uint64_t seconds, std::string_view fractionDigits);

zelmediatypes::TickTime TimeFromMilliseconds(std::int64_t milliseconds);

// The time rounded to the nearest millisecond (halves away from zero).
std::int64_t RoundToMilliseconds(zelmediatypes::TickTime time);

// "HH:MM:SS" + separator + "mmm", rounded to the nearest millisecond; hours
// take more digits when they need them. Negative times print as zero.
std::string FormatClockMilliseconds(zelmediatypes::TickTime time, char fractionSeparator);
// The same text appended to `out`, without formatting machinery: writers call
// it twice per caption.
void AppendClockMilliseconds(std::string& out, zelmediatypes::TickTime time,
                             char fractionSeparator);
// The same text written at `to`, which has room for kClockTextBytes; returns
// its end.
inline constexpr std::size_t kClockTextBytes = 40;
char* CopyClockMilliseconds(char* to, zelmediatypes::TickTime time, char fractionSeparator);

} // namespace captionformats

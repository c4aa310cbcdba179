#pragma once

#include "zelmediatypes/TickTime.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

namespace captionformats::srt {

struct CueTiming {
    zelmediatypes::TickTime begin;
    zelmediatypes::TickTime end;
    // The line's first 29 bytes when it has the usual form "HH:MM:SS,mmm -->
    // HH:MM:SS,mmm" (',' or '.' before the milliseconds), else empty: whole
    // milliseconds and hours below 100, the times as a writer that prints
    // HH:MM:SS and three digits of milliseconds prints them.
    std::string_view usualText;
};

struct TimingError {
    std::size_t column = 0; // 1-based byte column of the problem
    std::string message;
};

// "H:MM:SS,mmm --> H:MM:SS,mmm", tolerant: hours of any length, one or two digit
// minutes and seconds, ',' '.' or ':' before a fraction of any length (or none),
// spaces around the arrow, and anything after the end time (such as X1: Y1:
// coordinates) ignored.
std::variant<CueTiming, TimingError> ParseCueTiming(std::string_view line);

// "HH:MM:SS,mmm --> HH:MM:SS,mmm" alone or followed by a space or tab, into
// `timing`, as ParseCueTiming reads it; false, for ParseCueTiming to read,
// for any other line.
bool ReadUsualTiming(std::string_view line, CueTiming& timing);

// True when the line, trimmed, is a cue number.
bool IsCueNumber(std::string_view line);

} // namespace captionformats::srt

#include "common/ClockText.h"

#include <algorithm>
#include <charconv>

namespace captionformats {

using zelmediatypes::kTicksPerSecond;
using zelmediatypes::TickTime;

namespace {
constexpr std::int64_t kTicksPerMillisecond = kTicksPerSecond / 1000;
constexpr std::uint64_t kMaxClockSeconds = 1ULL << 40; // far past TickTime's range
} // namespace

TickTime TimeFromClock(std::uint64_t hours, std::uint64_t minutes, std::uint64_t seconds,
                       std::string_view fractionDigits) {
    if (hours > kMaxClockSeconds || minutes > kMaxClockSeconds || seconds > kMaxClockSeconds) {
        return zelmediatypes::kTime_Max;
    }
    const auto wholeSeconds = static_cast<std::int64_t>(hours * 3600 + minutes * 60 + seconds);
    std::int64_t fractionTicks = 0;
    std::int64_t digitTicks = kTicksPerSecond;
    for (std::size_t i = 0; i < fractionDigits.size() && i < 9; ++i) {
        digitTicks /= 10;
        fractionTicks += (fractionDigits[i] - '0') * digitTicks;
    }
    return TickTime::FromSeconds(wholeSeconds) + TickTime(fractionTicks);
}

TickTime TimeFromMilliseconds(std::int64_t milliseconds) {
    return TickTime(kTicksPerMillisecond) * milliseconds;
}

std::int64_t RoundToMilliseconds(TickTime time) {
    const std::int64_t ticks = time.GetTicks();
    const std::int64_t half = kTicksPerMillisecond / 2;
    return ticks >= 0
               ? (ticks / kTicksPerMillisecond) + ((ticks % kTicksPerMillisecond) >= half)
               : -((-ticks / kTicksPerMillisecond) + ((-ticks % kTicksPerMillisecond) >= half));
}

std::string FormatClockMilliseconds(TickTime time, char fractionSeparator) {
    std::string text;
    AppendClockMilliseconds(text, time, fractionSeparator);
    return text;
}

void AppendClockMilliseconds(std::string& out, TickTime time, char fractionSeparator) {
    char text[kClockTextBytes];
    out.append(text, CopyClockMilliseconds(text, time, fractionSeparator));
}

char* CopyClockMilliseconds(char* to, TickTime time, char fractionSeparator) {
    const std::int64_t milliseconds = std::max<std::int64_t>(RoundToMilliseconds(time), 0);
    const std::int64_t totalSeconds = milliseconds / 1000;
    const std::int64_t hours = totalSeconds / 3600;
    char* end = to;
    if (hours < 10) {
        *end++ = '0';
    }
    end = std::to_chars(end, to + kClockTextBytes, hours).ptr;
    auto digits = [&end](std::int64_t value, int count) {
        for (int place = count - 1; place >= 0; --place) {
            end[place] = static_cast<char>('0' + value % 10);
            value /= 10;
        }
        end += count;
    };
    *end++ = ':';
    digits(totalSeconds / 60 % 60, 2);
    *end++ = ':';
    digits(totalSeconds % 60, 2);
    *end++ = fractionSeparator;
    digits(milliseconds % 1000, 3);
    return end;
}

} // namespace captionformats

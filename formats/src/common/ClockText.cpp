#include "common/ClockText.h"

#include <cstdio>

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
    std::int64_t milliseconds = RoundToMilliseconds(time);
    if (milliseconds < 0) {
        milliseconds = 0;
    }
    const std::int64_t totalSeconds = milliseconds / 1000;
    char text[48];
    std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld%c%03lld",
                  static_cast<long long>(totalSeconds / 3600),
                  static_cast<long long>(totalSeconds / 60 % 60),
                  static_cast<long long>(totalSeconds % 60), fractionSeparator,
                  static_cast<long long>(milliseconds % 1000));
    return text;
}

} // namespace captionformats

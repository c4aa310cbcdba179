#include "common/ClockText.h"

#include <array>
#include <charconv>
#include <cstring>

namespace captionformats {

using zelmediatypes::kTicksPerSecond;
using zelmediatypes::TickTime;

namespace {
constexpr std::int64_t kTicksPerMillisecond = kTicksPerSecond / 1000;
constexpr std::uint64_t kMaxClockSeconds = 1ULL << 40; // far past TickTime's range

// The two digits of each number below 100, one pair after the other.
constexpr std::array<char, 200> kDigitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t value = 0; value < 100; ++value) {
        pairs[2 * value] = static_cast<char>('0' + value / 10);
        pairs[2 * value + 1] = static_cast<char>('0' + value % 10);
    }
    return pairs;
}();

// The whole milliseconds nearest to `ticks`, a half rounded up. Unsigned, so
// that adding the half cannot overflow.
std::int64_t NearestMilliseconds(std::uint64_t ticks) {
    constexpr auto kTicks = static_cast<std::uint64_t>(kTicksPerMillisecond);
    static_assert(kTicks % 2 == 0, "a half is a whole number of ticks");
    return static_cast<std::int64_t>((ticks + kTicks / 2) / kTicks);
}

// `value` (below 100) as two digits at `to`; returns their end.
char* CopyTwoDigits(char* to, unsigned value) {
    std::memcpy(to, kDigitPairs.data() + 2 * value, 2);
    return to + 2;
}
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
    return ticks >= 0 ? NearestMilliseconds(static_cast<std::uint64_t>(ticks))
                      : -NearestMilliseconds(0 - static_cast<std::uint64_t>(ticks));
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
    // Times before zero are written as zero.
    const std::int64_t ticks = time.GetTicks();
    const std::int64_t milliseconds =
        ticks <= 0 ? 0 : NearestMilliseconds(static_cast<std::uint64_t>(ticks));
    const std::int64_t totalSeconds = milliseconds / 1000;
    const auto fraction = static_cast<unsigned>(milliseconds - totalSeconds * 1000);
    const std::int64_t hours = totalSeconds / 3600;
    const auto inHour = static_cast<unsigned>(totalSeconds - hours * 3600);
    char* end = hours < 100 ? CopyTwoDigits(to, static_cast<unsigned>(hours))
                            : std::to_chars(to, to + kClockTextBytes, hours).ptr;
    *end++ = ':';
    end = CopyTwoDigits(end, inHour / 60);
    *end++ = ':';
    end = CopyTwoDigits(end, inHour % 60);
    *end++ = fractionSeparator;
    *end++ = static_cast<char>('0' + fraction / 100);
    return CopyTwoDigits(end, fraction % 100);
}

} // namespace captionformats

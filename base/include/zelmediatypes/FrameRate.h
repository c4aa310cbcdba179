#pragma once

#include "zelmediatypes/TickTime.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <limits>
#include <numeric>
#include <optional>

namespace zelmediatypes {

// A video frame rate as a reduced fraction of frames per second. Only rates whose frame lasts a
// whole number of ticks exist, so every frame boundary is exact.
class FrameRate {
public:
    // Empty when the fraction is not positive or a frame would not last a whole number of ticks.
    static constexpr std::optional<FrameRate> FromFramesPerSecond(std::int64_t numerator,
                                                                  std::int64_t denominator) {
        if (numerator <= 0 || denominator <= 0) {
            return std::nullopt;
        }
        const std::int64_t divisor = std::gcd(numerator, denominator);
        numerator /= divisor;
        denominator /= divisor;
        // kTicksPerSecond * denominator overflows only for denominators past 36 million.
        if (denominator > std::numeric_limits<std::int64_t>::max() / kTicksPerSecond ||
            kTicksPerSecond * denominator % numerator != 0) {
            return std::nullopt;
        }
        return FrameRate(numerator, denominator, kTicksPerSecond * denominator / numerator);
    }

    constexpr std::int64_t FramesPerSecondNumerator() const { return numerator_; }
    constexpr std::int64_t FramesPerSecondDenominator() const { return denominator_; }
    constexpr std::int64_t TicksPerFrame() const { return ticksPerFrame_; }
    constexpr TickTime FrameDuration() const { return TickTime(ticksPerFrame_); }

    // The frames a timecode counts in each of its seconds: the rate rounded up, so 30 at 29.97.
    constexpr std::int64_t TimecodeFramesPerSecond() const {
        return (numerator_ + denominator_ - 1) / denominator_;
    }

    // Drop-frame timecode exists for the 1001-denominator rates that count a multiple of 30
    // frames a second: 29.97 and 59.94, not 23.976.
    constexpr bool SupportsDropFrame() const {
        return denominator_ == 1001 && TimecodeFramesPerSecond() % 30 == 0;
    }

    friend constexpr bool operator==(const FrameRate&, const FrameRate&) = default;

private:
    constexpr FrameRate(std::int64_t numerator, std::int64_t denominator,
                        std::int64_t ticksPerFrame)
        : numerator_(numerator)
        , denominator_(denominator)
        , ticksPerFrame_(ticksPerFrame) {}

    std::int64_t numerator_;
    std::int64_t denominator_;
    std::int64_t ticksPerFrame_;
};

// Prints "25 fps" or "30000/1001 fps".
std::ostream& operator<<(std::ostream& os, const FrameRate& rate);

// The host's rates. value() makes a rate that is not a whole number of ticks fail to compile.
inline constexpr FrameRate kFrameRate_23976 = FrameRate::FromFramesPerSecond(24000, 1001).value();
inline constexpr FrameRate kFrameRate_24 = FrameRate::FromFramesPerSecond(24, 1).value();
inline constexpr FrameRate kFrameRate_25 = FrameRate::FromFramesPerSecond(25, 1).value();
inline constexpr FrameRate kFrameRate_2997 = FrameRate::FromFramesPerSecond(30000, 1001).value();
inline constexpr FrameRate kFrameRate_30 = FrameRate::FromFramesPerSecond(30, 1).value();
inline constexpr FrameRate kFrameRate_50 = FrameRate::FromFramesPerSecond(50, 1).value();
inline constexpr FrameRate kFrameRate_5994 = FrameRate::FromFramesPerSecond(60000, 1001).value();
inline constexpr FrameRate kFrameRate_60 = FrameRate::FromFramesPerSecond(60, 1).value();

inline constexpr std::array kStandardFrameRates{kFrameRate_23976, kFrameRate_24, kFrameRate_25,
                                                kFrameRate_2997,  kFrameRate_30, kFrameRate_50,
                                                kFrameRate_5994,  kFrameRate_60};

} // namespace zelmediatypes

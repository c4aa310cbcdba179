#pragma once

#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <limits>
#include <stdexcept>

namespace zelmediatypes {

class FrameRate;

// Ticks in one second. Every frame rate the host offers (23.976 to 60 fps, the 1001-denominator
// rates included) and the 44.1 and 48 kHz audio rates divide it, so frame and sample boundaries
// fall on whole ticks.
inline constexpr std::int64_t kTicksPerSecond = 254016000000;

// A point in time or a duration, as a signed count of ticks.
//
// The range is symmetric, -(2^63 - 1) to 2^63 - 1 ticks (about 420 days either way), so negation
// never overflows. Arithmetic saturates: a result past either end becomes kTime_Min or kTime_Max,
// and a time made from INT64_MIN ticks is kTime_Min. The ends are not sticky infinities:
// kTime_Max minus one tick is an ordinary time.
class TickTime {
public:
    constexpr TickTime() = default;
    constexpr explicit TickTime(std::int64_t ticks)
        : ticks_(ticks < -kMaxTicks ? -kMaxTicks : ticks) {}

    static constexpr TickTime FromSeconds(std::int64_t seconds) {
        return TickTime(SaturatingMultiply(seconds, kTicksPerSecond));
    }

    constexpr std::int64_t GetTicks() const { return ticks_; }

    // The start of the frame holding this time: the latest multiple of frameDuration that is not
    // later than it. Negative times therefore move away from zero (minus one tick aligns to minus
    // one frame). A time whose frame starts below kTime_Min aligns to kTime_Min.
    // Throws std::invalid_argument unless frameDuration is positive.
    constexpr TickTime AlignToFrame(TickTime frameDuration) const {
        if (frameDuration.ticks_ <= 0) {
            throw std::invalid_argument("AlignToFrame needs a positive frame duration");
        }
        std::int64_t intoFrameTicks = ticks_ % frameDuration.ticks_;
        if (intoFrameTicks < 0) {
            intoFrameTicks += frameDuration.ticks_;
        }
        return TickTime(SaturatingSubtract(ticks_, intoFrameTicks));
    }
    TickTime AlignToFrame(const FrameRate& frameRate) const;

    constexpr TickTime operator-() const { return TickTime(-ticks_); }
    constexpr TickTime& operator+=(TickTime other) { return *this = *this + other; }
    constexpr TickTime& operator-=(TickTime other) { return *this = *this - other; }

    friend constexpr TickTime operator+(TickTime a, TickTime b) {
        return TickTime(SaturatingAdd(a.ticks_, b.ticks_));
    }
    friend constexpr TickTime operator-(TickTime a, TickTime b) {
        return TickTime(SaturatingSubtract(a.ticks_, b.ticks_));
    }
    friend constexpr TickTime operator*(TickTime t, std::int64_t factor) {
        return TickTime(SaturatingMultiply(t.ticks_, factor));
    }
    friend constexpr TickTime operator*(std::int64_t factor, TickTime t) { return t * factor; }
    // Truncates towards zero. Throws std::domain_error when divisor is zero.
    friend constexpr TickTime operator/(TickTime t, std::int64_t divisor) {
        if (divisor == 0) {
            throw std::domain_error("TickTime divided by zero");
        }
        return TickTime(t.ticks_ / divisor);
    }
    // A fractional factor would be truncated to an integer without a word, so it does not compile.
    template <std::floating_point F> friend TickTime operator*(TickTime, F) = delete;
    template <std::floating_point F> friend TickTime operator*(F, TickTime) = delete;
    template <std::floating_point F> friend TickTime operator/(TickTime, F) = delete;

    friend constexpr bool operator==(TickTime, TickTime) = default;
    friend constexpr auto operator<=>(TickTime, TickTime) = default;

private:
    static constexpr std::int64_t kMaxTicks = std::numeric_limits<std::int64_t>::max();

    static constexpr std::int64_t Saturated(bool towardsMax) {
        return towardsMax ? kMaxTicks : -kMaxTicks;
    }
    static constexpr std::int64_t SaturatingAdd(std::int64_t a, std::int64_t b) {
        std::int64_t sum = 0;
        const bool overflowed = __builtin_add_overflow(a, b, &sum);
        return overflowed ? Saturated(a > 0) : sum;
    }
    static constexpr std::int64_t SaturatingSubtract(std::int64_t a, std::int64_t b) {
        std::int64_t difference = 0;
        const bool overflowed = __builtin_sub_overflow(a, b, &difference);
        return overflowed ? Saturated(a >= 0) : difference;
    }
    static constexpr std::int64_t SaturatingMultiply(std::int64_t a, std::int64_t b) {
        std::int64_t product = 0;
        const bool overflowed = __builtin_mul_overflow(a, b, &product);
        return overflowed ? Saturated((a < 0) == (b < 0)) : product;
    }

    std::int64_t ticks_ = 0;
};

inline constexpr TickTime kTime_Zero{};
inline constexpr TickTime kTime_Min{-std::numeric_limits<std::int64_t>::max()};
inline constexpr TickTime kTime_Max{std::numeric_limits<std::int64_t>::max()};

// Prints the ticks and the seconds they make, or the name of either end, so test failures read
// well.
std::ostream& operator<<(std::ostream& os, TickTime time);

} // namespace zelmediatypes

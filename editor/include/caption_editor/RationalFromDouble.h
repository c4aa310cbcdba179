#pragma once

#include <boost/rational.hpp>

#include <cstdint>

namespace caption_editor {

// The default bound on RationalFromDouble's denominators: every decimal with up
// to six places has its exact fraction within it.
inline constexpr std::int64_t kMaxRationalDenominator = 1'000'000;

// The fraction a person most likely meant by `value`: the first convergent of
// its continued fraction that lies within four machine epsilons (relative) of
// `value`, so decimals as typed and simple ratios computed in double come back
// exact (0.1 -> 1/10, 0.1234 -> 617/5000, 1.0 / 3 -> 1/3, 0.1 + 0.2 -> 3/10).
// When no fraction with a denominator up to `maxDenominator` is that close, the
// nearest fraction with such a denominator. The result is reduced and its
// denominator positive. NaN gives 0/1; magnitudes beyond 2^62, infinities
// among them, clamp to ±2^62, which leaves callers headroom for sums. A
// `maxDenominator` below 1 counts as 1.
boost::rational<std::int64_t>
RationalFromDouble(double value, std::int64_t maxDenominator = kMaxRationalDenominator);

} // namespace caption_editor

#include "caption_editor/RationalFromDouble.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace caption_editor {
namespace {

constexpr std::int64_t kLargestMagnitude = std::int64_t{1} << 62;
// From 2^52 upwards every double is a whole number.
constexpr double kWholeNumbersFrom = 0x1p52;
// Four epsilons cover a value that took a rounding or two on its way (a typed
// percentage divided by 100, a sum) and stay far below 1 / maxDenominator^2,
// the least distance between two fractions the search can return.
constexpr double kToleranceEpsilons = 4.0;

struct Fraction {
    std::int64_t numerator;
    std::int64_t denominator;
};

// |magnitude - fraction| × the fraction's denominator, with a single rounding.
double ScaledError(double magnitude, const Fraction& fraction) {
    return std::fabs(std::fma(magnitude, static_cast<double>(fraction.denominator),
                              -static_cast<double>(fraction.numerator)));
}

double Error(double magnitude, const Fraction& fraction) {
    return ScaledError(magnitude, fraction) / static_cast<double>(fraction.denominator);
}

// The continued-fraction search for a finite magnitude below 2^52.
Fraction Approximate(double magnitude, std::int64_t maxDenominator) {
    const double tolerance =
        kToleranceEpsilons * std::numeric_limits<double>::epsilon() * magnitude;
    Fraction beforeLast{0, 1};
    Fraction last{1, 0};
    double remainder = magnitude;
    for (;;) {
        const double whole = std::floor(remainder);
        // The largest term that keeps the denominator within the bound and the
        // numerator within 2^62; last.denominator is 0 only for the first term.
        std::int64_t largestTerm =
            (kLargestMagnitude - beforeLast.numerator) / std::max<std::int64_t>(last.numerator, 1);
        if (last.denominator > 0) {
            largestTerm =
                std::min(largestTerm, (maxDenominator - beforeLast.denominator) / last.denominator);
        }
        if (whole > static_cast<double>(largestTerm)) {
            // The next convergent is out of reach; the best fraction within reach
            // is the last convergent or the semiconvergent with the largest term.
            const Fraction semi{largestTerm * last.numerator + beforeLast.numerator,
                                largestTerm * last.denominator + beforeLast.denominator};
            return largestTerm > 0 && Error(magnitude, semi) < Error(magnitude, last) ? semi : last;
        }
        const auto term = static_cast<std::int64_t>(whole);
        const Fraction next{term * last.numerator + beforeLast.numerator,
                            term * last.denominator + beforeLast.denominator};
        const double fractionalPart = remainder - whole;
        if (fractionalPart == 0.0 ||
            ScaledError(magnitude, next) <= tolerance * static_cast<double>(next.denominator)) {
            return next;
        }
        beforeLast = last;
        last = next;
        remainder = 1.0 / fractionalPart;
    }
}

} // namespace

boost::rational<std::int64_t> RationalFromDouble(double value, std::int64_t maxDenominator) {
    if (std::isnan(value)) {
        return {0, 1};
    }
    const std::int64_t sign = std::signbit(value) ? -1 : 1;
    const double magnitude = std::min(std::fabs(value), static_cast<double>(kLargestMagnitude));
    if (magnitude >= kWholeNumbersFrom) {
        return {sign * static_cast<std::int64_t>(magnitude), 1};
    }
    const Fraction fraction = Approximate(magnitude, std::max<std::int64_t>(maxDenominator, 1));
    return {sign * fraction.numerator, fraction.denominator};
}

} // namespace caption_editor

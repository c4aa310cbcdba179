#include "zelcaptioning/Position.h"

#include "zelcaptioning/ParagraphStyleAttributes.h"

#include <boost/rational.hpp>

#include <ostream>

namespace zelcaptioning {
namespace {

std::int64_t FloorDiv(std::int64_t numerator, std::int64_t denominator) {
    std::int64_t quotient = numerator / denominator;
    if ((numerator % denominator != 0) && ((numerator < 0) != (denominator < 0))) {
        --quotient;
    }
    return quotient;
}

} // namespace

std::int64_t ValueWithScale(const Rational& value, std::int64_t scale, bool roundToNearest) {
    const Rational scaled = value * Rational(scale);
    if (roundToNearest) {
        // floor(n/d + 1/2) = floor((2n + d) / 2d); d is positive for a normalised rational.
        return FloorDiv(2 * scaled.numerator() + scaled.denominator(), 2 * scaled.denominator());
    }
    return FloorDiv(scaled.numerator(), scaled.denominator());
}

double AsDouble(const Rational& value) {
    return boost::rational_cast<double>(value);
}

std::ostream& operator<<(std::ostream& os, const Position& position) {
    if (position == kPosition_Uninitialized) {
        return os << "(unplaced)";
    }
    return os << '(' << position.GetX() << ", " << position.GetY() << ')';
}

std::ostream& operator<<(std::ostream& os, const ParagraphStyleAttributes& attributes) {
    return os << "align=" << attributes.GetTextAlignment()
              << " anchor=" << attributes.GetAnchorID();
}

} // namespace zelcaptioning

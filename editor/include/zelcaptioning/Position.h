#pragma once

#include <boost/rational.hpp>

#include <cstdint>
#include <iosfwd>

namespace zelcaptioning {

using Rational = boost::rational<std::int64_t>;

// Where a paragraph's line stands: x and y as exact fractions of the caption
// area (grid layout: of the column and row counts; pixel layout: of the area's
// width and height), measured to the line's top-left corner.
class Position {
public:
    Position() = default;
    Position(const Rational& x, const Rational& y)
        : x_(x)
        , y_(y) {}

    const Rational& GetX() const { return x_; }
    const Rational& GetY() const { return y_; }
    void SetX(const Rational& x) { x_ = x; }
    void SetY(const Rational& y) { y_ = y; }

    friend bool operator==(const Position&, const Position&) = default;

private:
    Rational x_;
    Rational y_;
};

// The position of a paragraph that has never been placed.
inline const Position kPosition_Uninitialized{Rational(-1), Rational(-1)};

// value × scale made whole: rounded to the nearest integer (halves upwards)
// when `roundToNearest` is true, else rounded down (toward minus infinity).
// Grid rows and columns use rounding, so a position written as r / rows reads
// back as r exactly.
std::int64_t ValueWithScale(const Rational& value, std::int64_t scale, bool roundToNearest);

double AsDouble(const Rational& value);

std::ostream& operator<<(std::ostream& os, const Position& position);

} // namespace zelcaptioning

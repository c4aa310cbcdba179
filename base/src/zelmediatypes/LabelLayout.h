#pragma once

#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TimeDisplay.h"

#include <cstdint>
#include <string_view>

namespace zelmediatypes::detail {

enum class LabelShape {
    kCount, // a plain unit number: "1234"
    kClock, // HH:MM:SS, a separator and the unit within the second
};

// How one display writes times: the unit it counts and the shape of its labels.
struct LabelLayout {
    LabelShape shape;
    std::int64_t ticksPerUnit;
    std::int64_t unitsPerLabelSecond; // clock labels only
    int subSecondDigits;              // clock labels only
    char subSecondSeparator;          // clock labels only
    std::int64_t droppedLabelsPerMinute;
    std::string_view unitName;
};

// Throws std::invalid_argument for displays without labels.
LabelLayout LayoutFor(TimeDisplay display, const FrameRate& mediaRate);

// The number of the label naming a unit, counting every label from 00:00:00 as if none were
// dropped. The same number for layouts that drop none. unitIndex must not be negative.
std::int64_t LabelNumberOfUnit(const LabelLayout& layout, std::int64_t unitIndex);

// The inverse of LabelNumberOfUnit for labels that are not dropped.
std::int64_t UnitOfLabelNumber(const LabelLayout& layout, std::int64_t labelNumber);

// Rounds towards minus infinity; divisor must be positive.
constexpr std::int64_t FloorDivide(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t quotient = dividend / divisor;
    return dividend % divisor < 0 ? quotient - 1 : quotient;
}

} // namespace zelmediatypes::detail

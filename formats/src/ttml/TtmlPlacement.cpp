#include "ttml/TtmlPlacement.h"

#include "common/KeypadAnchor.h"

#include <algorithm>

namespace captionformats::ttml {

using namespace zelcaptioning;

namespace {

// The rows of an area our approximations assume.
constexpr std::int64_t kAssumedRows = 15;

// Rationals are compared with rationals only: Boost 1.74's mixed comparisons
// recurse without end under C++20's reversed operator candidates.
const Rational kZero(0);
const Rational kOne(1);

// The fraction as a percentage with up to nine decimals; `exact` turns false
// when more would be needed.
std::string Percent(const Rational& fraction, bool& exact) {
    const Rational percent = fraction * Rational(100);
    std::string text = std::to_string(percent.numerator() / percent.denominator());
    Rational rest = percent - Rational(percent.numerator() / percent.denominator());
    if (rest != kZero) {
        text += '.';
        for (int digit = 0; digit < 9 && rest != kZero; ++digit) {
            rest *= Rational(10);
            const std::int64_t whole = rest.numerator() / rest.denominator();
            text += static_cast<char>('0' + whole);
            rest -= Rational(whole);
        }
        exact = exact && rest == kZero;
    }
    return text + '%';
}

} // namespace

TtmlPlacement PlacementOfRegion(const TtmlStyle& computed, bool hasRegion, std::size_t lineCount) {
    TtmlPlacement placement;
    const TextAlignmentType alignment = computed.textAlign.value_or(kTextAlignment_Left);
    placement.style.SetTextAlignment(alignment);
    const auto column = static_cast<int>(alignment);
    if (!hasRegion || !computed.origin || !computed.extent) {
        placement.style.SetAnchorID(6 + column);
        return placement;
    }
    const PercentPair& origin = *computed.origin;
    const PercentPair& extent = *computed.extent;
    const DisplayAlign displayAlign = computed.displayAlign.value_or(DisplayAlign::kBefore);
    const bool fullWidth = origin.x == kZero && extent.x == kOne;
    const bool wholeArea = fullWidth && origin.y == kZero && extent.y == kOne;
    if (wholeArea) {
        const int row = displayAlign == DisplayAlign::kBefore   ? 0
                        : displayAlign == DisplayAlign::kCenter ? 1
                                                                : 2;
        placement.style.SetAnchorID(row * 3 + column);
        return placement;
    }
    if (fullWidth && origin.y == kZero && displayAlign == DisplayAlign::kBefore) {
        placement.style.SetAnchorID(column);
        return placement;
    }
    if (fullWidth && origin.y + extent.y == kOne && displayAlign == DisplayAlign::kAfter) {
        placement.style.SetAnchorID(6 + column);
        return placement;
    }
    placement.style.SetAnchorID(kAnchorID_Free);
    Rational y = origin.y;
    if (displayAlign != DisplayAlign::kBefore) {
        const Rational linesHeight(static_cast<std::int64_t>(lineCount), kAssumedRows);
        y = displayAlign == DisplayAlign::kCenter
                ? origin.y + (extent.y - linesHeight) / Rational(2)
                : origin.y + extent.y - linesHeight;
        placement.approximation =
            "lines of a region not aligned before taken as 1/15 of the area each";
    }
    placement.firstLinePosition =
        Position(std::clamp(origin.x, kZero, kOne), std::clamp(y, kZero, kOne));
    return placement;
}

RegionGeometry RegionOfPlacement(const ParagraphStyleAttributes& style,
                                 const Position& firstLinePosition, bool& exact) {
    const AnchorID anchor = style.GetAnchorID();
    if (IsGridAnchor(anchor)) {
        static const char* const kDisplayAligns[] = {"before", "center", "after"};
        return {"0% 0%", "100% 100%", kDisplayAligns[anchor / 3]};
    }
    const Position position =
        firstLinePosition == kPosition_Uninitialized ? Position(kZero, kZero) : firstLinePosition;
    exact = firstLinePosition != kPosition_Uninitialized;
    const Rational x = std::clamp(position.GetX(), kZero, kOne);
    const Rational y = std::clamp(position.GetY(), kZero, kOne);
    exact = exact && x == position.GetX() && y == position.GetY();
    RegionGeometry region;
    region.origin = Percent(x, exact) + ' ' + Percent(y, exact);
    region.extent = Percent(kOne - x, exact) + ' ' + Percent(kOne - y, exact);
    region.displayAlign = "before";
    return region;
}

} // namespace captionformats::ttml

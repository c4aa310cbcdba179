#include "zelmediatypes/TimeLabel.h"

#include "LabelLayout.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace zelmediatypes {
namespace {

// Builds a label in place: a timeline formats many labels per redraw, and this keeps each one to
// a single string construction.
class LabelWriter {
public:
    void Put(char c) { *end_++ = c; }

    // value must not be negative.
    void PutNumber(std::int64_t value, int minimumDigits) {
        char reversedDigits[20];
        int count = 0;
        do {
            reversedDigits[count++] = static_cast<char>('0' + value % 10);
            value /= 10;
        } while (value != 0);
        for (int padding = count; padding < minimumDigits; ++padding) {
            Put('0');
        }
        while (count > 0) {
            Put(reversedDigits[--count]);
        }
    }

    std::string Text() const { return {text_, static_cast<std::size_t>(end_ - text_)}; }

private:
    // A sign, up to 19 digits of hours, three separators, two-digit minutes and seconds, and up
    // to five digits within the second.
    char text_[40];
    char* end_ = text_;
};

} // namespace

std::string FormatTimeLabel(TickTime time, TimeDisplay display, const FrameRate& mediaRate) {
    const detail::LabelLayout layout = detail::LayoutFor(display, mediaRate);
    const std::int64_t unitIndex = detail::FloorDivide(time.GetTicks(), layout.ticksPerUnit);
    // Never INT64_MIN: ticks are at least -(2^63 - 1) and a unit is longer than one tick.
    const std::int64_t unitMagnitude = unitIndex < 0 ? -unitIndex : unitIndex;

    LabelWriter label;
    if (unitIndex < 0) {
        label.Put('-');
    }
    if (layout.shape == detail::LabelShape::kCount) {
        label.PutNumber(unitMagnitude, 1);
        return label.Text();
    }
    const std::int64_t labelNumber = detail::LabelNumberOfUnit(layout, unitMagnitude);
    const std::int64_t labelSeconds = labelNumber / layout.unitsPerLabelSecond;
    label.PutNumber(labelSeconds / 3600, 2);
    label.Put(':');
    label.PutNumber(labelSeconds / 60 % 60, 2);
    label.Put(':');
    label.PutNumber(labelSeconds % 60, 2);
    label.Put(layout.subSecondSeparator);
    label.PutNumber(labelNumber % layout.unitsPerLabelSecond, layout.subSecondDigits);
    return label.Text();
}

} // namespace zelmediatypes

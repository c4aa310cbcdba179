#include "zelmediatypes/TimeLabel.h"

#include "LabelLayout.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace zelmediatypes {
namespace {

constexpr std::size_t kMaxClockFields = 4; // HH:MM:SS:FF

// The label's numbers, most significant first.
struct Fields {
    std::array<std::int64_t, kMaxClockFields> values{};
    std::size_t count = 0;
};

// What is wrong with a label; empty while nothing is, so a valid label builds no message.
using Fault = std::optional<std::string>;

bool IsSeparator(char c) {
    return c == ':' || c == ';' || c == '.';
}

// The messages are built out of line so that reading a valid label pays nothing for them.

std::string Padded(std::int64_t value, std::size_t digits) {
    std::string text = std::to_string(value);
    return std::string(digits > text.size() ? digits - text.size() : 0, '0') + text;
}

[[gnu::noinline]] std::string OutOfRange(std::string_view fieldName, std::int64_t value,
                                         std::int64_t limit) {
    return std::string(fieldName) + " " + std::to_string(value) + " out of range 0-" +
           std::to_string(limit - 1);
}

[[gnu::noinline]] std::string TooManyFields(std::size_t maxFields) {
    return "too many fields: at most " + std::to_string(maxFields);
}

[[gnu::noinline]] std::string EmptyField(std::size_t fieldNumber) {
    return "field " + std::to_string(fieldNumber) + " is empty";
}

[[gnu::noinline]] std::string UnexpectedCharacter(char c, std::size_t position) {
    return std::string("unexpected character '") + c + "' at position " + std::to_string(position);
}

[[gnu::noinline]] std::string NumberTooLarge(std::size_t position) {
    return "the number at position " + std::to_string(position) + " is too large";
}

[[gnu::noinline]] std::string DroppedLabel(std::int64_t hours, std::int64_t minutes,
                                           std::int64_t frame, std::int64_t droppedPerMinute) {
    return Padded(hours, 2) + ":" + Padded(minutes, 2) + ":00;" + Padded(frame, 2) +
           " is not a drop-frame label: minutes not divisible by ten start at frame " +
           Padded(droppedPerMinute, 2);
}

// Reads the numbers between separators from `start` on. Positions in messages count the label's
// characters from 1.
Fault ReadFields(std::string_view label, std::size_t start, std::size_t maxFields, Fields& fields) {
    std::int64_t value = 0;
    bool hasDigits = false;
    for (std::size_t i = start; i <= label.size(); ++i) {
        if (i == label.size() || IsSeparator(label[i])) {
            if (fields.count == maxFields) {
                return TooManyFields(maxFields);
            }
            if (!hasDigits) {
                return EmptyField(fields.count + 1);
            }
            fields.values[fields.count++] = value;
            value = 0;
            hasDigits = false;
            continue;
        }
        const char c = label[i];
        if (c < '0' || c > '9') {
            return UnexpectedCharacter(c, i + 1);
        }
        const int digit = c - '0';
        if (value > (std::numeric_limits<std::int64_t>::max() - digit) / 10) {
            return NumberTooLarge(i + 1);
        }
        value = value * 10 + digit;
        hasDigits = true;
    }
    return std::nullopt;
}

// Sets unitIndex to the unit a clock label names, counted from zero.
Fault ReadClockLabel(const detail::LabelLayout& layout, const Fields& fields,
                     std::int64_t& unitIndex) {
    // Missing leading fields are zero: "SS:FF" fills seconds and frames.
    std::array<std::int64_t, kMaxClockFields> hmsu{};
    std::copy_n(fields.values.begin(), fields.count, hmsu.end() - fields.count);
    const auto [hours, minutes, seconds, units] = hmsu;

    if (units >= layout.unitsPerLabelSecond) {
        return OutOfRange(layout.unitName, units, layout.unitsPerLabelSecond);
    }
    if (seconds >= 60) {
        return OutOfRange("seconds", seconds, 60);
    }
    if (minutes >= 60) {
        return OutOfRange("minutes", minutes, 60);
    }
    const std::int64_t dropped = layout.droppedLabelsPerMinute;
    if (seconds == 0 && minutes % 10 != 0 && units < dropped) {
        return DroppedLabel(hours, minutes, units, dropped);
    }
    std::int64_t labelNumber = 0;
    const std::int64_t belowHours = (minutes * 60 + seconds) * layout.unitsPerLabelSecond + units;
    if (__builtin_mul_overflow(hours, 3600 * layout.unitsPerLabelSecond, &labelNumber) ||
        __builtin_add_overflow(labelNumber, belowHours, &labelNumber)) {
        return "the time is out of range";
    }
    unitIndex = detail::UnitOfLabelNumber(layout, labelNumber);
    return std::nullopt;
}

TimeLabelParse Failure(std::string error) {
    return {std::nullopt, std::move(error)};
}

} // namespace

TimeLabelParse ParseTimeLabel(std::string_view label, TimeDisplay display,
                              const FrameRate& mediaRate) {
    const detail::LabelLayout layout = detail::LayoutFor(display, mediaRate);
    if (label.empty()) {
        return Failure("the label is empty");
    }
    const bool negative = label.front() == '-';
    if (negative && label.size() == 1) {
        return Failure("no digits after '-'");
    }
    const bool isClock = layout.shape == detail::LabelShape::kClock;
    Fields fields;
    if (Fault fault = ReadFields(label, negative ? 1 : 0, isClock ? kMaxClockFields : 1, fields)) {
        return Failure(std::move(*fault));
    }
    std::int64_t unitIndex = fields.values[0];
    if (isClock) {
        if (Fault fault = ReadClockLabel(layout, fields, unitIndex)) {
            return Failure(std::move(*fault));
        }
    }
    if (unitIndex > std::numeric_limits<std::int64_t>::max() / layout.ticksPerUnit) {
        return Failure("the time is out of range");
    }
    const std::int64_t ticks = unitIndex * layout.ticksPerUnit;
    return {TickTime(negative ? -ticks : ticks), {}};
}

std::ostream& operator<<(std::ostream& os, const TimeLabelParse& parse) {
    if (parse.time) {
        return os << "time " << *parse.time;
    }
    return os << "error \"" << parse.error << '"';
}

} // namespace zelmediatypes

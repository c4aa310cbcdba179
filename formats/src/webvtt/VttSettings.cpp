#include "webvtt/VttSettings.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace captionformats::webvtt {

namespace {

constexpr std::int64_t kMaxExactInteger = 1'000'000'000'000;

struct Setting {
    std::string_view name;
    std::string_view value;
    std::size_t offset = 0; // of the setting in the text it came from
};

// Splits on ASCII whitespace and keeps the tokens with a ':' that is neither
// their first nor their last character.
std::vector<Setting> SplitSettings(std::string_view text, std::vector<Setting>* malformed) {
    std::vector<Setting> settings;
    std::size_t position = 0;
    while (position < text.size()) {
        while (position < text.size() && IsVttWhitespace(text[position])) {
            ++position;
        }
        const std::size_t start = position;
        while (position < text.size() && !IsVttWhitespace(text[position])) {
            ++position;
        }
        if (start == position) {
            break;
        }
        const std::string_view token = text.substr(start, position - start);
        const std::size_t colon = token.find(':');
        if (colon == std::string_view::npos || colon == 0 || colon + 1 == token.size()) {
            if (malformed) {
                malformed->push_back({token, {}, start});
            }
            continue;
        }
        settings.push_back({token.substr(0, colon), token.substr(colon + 1), start});
    }
    return settings;
}

std::uint64_t DigitsValue(std::string_view digits) {
    std::uint64_t value = 0;
    for (char digit : digits) {
        value =
            value > 100'000'000'000ULL ? value : value * 10 + static_cast<unsigned>(digit - '0');
    }
    return value;
}

// A real number written as digits with an optional sign and fraction, already
// checked for its shape; nothing when it is too large for a double.
std::optional<VttPercentage> RealNumber(std::string_view text) {
    VttPercentage number;
    number.value = std::strtod(std::string(text).c_str(), nullptr);
    if (!std::isfinite(number.value)) {
        return std::nullopt;
    }
    const bool negative = text.starts_with('-');
    if (negative) {
        text.remove_prefix(1);
    }
    const std::size_t dot = text.find('.');
    const std::string_view whole = text.substr(0, dot);
    std::string_view fraction =
        dot == std::string_view::npos ? std::string_view() : text.substr(dot + 1);
    fraction = fraction.substr(0, 9);
    const auto wholeValue =
        static_cast<std::int64_t>(std::min<std::uint64_t>(DigitsValue(whole), kMaxExactInteger));
    std::int64_t scale = 1;
    std::int64_t fractionValue = 0;
    for (char digit : fraction) {
        scale *= 10;
        fractionValue = fractionValue * 10 + (digit - '0');
    }
    number.exact = zelcaptioning::Rational(wholeValue * scale + fractionValue, scale);
    if (negative) {
        number.exact = -number.exact;
    }
    return number;
}

std::optional<VttPercentage> ParseLineNumber(std::string_view text) {
    if (text.find_first_not_of("0123456789-.") != std::string_view::npos ||
        text.find('-', 1) != std::string_view::npos ||
        std::count(text.begin(), text.end(), '.') > 1) {
        return std::nullopt;
    }
    const std::size_t dot = text.find('.');
    if (dot != std::string_view::npos &&
        (dot == 0 || dot + 1 == text.size() || !IsAsciiDigit(text[dot - 1]) ||
         !IsAsciiDigit(text[dot + 1]))) {
        return std::nullopt;
    }
    return RealNumber(text);
}

bool ApplyLine(std::string_view value, VttCue& cue) {
    const std::size_t comma = value.find(',');
    const std::string_view linePosition = value.substr(0, comma);
    const bool hasLineAlign = comma != std::string_view::npos;
    const std::string_view lineAlign = hasLineAlign ? value.substr(comma + 1) : std::string_view();
    if (std::none_of(linePosition.begin(), linePosition.end(), IsAsciiDigit)) {
        return false;
    }
    const bool percent = linePosition.ends_with('%');
    const std::optional<VttPercentage> number =
        percent ? ParsePercentage(linePosition) : ParseLineNumber(linePosition);
    if (!number) {
        return false;
    }
    if (hasLineAlign) {
        if (lineAlign == "start") {
            cue.lineAlign = VttCue::LineAlign::kStart;
        } else if (lineAlign == "center") {
            cue.lineAlign = VttCue::LineAlign::kCenter;
        } else if (lineAlign == "end") {
            cue.lineAlign = VttCue::LineAlign::kEnd;
        } else {
            return false;
        }
    }
    cue.line = number;
    cue.snapToLines = !percent;
    return true;
}

bool ApplyPosition(std::string_view value, VttCue& cue) {
    const std::size_t comma = value.find(',');
    const std::optional<VttPercentage> number = ParsePercentage(value.substr(0, comma));
    if (!number) {
        return false;
    }
    if (comma != std::string_view::npos) {
        const std::string_view align = value.substr(comma + 1);
        if (align == "line-left") {
            cue.positionAlign = VttCue::PositionAlign::kLineLeft;
        } else if (align == "center") {
            cue.positionAlign = VttCue::PositionAlign::kCenter;
        } else if (align == "line-right") {
            cue.positionAlign = VttCue::PositionAlign::kLineRight;
        } else {
            return false;
        }
    }
    cue.position = number;
    return true;
}

bool ApplyAlign(std::string_view value, VttCue& cue) {
    using Align = VttCue::Align;
    for (const auto& [name, align] :
         {std::pair{"start", Align::kStart}, std::pair{"center", Align::kCenter},
          std::pair{"end", Align::kEnd}, std::pair{"left", Align::kLeft},
          std::pair{"right", Align::kRight}}) {
        if (value == name) {
            cue.align = align;
            return true;
        }
    }
    return false;
}

bool ApplySetting(const Setting& setting, VttCue& cue, const RegionIds& regions) {
    if (setting.name == "region") {
        const auto found = regions.find(setting.value);
        cue.region = found == regions.end() ? std::nullopt : std::optional(found->second);
        return found != regions.end();
    }
    if (setting.name == "vertical") {
        if (setting.value == "rl" || setting.value == "lr") {
            cue.vertical = setting.value == "rl" ? VttCue::Vertical::kRightToLeft
                                                 : VttCue::Vertical::kLeftToRight;
            return true;
        }
        return false;
    }
    if (setting.name == "line") {
        return ApplyLine(setting.value, cue);
    }
    if (setting.name == "position") {
        return ApplyPosition(setting.value, cue);
    }
    if (setting.name == "size") {
        const auto size = ParsePercentage(setting.value);
        if (size) {
            cue.size = size->value;
        }
        return size.has_value();
    }
    if (setting.name == "align") {
        return ApplyAlign(setting.value, cue);
    }
    return false;
}

} // namespace

std::optional<std::int64_t> CollectTimestamp(VttScanner& scanner) {
    if (scanner.AtEnd() || !IsAsciiDigit(scanner.Peek())) {
        return std::nullopt;
    }
    const std::string_view first = scanner.CollectDigits();
    std::uint64_t value1 = DigitsValue(first);
    const bool hoursFirst = first.size() != 2 || value1 > 59;
    if (scanner.Peek() != ':') {
        return std::nullopt;
    }
    scanner.Advance();
    const std::string_view second = scanner.CollectDigits();
    if (second.size() != 2) {
        return std::nullopt;
    }
    std::uint64_t value2 = DigitsValue(second);
    std::uint64_t value3 = 0;
    if (hoursFirst || scanner.Peek() == ':') {
        if (scanner.Peek() != ':') {
            return std::nullopt;
        }
        scanner.Advance();
        const std::string_view third = scanner.CollectDigits();
        if (third.size() != 2) {
            return std::nullopt;
        }
        value3 = DigitsValue(third);
    } else {
        value3 = value2;
        value2 = value1;
        value1 = 0;
    }
    if (scanner.Peek() != '.') {
        return std::nullopt;
    }
    scanner.Advance();
    const std::string_view fraction = scanner.CollectDigits();
    if (fraction.size() != 3 || value2 > 59 || value3 > 59) {
        return std::nullopt;
    }
    constexpr std::uint64_t kMaxHours = 1'000'000'000;
    const std::uint64_t hours = std::min(value1, kMaxHours);
    return static_cast<std::int64_t>(((hours * 60 + value2) * 60 + value3) * 1000 +
                                     DigitsValue(fraction));
}

std::optional<VttPercentage> ParsePercentage(std::string_view text) {
    if (!text.ends_with('%')) {
        return std::nullopt;
    }
    const std::string_view number = text.substr(0, text.size() - 1);
    const std::size_t dot = number.find('.');
    const std::string_view whole = number.substr(0, dot);
    const std::string_view fraction =
        dot == std::string_view::npos ? std::string_view("0") : number.substr(dot + 1);
    auto allDigits = [](std::string_view digits) {
        return !digits.empty() && std::all_of(digits.begin(), digits.end(), IsAsciiDigit);
    };
    if (!allDigits(whole) || !allDigits(fraction)) {
        return std::nullopt;
    }
    const std::optional<VttPercentage> value = RealNumber(number);
    if (!value || value->value < 0.0 || value->value > 100.0) {
        return std::nullopt;
    }
    return value;
}

std::optional<TimingFailure> ParseTimingsAndSettings(std::string_view line, VttCue& cue,
                                                     const RegionIds& regions,
                                                     const SettingsLocation& where) {
    VttScanner scanner(line);
    scanner.SkipWhitespace();
    const std::optional<std::int64_t> start = CollectTimestamp(scanner);
    if (!start) {
        return TimingFailure{scanner.Offset() + 1, "bad start time (expected [HH:]MM:SS.mmm)"};
    }
    scanner.SkipWhitespace();
    for (char expected : {'-', '-', '>'}) {
        if (scanner.Peek() != expected) {
            return TimingFailure{scanner.Offset() + 1, "expected \"-->\" after the start time"};
        }
        scanner.Advance();
    }
    scanner.SkipWhitespace();
    const std::optional<std::int64_t> end = CollectTimestamp(scanner);
    if (!end) {
        return TimingFailure{scanner.Offset() + 1, "bad end time (expected [HH:]MM:SS.mmm)"};
    }
    cue.startMilliseconds = *start;
    cue.endMilliseconds = *end;
    const std::size_t settingsOffset = scanner.Offset();
    std::vector<Setting> malformed;
    std::vector<Setting> settings = SplitSettings(scanner.Rest(), &malformed);
    for (const Setting& setting : settings) {
        if (!ApplySetting(setting, cue, regions)) {
            malformed.push_back(setting);
        }
    }
    std::sort(malformed.begin(), malformed.end(),
              [](const Setting& a, const Setting& b) { return a.offset < b.offset; });
    for (const Setting& setting : malformed) {
        const std::string text = setting.value.empty()
                                     ? std::string(setting.name)
                                     : std::string(setting.name) + ':' + std::string(setting.value);
        where.log.Warn(
            SourceLocation::AtLine(where.lineNumber, settingsOffset + setting.offset + 1),
            "cue setting \"" + text + "\" ignored");
    }
    return std::nullopt;
}

void ParseRegionSettings(std::string_view text, VttRegion& region) {
    for (const Setting& setting : SplitSettings(text, nullptr)) {
        const std::string_view value = setting.value;
        if (setting.name == "id") {
            if (value.find("-->") == std::string_view::npos) {
                region.id = value;
            }
        } else if (setting.name == "width") {
            if (const auto width = ParsePercentage(value)) {
                region.width = width->value;
            }
        } else if (setting.name == "lines") {
            if (std::all_of(value.begin(), value.end(), IsAsciiDigit)) {
                region.lines = std::strtod(std::string(value).c_str(), nullptr);
            }
        } else if (setting.name == "regionanchor" || setting.name == "viewportanchor") {
            const std::size_t comma = value.find(',');
            if (comma == std::string_view::npos) {
                continue;
            }
            const auto x = ParsePercentage(value.substr(0, comma));
            const auto y = ParsePercentage(value.substr(comma + 1));
            if (!x || !y) {
                continue;
            }
            const bool regionAnchor = setting.name == "regionanchor";
            (regionAnchor ? region.regionAnchorX : region.viewportAnchorX) = x->value;
            (regionAnchor ? region.regionAnchorY : region.viewportAnchorY) = y->value;
        } else if (setting.name == "scroll") {
            if (value == "up") {
                region.scrollUp = true;
            }
        }
    }
}

} // namespace captionformats::webvtt

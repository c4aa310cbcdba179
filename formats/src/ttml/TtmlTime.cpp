#include "ttml/TtmlTime.h"

#include "common/ClockText.h"

#include <cctype>

namespace captionformats::ttml {

using zelmediatypes::kTicksPerSecond;
using zelmediatypes::TickTime;

namespace {

__extension__ using Wide = __int128; // exact products of counts, rates and ticks per second

// A time expression's number as numerator / denominator.
struct Decimal {
    Wide numerator = 0;
    Wide denominator = 1;
};

// Bounds that keep every product inside 128 bits; larger values are past
// TickTime's range anyway and saturate.
constexpr Wide kMaxWhole = 100'000'000'000'000'000; // 10^17: tick counts at high tick rates
constexpr std::size_t kMaxFractionDigits = 6;
constexpr Wide kMaxSecondsWhole = 1'000'000'000'000; // for every unit but ticks

bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// Digits with an optional fraction; nothing when `text` is not of that shape.
std::optional<Decimal> DecimalNumber(std::string_view text) {
    const std::size_t dot = text.find('.');
    const std::string_view whole = text.substr(0, dot);
    const std::string_view fraction =
        dot == std::string_view::npos ? std::string_view() : text.substr(dot + 1);
    if (whole.empty() || (dot != std::string_view::npos && fraction.empty())) {
        return std::nullopt;
    }
    Decimal number;
    for (char c : whole) {
        if (!IsDigit(c)) {
            return std::nullopt;
        }
        number.numerator = std::min(kMaxWhole, number.numerator * 10 + (c - '0'));
    }
    for (std::size_t i = 0; i < fraction.size(); ++i) {
        if (!IsDigit(fraction[i])) {
            return std::nullopt;
        }
        if (i < kMaxFractionDigits) {
            number.numerator = number.numerator * 10 + (fraction[i] - '0');
            number.denominator *= 10;
        }
    }
    return number;
}

// count × factorNumerator / factorDenominator seconds as ticks, rounded to the
// nearest tick; saturates past TickTime's range.
TickTime TicksOf(const Decimal& count, Wide factorNumerator, Wide factorDenominator) {
    const Wide numerator = count.numerator * factorNumerator * kTicksPerSecond;
    const Wide denominator = count.denominator * factorDenominator;
    const Wide ticks = (numerator + denominator / 2) / denominator;
    return ticks > static_cast<Wide>(zelmediatypes::kTime_Max.GetTicks())
               ? zelmediatypes::kTime_Max
               : TickTime(static_cast<std::int64_t>(ticks));
}

bool IsWhole(const Decimal& number) {
    return number.denominator == 1;
}

std::optional<TickTime> ParseClockTime(std::string_view text, const TimingParameters& parameters) {
    // hh:mm:ss with an optional ".fraction" or ":frames(.subframes)".
    const std::size_t hoursEnd = text.find(':');
    if (text.size() < hoursEnd + 6 || text[hoursEnd + 3] != ':') {
        return std::nullopt;
    }
    const auto hours = DecimalNumber(text.substr(0, hoursEnd));
    const auto minutes = DecimalNumber(text.substr(hoursEnd + 1, 2));
    const std::string_view rest = text.substr(hoursEnd + 4);
    const std::size_t framesColon = rest.find(':');
    const auto seconds = DecimalNumber(rest.substr(0, framesColon));
    if (!hours || !minutes || !seconds || !IsWhole(*hours) || !IsWhole(*minutes) ||
        minutes->numerator >= 60 || seconds->numerator >= 61 * seconds->denominator ||
        hours->numerator > kMaxSecondsWhole) {
        return std::nullopt;
    }
    // Everything in units of 1 / (seconds' denominator × frame rate numerator).
    const Wide wholeSeconds = hours->numerator * 3600 + minutes->numerator * 60;
    Decimal total{wholeSeconds * seconds->denominator + seconds->numerator, seconds->denominator};
    if (framesColon == std::string_view::npos) {
        return TicksOf(total, 1, 1);
    }
    const auto frames = DecimalNumber(rest.substr(framesColon + 1));
    if (!IsWhole(*seconds) || !frames ||
        frames->numerator > kMaxSecondsWhole * frames->denominator) {
        return std::nullopt;
    }
    // Media time: the frames add to the seconds at the effective frame rate,
    // frameRate × numerator / denominator.
    const Wide rate = static_cast<Wide>(parameters.frameRate) * parameters.multiplierNumerator;
    const Wide perRate = parameters.multiplierDenominator;
    const Decimal combined{total.numerator * frames->denominator * rate +
                               frames->numerator * perRate,
                           frames->denominator * rate};
    return TicksOf(combined, 1, 1);
}

} // namespace

std::optional<TickTime> ParseTimeExpression(std::string_view text,
                                            const TimingParameters& parameters) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) {
        text.remove_prefix(1);
    }
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) {
        text.remove_suffix(1);
    }
    if (text.find(':') != std::string_view::npos) {
        return ParseClockTime(text, parameters);
    }
    std::size_t metricStart = text.size();
    while (metricStart > 0 && std::isalpha(static_cast<unsigned char>(text[metricStart - 1]))) {
        --metricStart;
    }
    const std::string_view metric = text.substr(metricStart);
    const auto count = DecimalNumber(text.substr(0, metricStart));
    if (!count) {
        return std::nullopt;
    }
    if (metric == "t") {
        return TicksOf(*count, 1, parameters.tickRate);
    }
    if (count->numerator > kMaxSecondsWhole * count->denominator) {
        return zelmediatypes::kTime_Max;
    }
    if (metric == "h") {
        return TicksOf(*count, 3600, 1);
    } else if (metric == "m") {
        return TicksOf(*count, 60, 1);
    } else if (metric == "s") {
        return TicksOf(*count, 1, 1);
    } else if (metric == "ms") {
        return TicksOf(*count, 1, 1000);
    } else if (metric == "f") {
        return TicksOf(*count, parameters.multiplierDenominator,
                       static_cast<Wide>(parameters.frameRate) * parameters.multiplierNumerator);
    }
    return std::nullopt;
}

} // namespace captionformats::ttml

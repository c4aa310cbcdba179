#include "srt/SrtTiming.h"

#include "common/ClockText.h"

#include <algorithm>
#include <optional>

namespace captionformats::srt {

namespace {

// ASCII digits only, whatever the locale.
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

class TimingScanner {
public:
    explicit TimingScanner(std::string_view line)
        : line_(line) {}

    std::size_t Column() const { return position_ + 1; }
    bool AtEnd() const { return position_ >= line_.size(); }
    char Peek() const { return AtEnd() ? '\0' : line_[position_]; }
    void Advance() { ++position_; }

    void SkipSpaces() {
        while (!AtEnd() && (Peek() == ' ' || Peek() == '\t')) {
            ++position_;
        }
    }

    std::string_view Digits() {
        const std::size_t start = position_;
        while (!AtEnd() && IsDigit(Peek())) {
            ++position_;
        }
        return line_.substr(start, position_ - start);
    }

private:
    std::string_view line_;
    std::size_t position_ = 0;
};

std::uint64_t ValueOf(std::string_view digits) {
    std::uint64_t value = 0;
    for (char digit : digits) {
        value =
            value > 1'000'000'000'000ULL ? value : value * 10 + static_cast<unsigned>(digit - '0');
    }
    return value;
}

std::variant<zelmediatypes::TickTime, TimingError> ParseTime(TimingScanner& scanner,
                                                             std::string_view which) {
    // Only a failure spells out which time it was.
    const auto what = [which] {
        return std::string(which) + " time";
    };
    const std::string_view hours = scanner.Digits();
    if (hours.empty()) {
        return TimingError{scanner.Column(), "expected the " + what() + " (H:MM:SS,mmm)"};
    }
    if (scanner.Peek() != ':') {
        return TimingError{scanner.Column(), "expected ':' after the hours of the " + what()};
    }
    scanner.Advance();
    const std::size_t minutesColumn = scanner.Column();
    const std::string_view minutes = scanner.Digits();
    if (minutes.empty() || minutes.size() > 2 || ValueOf(minutes) > 59) {
        return TimingError{minutesColumn, "minutes of the " + what() + " must be 00 to 59"};
    }
    if (scanner.Peek() != ':') {
        return TimingError{scanner.Column(), "expected ':' after the minutes of the " + what()};
    }
    scanner.Advance();
    const std::size_t secondsColumn = scanner.Column();
    const std::string_view seconds = scanner.Digits();
    if (seconds.empty() || seconds.size() > 2 || ValueOf(seconds) > 59) {
        return TimingError{secondsColumn, "seconds of the " + what() + " must be 00 to 59"};
    }
    std::string_view fraction;
    if (scanner.Peek() == ',' || scanner.Peek() == '.' || scanner.Peek() == ':') {
        scanner.Advance();
        const std::size_t fractionColumn = scanner.Column();
        fraction = scanner.Digits();
        if (fraction.empty()) {
            return TimingError{fractionColumn, "expected the milliseconds of the " + what()};
        }
    }
    return TimeFromClock(ValueOf(hours), ValueOf(minutes), ValueOf(seconds), fraction);
}

// The value of the two digits at `at` when both are digits and the value is
// at most `maximum`; else -1.
int TwoDigits(const char* at, int maximum) {
    if (!IsDigit(at[0]) || !IsDigit(at[1])) {
        return -1;
    }
    const int value = (at[0] - '0') * 10 + (at[1] - '0');
    return value <= maximum ? value : -1;
}

// "HH:MM:SS,mmm" at `at`, the form nearly every file uses, read without the
// scanner; nothing for any other form. Gives what ParseTime gives for it.
std::optional<zelmediatypes::TickTime> UsualTime(const char* at) {
    const int hours = TwoDigits(at, 99);
    const int minutes = TwoDigits(at + 3, 59);
    const int seconds = TwoDigits(at + 6, 59);
    if (hours < 0 || minutes < 0 || seconds < 0 || at[2] != ':' || at[5] != ':' ||
        (at[8] != ',' && at[8] != '.') || !IsDigit(at[9]) || !IsDigit(at[10]) || !IsDigit(at[11])) {
        return std::nullopt;
    }
    // TimeFromClock's sum, for three fraction digits: ticks per millisecond are whole.
    static_assert(zelmediatypes::kTicksPerSecond % 1000 == 0);
    const int milliseconds = (at[9] - '0') * 100 + (at[10] - '0') * 10 + (at[11] - '0');
    return zelmediatypes::TickTime::FromSeconds(hours * 3600 + minutes * 60 + seconds) +
           zelmediatypes::TickTime(milliseconds * (zelmediatypes::kTicksPerSecond / 1000));
}

// "HH:MM:SS,mmm --> HH:MM:SS,mmm" alone or followed by a space or tab.
std::optional<CueTiming> UsualTiming(std::string_view line) {
    constexpr std::size_t kLength = 29;
    if (line.size() < kLength || line.substr(12, 5) != " --> " ||
        (line.size() > kLength && line[kLength] != ' ' && line[kLength] != '\t')) {
        return std::nullopt;
    }
    const auto begin = UsualTime(line.data());
    const auto end = UsualTime(line.data() + 17);
    if (!begin || !end) {
        return std::nullopt;
    }
    return CueTiming{*begin, *end};
}

} // namespace

std::variant<CueTiming, TimingError> ParseCueTiming(std::string_view line) {
    if (const auto usual = UsualTiming(line)) {
        return *usual;
    }
    TimingScanner scanner(line);
    scanner.SkipSpaces();
    const auto begin = ParseTime(scanner, "begin");
    if (const auto* error = std::get_if<TimingError>(&begin)) {
        return *error;
    }
    scanner.SkipSpaces();
    for (char expected : {'-', '-', '>'}) {
        if (scanner.Peek() != expected) {
            return TimingError{scanner.Column(), "expected '-->' after the begin time"};
        }
        scanner.Advance();
    }
    scanner.SkipSpaces();
    const auto end = ParseTime(scanner, "end");
    if (const auto* error = std::get_if<TimingError>(&end)) {
        return *error;
    }
    if (!scanner.AtEnd() && scanner.Peek() != ' ' && scanner.Peek() != '\t') {
        return TimingError{scanner.Column(), "unexpected character after the end time"};
    }
    return CueTiming{std::get<zelmediatypes::TickTime>(begin),
                     std::get<zelmediatypes::TickTime>(end)};
}

bool IsCueNumber(std::string_view line) {
    auto blank = [](char c) {
        return c == ' ' || c == '\t';
    };
    const auto digits = std::find_if_not(line.begin(), line.end(), blank);
    const auto rest = std::find_if_not(digits, line.end(), IsDigit);
    return rest != digits && std::all_of(rest, line.end(), blank);
}

} // namespace captionformats::srt

#include "srt/SrtTiming.h"

#include "common/ClockText.h"

#include <algorithm>
#include <cstring>
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

// "HH:MM:SS,mmm" at `at`, the form nearly every file uses, read without the
// scanner: its milliseconds, or -1 for any other form. Gives what ParseTime
// gives for it.
std::int64_t UsualMilliseconds(const char* at) {
    // A byte that is no digit gives a value past 9.
    const auto* bytes = reinterpret_cast<const unsigned char*>(at);
    auto digit = [bytes](int place) {
        return static_cast<unsigned>(bytes[place]) - unsigned{'0'};
    };
    const unsigned h1 = digit(0), h2 = digit(1), m1 = digit(3), m2 = digit(4), s1 = digit(6),
                   s2 = digit(7), f1 = digit(9), f2 = digit(10), f3 = digit(11);
    // Tested together, without a branch for each.
    const bool digits = (h1 <= 9) & (h2 <= 9) & (m1 <= 5) & (m2 <= 9) & (s1 <= 5) & (s2 <= 9) &
                        (f1 <= 9) & (f2 <= 9) & (f3 <= 9);
    if (!digits || at[2] != ':' || at[5] != ':' || (at[8] != ',' && at[8] != '.')) {
        return -1;
    }
    const std::int64_t seconds = (h1 * 10 + h2) * 3600 + (m1 * 10 + m2) * 60 + s1 * 10 + s2;
    return seconds * 1000 + f1 * 100 + f2 * 10 + f3;
}

} // namespace

bool ReadUsualTiming(std::string_view line, CueTiming& timing) {
    constexpr std::size_t kLength = 29;
    // The arrow compared as five bytes known in length, without a call.
    if (line.size() < kLength || std::memcmp(line.data() + 12, " --> ", 5) != 0 ||
        (line.size() > kLength && line[kLength] != ' ' && line[kLength] != '\t')) {
        return false;
    }
    const std::int64_t begin = UsualMilliseconds(line.data());
    const std::int64_t end = UsualMilliseconds(line.data() + 17);
    if (begin < 0 || end < 0) {
        return false;
    }
    // TimeFromClock's sum, for three fraction digits: ticks per millisecond
    // are whole, and 100 hours are far within TickTime's range.
    static_assert(zelmediatypes::kTicksPerSecond % 1000 == 0);
    constexpr std::int64_t kTicksPerMs = zelmediatypes::kTicksPerSecond / 1000;
    timing.begin = zelmediatypes::TickTime(begin * kTicksPerMs);
    timing.end = zelmediatypes::TickTime(end * kTicksPerMs);
    timing.usualText = line.substr(0, kLength);
    return true;
}

namespace {

// Any timing line, through the scanner.
std::variant<CueTiming, TimingError> ScanTiming(std::string_view line) {
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
    return CueTiming{
        std::get<zelmediatypes::TickTime>(begin), std::get<zelmediatypes::TickTime>(end), {}};
}

} // namespace

std::variant<CueTiming, TimingError> ParseCueTiming(std::string_view line) {
    // One object returned: the usual timing is written where the caller
    // takes it, as copies of it cost more than reading it.
    std::variant<CueTiming, TimingError> timing;
    if (!ReadUsualTiming(line, std::get<CueTiming>(timing))) {
        timing = ScanTiming(line);
    }
    return timing;
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

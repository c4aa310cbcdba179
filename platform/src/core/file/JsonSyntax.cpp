#include "JsonSyntax.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace platform::core {
namespace {

// Recursive descent over the text that checks it and builds nothing.
class JsonScanner {
public:
    explicit JsonScanner(std::string_view text)
        : text_(text) {}

    void ScanDocument() {
        SkipSpace();
        ScanValue(0);
        SkipSpace();
        if (at_ < text_.size()) {
            FailPastCurrent("garbage at the end of the document");
        }
    }

    struct Failure {
        JsonSyntaxError error;
    };

private:
    [[noreturn]] void FailPastCurrent(const char* problem) const {
        throw Failure{{std::min(at_ + 1, text_.size()), problem}};
    }

    bool AtEnd() const { return at_ >= text_.size(); }
    char Current() const { return text_[at_]; }

    void SkipSpace() {
        while (!AtEnd() &&
               (Current() == ' ' || Current() == '\n' || Current() == '\r' || Current() == '\t')) {
            ++at_;
        }
    }

    void ScanValue(std::size_t depth) {
        if (AtEnd()) {
            FailPastCurrent("illegal value");
        }
        switch (Current()) {
        case '{':
            return ScanContainer(depth, '}');
        case '[':
            return ScanContainer(depth, ']');
        case '"':
            return ScanString();
        case 't':
            return ScanLiteral("true");
        case 'f':
            return ScanLiteral("false");
        case 'n':
            return ScanLiteral("null");
        default:
            if (Current() == '-' || (Current() >= '0' && Current() <= '9')) {
                return ScanNumber();
            }
            FailPastCurrent("illegal value");
        }
    }

    void ScanLiteral(std::string_view word) {
        if (text_.substr(at_, word.size()) != word) {
            FailPastCurrent("illegal value");
        }
        at_ += word.size();
    }

    bool SkipDigits() {
        const std::size_t start = at_;
        while (!AtEnd() && Current() >= '0' && Current() <= '9') {
            ++at_;
        }
        return at_ > start;
    }

    void ScanNumber() {
        const std::size_t start = at_;
        if (Current() == '-') {
            ++at_;
        }
        const std::size_t integerStart = at_;
        if (!SkipDigits()) {
            FailPastCurrent("illegal number");
        }
        if (text_[integerStart] == '0' && at_ - integerStart > 1) {
            at_ = integerStart + 1; // a leading zero: the digit after it is wrong
            FailPastCurrent("illegal number");
        }
        bool whole = true;
        if (!AtEnd() && Current() == '.') {
            whole = false;
            ++at_;
            if (!SkipDigits()) {
                FailPastCurrent("illegal number");
            }
        }
        if (!AtEnd() && (Current() == 'e' || Current() == 'E')) {
            whole = false;
            ++at_;
            if (!AtEnd() && (Current() == '+' || Current() == '-')) {
                ++at_;
            }
            if (!SkipDigits()) {
                FailPastCurrent("illegal number");
            }
        }
        // Well formed but beyond a double, or a whole number beyond 64 bits:
        // the whole number is wrong.
        const char* const first = text_.data() + start;
        const char* const last = text_.data() + at_;
        if (whole) {
            std::int64_t signedValue = 0;
            std::uint64_t unsignedValue = 0;
            if (std::from_chars(first, last, signedValue).ec != std::errc() &&
                std::from_chars(first, last, unsignedValue).ec != std::errc()) {
                throw Failure{{at_, "whole number beyond 64 bits"}};
            }
            return;
        }
        double value = 0;
        const auto result = std::from_chars(first, last, value);
        if (result.ec != std::errc() || !std::isfinite(value)) {
            throw Failure{{at_, "illegal number"}};
        }
    }

    // The length of the UTF-8 sequence starting at the current byte, checked
    // for overlong forms, surrogates and values past U+10FFFF; 0 if invalid.
    std::size_t Utf8SequenceLength() const {
        const auto byte = [this](std::size_t i) {
            return at_ + i < text_.size() ? static_cast<unsigned char>(text_[at_ + i]) : 0u;
        };
        const unsigned lead = byte(0);
        const auto continuation = [&byte](std::size_t i, unsigned low, unsigned high) {
            return byte(i) >= low && byte(i) <= high;
        };
        if (lead >= 0xC2 && lead <= 0xDF) {
            return continuation(1, 0x80, 0xBF) ? 2 : 0;
        }
        if (lead >= 0xE0 && lead <= 0xEF) {
            const unsigned low = lead == 0xE0 ? 0xA0 : 0x80;
            const unsigned high = lead == 0xED ? 0x9F : 0xBF;
            return continuation(1, low, high) && continuation(2, 0x80, 0xBF) ? 3 : 0;
        }
        if (lead >= 0xF0 && lead <= 0xF4) {
            const unsigned low = lead == 0xF0 ? 0x90 : 0x80;
            const unsigned high = lead == 0xF4 ? 0x8F : 0xBF;
            return continuation(1, low, high) && continuation(2, 0x80, 0xBF) &&
                           continuation(3, 0x80, 0xBF)
                       ? 4
                       : 0;
        }
        return 0;
    }

    void ScanString() {
        ++at_; // the opening quote
        for (;;) {
            if (AtEnd()) {
                FailPastCurrent("unterminated string");
            }
            const auto byte = static_cast<unsigned char>(Current());
            if (byte == '"') {
                break;
            }
            if (byte < 0x20) {
                FailPastCurrent("illegal value");
            }
            if (byte == '\\') {
                ++at_;
                if (AtEnd() || Current() == '\0' || !std::strchr("\"\\/bfnrtu", Current())) {
                    FailPastCurrent("invalid escape sequence");
                }
                if (Current() == 'u') {
                    for (int digit = 0; digit < 4; ++digit) {
                        ++at_;
                        if (AtEnd() || !std::isxdigit(static_cast<unsigned char>(Current()))) {
                            FailPastCurrent("invalid escape sequence");
                        }
                    }
                }
                ++at_;
            } else if (byte < 0x80) {
                ++at_;
            } else {
                const std::size_t length = Utf8SequenceLength();
                if (length == 0) {
                    FailPastCurrent("invalid UTF8 string");
                }
                at_ += length;
            }
        }
        ++at_; // the closing quote
    }

    void ScanContainer(std::size_t depth, char close) {
        if (depth >= kMaxJsonDepth) {
            FailPastCurrent("too deeply nested document");
        }
        const bool isObject = close == '}';
        const char* const unterminated = isObject ? "unterminated object" : "unterminated array";
        ++at_;
        SkipSpace();
        if (!AtEnd() && Current() == close) {
            ++at_;
            return;
        }
        for (;;) {
            if (isObject) {
                if (AtEnd() || Current() != '"') {
                    FailPastCurrent(unterminated);
                }
                ScanString();
                SkipSpace();
                if (AtEnd() || Current() != ':') {
                    FailPastCurrent("missing name separator");
                }
                ++at_;
                SkipSpace();
            }
            ScanValue(depth + 1);
            SkipSpace();
            if (AtEnd() || (Current() != ',' && Current() != close)) {
                FailPastCurrent(unterminated);
            }
            if (text_[at_++] == close) {
                return;
            }
            SkipSpace();
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

// The UTF-16 unit of the four hex digits at text[at], or nothing.
std::optional<std::uint32_t> HexQuadAt(std::string_view text, std::size_t at) {
    std::uint32_t unit = 0;
    if (at + 4 > text.size() ||
        std::from_chars(text.data() + at, text.data() + at + 4, unit, 16).ptr !=
            text.data() + at + 4) {
        return std::nullopt;
    }
    return unit;
}

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace

std::optional<JsonSyntaxError> FindJsonSyntaxError(std::string_view text) {
    try {
        JsonScanner(text).ScanDocument();
    } catch (const JsonScanner::Failure& failure) {
        return failure.error;
    }
    return std::nullopt;
}

bool ReplaceLoneSurrogateEscapes(std::string& text) {
    bool replaced = false;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '\\') {
            continue;
        }
        if (text[i + 1] != 'u') {
            ++i; // a one-letter escape, perhaps of a backslash
            continue;
        }
        const std::optional<std::uint32_t> unit = HexQuadAt(text, i + 2);
        if (!unit) {
            continue;
        }
        if (IsHighSurrogate(*unit) && text.compare(i + 6, 2, "\\u") == 0) {
            const std::optional<std::uint32_t> low = HexQuadAt(text, i + 8);
            if (low && IsLowSurrogate(*low)) {
                i += 11; // the pair
                continue;
            }
        }
        if (IsHighSurrogate(*unit) || IsLowSurrogate(*unit)) {
            text.replace(i + 2, 4, "fffd");
            replaced = true;
        }
        i += 5;
    }
    return replaced;
}

} // namespace platform::core

#include "JsonText.h"

#include <charconv>
#include <cmath>

namespace platform::core {
namespace {

char HexDigit(unsigned digit) {
    return static_cast<char>(digit < 10 ? '0' + digit : 'a' + digit - 10);
}

void AppendEscape(char16_t unit, std::string& out) {
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        out += HexDigit((unit >> shift) & 0xFu);
    }
}

void AppendAscii(char16_t unit, std::string& out) {
    switch (unit) {
    case u'"':
        out += "\\\"";
        return;
    case u'\\':
        out += "\\\\";
        return;
    case u'\b':
        out += "\\b";
        return;
    case u'\f':
        out += "\\f";
        return;
    case u'\n':
        out += "\\n";
        return;
    case u'\r':
        out += "\\r";
        return;
    case u'\t':
        out += "\\t";
        return;
    default:
        if (unit < 0x20) {
            AppendEscape(unit, out);
        } else {
            out += static_cast<char>(unit);
        }
    }
}

void AppendUtf8(char32_t c, std::string& out) {
    if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        }
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    }
    out += static_cast<char>(0x80 | (c & 0x3F));
}

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

void AppendJsonString(std::u16string_view text, std::string& out) {
    out += '"';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit < 0x80) {
            AppendAscii(unit, out);
        } else if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            const char32_t c = 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) +
                               (static_cast<char32_t>(text[i + 1]) - 0xDC00);
            AppendUtf8(c, out);
            ++i;
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            AppendEscape(unit, out);
        } else {
            AppendUtf8(unit, out);
        }
    }
    out += '"';
}

void AppendJsonString(std::string_view ascii, std::string& out) {
    out += '"';
    for (const char c : ascii) {
        AppendAscii(static_cast<unsigned char>(c), out);
    }
    out += '"';
}

// QJsonDocument writes a double that holds a whole number of at most 2^53 as
// that integer (so -0 as 0), and any other in the shorter of its fixed and
// exponent forms of the shortest digits that read back as the same double.
void AppendJsonNumber(double value, std::string& out) {
    constexpr double kTwoTo53 = 9007199254740992.0;
    if (std::fabs(value) <= kTwoTo53 && value == std::trunc(value)) {
        AppendJsonInteger(static_cast<std::int64_t>(value), out);
        return;
    }
    char buffer[40];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    const std::string_view scientific(buffer, static_cast<std::size_t>(result.ptr - buffer));
    const bool negative = scientific.front() == '-';
    const std::size_t e = scientific.find('e');
    std::string digits;
    for (const char c : scientific.substr(negative ? 1 : 0, e - (negative ? 1 : 0))) {
        if (c != '.') {
            digits += c;
        }
    }
    int exponent = 0;
    std::from_chars(scientific.data() + e + (scientific[e + 1] == '+' ? 2 : 1),
                    scientific.data() + scientific.size(), exponent);
    // The decimal point's place after the first digit.
    const int point = exponent + 1;
    std::string fixed;
    if (point <= 0) {
        fixed = "0." + std::string(static_cast<std::size_t>(-point), '0') + digits;
    } else if (static_cast<std::size_t>(point) >= digits.size()) {
        fixed = digits + std::string(static_cast<std::size_t>(point) - digits.size(), '0');
    } else {
        fixed = digits.substr(0, static_cast<std::size_t>(point)) + "." +
                digits.substr(static_cast<std::size_t>(point));
    }
    std::string exponential = digits.substr(0, 1);
    if (digits.size() > 1) {
        exponential += "." + digits.substr(1);
    }
    exponential += scientific.substr(e);
    if (negative) {
        out += '-';
    }
    out += exponential.size() < fixed.size() ? exponential : fixed;
}

void AppendJsonInteger(std::int64_t value, std::string& out) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

} // namespace platform::core

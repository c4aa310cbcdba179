#include "common/CharacterReference.h"

#include "common/TextInput.h"

#include <array>
#include <cctype>

namespace captionformats {

namespace {

struct NamedReference {
    std::string_view name;
    char32_t codePoint;
};

constexpr std::array<NamedReference, 19> kNamedReferences{{
    {"amp", U'&'},     {"lt", U'<'},      {"gt", U'>'},      {"quot", U'"'},     {"apos", U'\''},
    {"nbsp", 0xA0},    {"lrm", 0x200E},   {"rlm", 0x200F},   {"hellip", 0x2026}, {"mdash", 0x2014},
    {"ndash", 0x2013}, {"lsquo", 0x2018}, {"rsquo", 0x2019}, {"ldquo", 0x201C},  {"rdquo", 0x201D},
    {"copy", 0xA9},    {"reg", 0xAE},     {"trade", 0x2122}, {"shy", 0xAD},
}};

constexpr std::size_t kMaxReferenceLength = 12;

std::optional<char32_t> NumericValue(std::string_view digits) {
    int base = 10;
    if (!digits.empty() && (digits.front() == 'x' || digits.front() == 'X')) {
        base = 16;
        digits.remove_prefix(1);
    }
    if (digits.empty()) {
        return std::nullopt;
    }
    char32_t value = 0;
    for (char digit : digits) {
        const auto c = static_cast<unsigned char>(digit);
        int digitValue = 0;
        if (std::isdigit(c)) {
            digitValue = c - '0';
        } else if (base == 16 && std::isxdigit(c)) {
            digitValue = std::tolower(c) - 'a' + 10;
        } else {
            return std::nullopt;
        }
        value = value * static_cast<char32_t>(base) + static_cast<char32_t>(digitValue);
        if (value > 0x10FFFF) {
            value = 0x110000; // stays out of range however many digits follow
        }
    }
    return value == 0 ? 0xFFFD : value;
}

} // namespace

std::optional<DecodedReference> DecodeCharacterReference(std::string_view text) {
    const std::size_t semicolon = text.find(';');
    if (text.empty() || text.front() != '&' || semicolon == std::string_view::npos ||
        semicolon > kMaxReferenceLength) {
        return std::nullopt;
    }
    const std::string_view body = text.substr(1, semicolon - 1);
    DecodedReference decoded;
    decoded.length = semicolon + 1;
    if (!body.empty() && body.front() == '#') {
        const std::optional<char32_t> value = NumericValue(body.substr(1));
        if (!value) {
            return std::nullopt;
        }
        AppendUtf8(decoded.utf8, *value);
        return decoded;
    }
    for (const NamedReference& named : kNamedReferences) {
        if (named.name == body) {
            AppendUtf8(decoded.utf8, named.codePoint);
            return decoded;
        }
    }
    return std::nullopt;
}

} // namespace captionformats

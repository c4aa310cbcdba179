#include "common/TextInput.h"

namespace captionformats {

namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;

// The length of the valid UTF-8 sequence at the start of `bytes`, or 0 when it
// is malformed (overlong forms and surrogates included).
std::size_t ValidSequenceLength(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    std::size_t length = 0;
    char32_t minimum = 0;
    char32_t value = 0;
    if (lead < 0x80) {
        return 1;
    } else if ((lead & 0xE0) == 0xC0) {
        length = 2, minimum = 0x80, value = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, minimum = 0x800, value = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, minimum = 0x10000, value = lead & 0x07;
    } else {
        return 0;
    }
    if (bytes.size() < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[i]);
        if ((next & 0xC0) != 0x80) {
            return 0;
        }
        value = (value << 6) | (next & 0x3F);
    }
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    return (value < minimum || value > 0x10FFFF || surrogate) ? 0 : length;
}

std::string DecodeUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        std::size_t ascii = 0;
        while (ascii < bytes.size() && static_cast<unsigned char>(bytes[ascii]) < 0x80 &&
               bytes[ascii] != '\0') {
            ++ascii;
        }
        if (ascii > 0) {
            text.append(bytes.substr(0, ascii));
            bytes.remove_prefix(ascii);
            continue;
        }
        const std::size_t length = ValidSequenceLength(bytes);
        if (length == 0) {
            AppendUtf8(text, kReplacementCharacter);
            bytes.remove_prefix(1);
        } else if (bytes[0] == '\0') {
            AppendUtf8(text, kReplacementCharacter);
            bytes.remove_prefix(1);
        } else {
            text.append(bytes.substr(0, length));
            bytes.remove_prefix(length);
        }
    }
    return text;
}

std::string DecodeUtf16(std::string_view bytes, bool bigEndian) {
    std::string text;
    text.reserve(bytes.size());
    auto unitAt = [&](std::size_t i) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<char32_t>(bigEndian ? (first << 8) | second : (second << 8) | first);
    };
    std::size_t i = 0;
    for (; i + 1 < bytes.size(); i += 2) {
        char32_t unit = unitAt(i);
        if (unit >= 0xD800 && unit <= 0xDBFF && i + 3 < bytes.size()) {
            const char32_t low = unitAt(i + 2);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        AppendUtf8(text, unit == 0 ? kReplacementCharacter : unit);
    }
    if (i < bytes.size()) {
        AppendUtf8(text, kReplacementCharacter);
    }
    return text;
}

} // namespace

void AppendUtf8(std::string& utf8, char32_t codePoint) {
    if ((codePoint >= 0xD800 && codePoint <= 0xDFFF) || codePoint > 0x10FFFF) {
        codePoint = kReplacementCharacter;
    }
    if (codePoint < 0x80) {
        utf8 += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        utf8 += static_cast<char>(0xC0 | (codePoint >> 6));
        utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        utf8 += static_cast<char>(0xE0 | (codePoint >> 12));
        utf8 += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        utf8 += static_cast<char>(0xF0 | (codePoint >> 18));
        utf8 += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
        utf8 += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

TextInput::TextInput(std::string_view bytes, Encoding encoding) {
    const bool utf16Allowed = encoding == Encoding::kUtf8OrUtf16;
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        text_ = DecodeUtf8(bytes.substr(3));
    } else if (utf16Allowed && bytes.starts_with("\xFF\xFE")) {
        text_ = DecodeUtf16(bytes.substr(2), false);
    } else if (utf16Allowed && bytes.starts_with("\xFE\xFF")) {
        text_ = DecodeUtf16(bytes.substr(2), true);
    } else {
        text_ = DecodeUtf8(bytes);
    }
    const std::string_view text(text_);
    std::size_t start = 0;
    std::uint64_t number = 1;
    while (start < text.size()) {
        // A plain scan: find_first_of tests every byte against the set.
        std::size_t end = start;
        while (end < text.size() && text[end] != '\n' && text[end] != '\r') {
            ++end;
        }
        if (end == text.size()) {
            lines_.push_back({text.substr(start), number});
            break;
        }
        lines_.push_back({text.substr(start, end - start), number++});
        start =
            end + ((text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n') ? 2 : 1);
    }
}

} // namespace captionformats

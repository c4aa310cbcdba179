#include "common/TextInput.h"

#include "common/ByteScan.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace captionformats {

namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;

#if defined(__SSE2__)
constexpr std::size_t kBlock = 16;

__m128i LoadBlock(const char* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

// 0xFF where the byte is CR or LF, else 0.
__m128i Terminators(__m128i block) {
    return _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8('\n')),
                        _mm_cmpeq_epi8(block, _mm_set1_epi8('\r')));
}

// Bit i set where byte i of the block is NUL or not ASCII.
unsigned SpecialMask(__m128i block) {
    return static_cast<unsigned>(
        _mm_movemask_epi8(_mm_or_si128(block, _mm_cmpeq_epi8(block, _mm_setzero_si128()))));
}
#endif

bool IsTerminator(char c) {
    return c == '\n' || c == '\r';
}

// How many CRs and LFs the text holds: at least its number of lines less one.
std::size_t CountTerminators(std::string_view text) {
    std::size_t count = 0;
    std::size_t at = 0;
#if defined(__SSE2__)
    // Byte lanes count up to 255 blocks before they are summed.
    while (at + kBlock <= text.size()) {
        __m128i lanes = _mm_setzero_si128();
        for (int block = 0; block < 255 && at + kBlock <= text.size(); ++block, at += kBlock) {
            lanes = _mm_sub_epi8(lanes, Terminators(LoadBlock(text.data() + at)));
        }
        const __m128i sums = _mm_sad_epu8(lanes, _mm_setzero_si128());
        count += static_cast<std::size_t>(_mm_cvtsi128_si32(sums)) +
                 static_cast<std::size_t>(_mm_cvtsi128_si32(_mm_srli_si128(sums, 8)));
    }
#endif
    for (; at < text.size(); ++at) {
        count += IsTerminator(text[at]) ? 1 : 0;
    }
    return count;
}

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

// The length of the longest prefix of `bytes` that is valid UTF-8 without NUL:
// the text that can be used as it is.
std::size_t ValidUtf8Prefix(std::string_view bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
#if defined(__SSE2__)
        if (at + kBlock <= bytes.size() && SpecialMask(LoadBlock(bytes.data() + at)) == 0) {
            at += kBlock;
            continue;
        }
#endif
        if (bytes[at] == '\0') {
            return at;
        }
        const std::size_t length = ValidSequenceLength(bytes.substr(at));
        if (length == 0) {
            return at;
        }
        at += length;
    }
    return at;
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

DecodedText::DecodedText(std::string_view bytes, TextEncoding encoding) {
    const bool utf16Allowed = encoding == TextEncoding::kUtf8OrUtf16;
    if (utf16Allowed && bytes.starts_with("\xFF\xFE")) {
        decoded_ = DecodeUtf16(bytes.substr(2), false);
        text_ = decoded_;
    } else if (utf16Allowed && bytes.starts_with("\xFE\xFF")) {
        decoded_ = DecodeUtf16(bytes.substr(2), true);
        text_ = decoded_;
    } else {
        if (bytes.starts_with("\xEF\xBB\xBF")) {
            bytes.remove_prefix(3);
        }
        // Valid UTF-8, by far the usual case, is read where it lies.
        const std::size_t valid = ValidUtf8Prefix(bytes);
        if (valid == bytes.size()) {
            text_ = bytes;
        } else {
            decoded_.reserve(bytes.size());
            decoded_.assign(bytes.substr(0, valid));
            decoded_ += DecodeUtf8(bytes.substr(valid));
            text_ = decoded_;
        }
    }
}

bool LineCursor::Next(TextLine& line) {
    if (start_ >= text_.size()) {
        return false;
    }
    const std::size_t end = FindFirstOf<'\n', '\r'>(text_, start_);
    line = {text_.substr(start_, end - start_), number_++};
    start_ =
        end == text_.size()
            ? end
            : end + ((text_[end] == '\r' && end + 1 < text_.size() && text_[end + 1] == '\n') ? 2
                                                                                              : 1);
    return true;
}

TextInput::TextInput(std::string_view bytes, Encoding encoding)
    : DecodedText(bytes, encoding) {
    lines_.reserve(CountTerminators(Text()) + 1);
    LineCursor cursor(Text());
    for (Line line; cursor.Next(line);) {
        lines_.push_back(line);
    }
}

} // namespace captionformats

#include "zelcore/UTF16String.h"

#include <ostream>

namespace zelcore {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUTF8(UTF8String& out, char32_t c) {
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

// Writes one or two code units at buffer[used], advancing used.
void AppendUTF16(char16_t* buffer, std::size_t& used, char32_t c) {
    if (c < 0x10000) {
        buffer[used++] = static_cast<char16_t>(c);
    } else {
        c -= 0x10000;
        buffer[used++] = static_cast<char16_t>(0xD800 + (c >> 10));
        buffer[used++] = static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    }
}

// Decodes one UTF-8 sequence at i, advancing i; rejects overlong forms,
// surrogates and values past U+10FFFF.
char32_t DecodeUTF8(std::string_view s, std::size_t& i) {
    const auto lead = static_cast<unsigned char>(s[i++]);
    if (lead < 0x80) {
        return lead;
    }
    int extra = 0;
    char32_t c = 0;
    char32_t minimum = 0;
    if ((lead & 0xE0) == 0xC0) {
        extra = 1, c = lead & 0x1F, minimum = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        extra = 2, c = lead & 0x0F, minimum = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        extra = 3, c = lead & 0x07, minimum = 0x10000;
    } else {
        return kReplacement;
    }
    for (int k = 0; k < extra; ++k) {
        if (i >= s.size() || (static_cast<unsigned char>(s[i]) & 0xC0) != 0x80) {
            return kReplacement;
        }
        c = (c << 6) | (static_cast<unsigned char>(s[i++]) & 0x3F);
    }
    if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
        return kReplacement;
    }
    return c;
}

} // namespace

UTF16String ToUTF16(std::string_view utf8) {
    // Every byte gives at most one code unit (a four-byte sequence gives two),
    // so the units are written straight into a string of utf8.size() units and
    // the string is cut to what was written. Text that is not all ASCII gives
    // back the room it did not use.
    UTF16String out(utf8.size(), u'\0');
    char16_t* const units = out.data();
    std::size_t used = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        if (static_cast<unsigned char>(utf8[i]) >= 0x80) {
            AppendUTF16(units, used, DecodeUTF8(utf8, i));
            continue;
        }
        // A run of ASCII, the common case, widens without further checks.
        while (i < utf8.size() && static_cast<unsigned char>(utf8[i]) < 0x80) {
            units[used++] = static_cast<unsigned char>(utf8[i++]);
        }
    }
    if (used < out.size()) {
        out.resize(used);
        out.shrink_to_fit();
    }
    return out;
}

UTF8String ToUTF8(std::u16string_view utf16) {
    UTF8String out;
    out.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        char32_t c = utf16[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
            utf16[i + 1] <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (utf16[i + 1] - 0xDC00);
            ++i;
        } else if (c >= 0xD800 && c <= 0xDFFF) {
            c = kReplacement;
        }
        AppendUTF8(out, c);
    }
    return out;
}

std::ostream& utility::operator<<(std::ostream& os, const UTF16String& s) {
    return os << '"' << ToUTF8(s) << '"';
}

} // namespace zelcore

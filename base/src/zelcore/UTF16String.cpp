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

void AppendUTF16(UTF16String& out, char32_t c) {
    if (c < 0x10000) {
        out.push_back(static_cast<char16_t>(c));
    } else {
        c -= 0x10000;
        out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
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
    UTF16String out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        // Runs of ASCII, the common case, are widened in one step.
        std::size_t run = i;
        while (run < utf8.size() && static_cast<unsigned char>(utf8[run]) < 0x80) {
            ++run;
        }
        if (run > i) {
            const std::size_t at = out.size();
            out.resize(at + (run - i));
            for (std::size_t k = i; k < run; ++k) {
                out[at + (k - i)] = static_cast<char16_t>(utf8[k]);
            }
            i = run;
            continue;
        }
        AppendUTF16(out, DecodeUTF8(utf8, i));
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

#include "zelcaptioning/TextSpanAttributes.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string_view>

namespace zelcaptioning {

const zelcore::UTF16String TextSpanAttributes::kFontStyleString_Regular = u"Regular";
const zelcore::UTF16String TextSpanAttributes::kFontStyleString_Bold = u"Bold";
const zelcore::UTF16String TextSpanAttributes::kFontStyleString_Italic = u"Italic";
const zelcore::UTF16String TextSpanAttributes::kFontStyleString_BoldItalic = u"Bold Italic";

TextSpanAttributes::~TextSpanAttributes() = default;

bool TextSpanAttributes::IsGenericFontName(const zelcore::UTF16String& name) {
    static constexpr std::array<std::u16string_view, 9> kGeneric = {u"default",
                                                                    u"serif",
                                                                    u"sans-serif",
                                                                    u"monospace",
                                                                    u"cursive",
                                                                    u"fantasy",
                                                                    u"system-ui",
                                                                    u"proportional sans serif",
                                                                    u"monospaced sans serif"};
    zelcore::UTF16String lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char16_t c) {
        return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c - u'A' + u'a') : c;
    });
    return std::find(kGeneric.begin(), kGeneric.end(), zelcore::View(lower)) != kGeneric.end();
}

std::ostream& operator<<(std::ostream& os, const TextSpanAttributes& a) {
    os << '{';
    if (!a.GetFontName().empty()) {
        os << a.GetFontName() << ' ';
    }
    os << a.GetFontSize() << "pt";
    if (a.IsBolded()) {
        os << " bold";
    }
    if (a.IsItalicized()) {
        os << " italic";
    }
    if (a.IsUnderlined()) {
        os << " underline";
    }
    if (a.textColor != kCaptioningColor_White) {
        os << " text=" << a.textColor;
    }
    if (a.backgroundColor != kCaptioningColor_Transparent) {
        os << " back=" << a.backgroundColor;
    }
    if (a.edgeColor != kCaptioningColor_Transparent || a.edgeWidth != 0.0f ||
        a.GetTextEdge() != TextSpanAttributes::kTextEdge_None) {
        os << " edge=" << a.edgeColor << '/' << a.edgeWidth << '/' << a.GetTextEdge();
    }
    return os << '}';
}

} // namespace zelcaptioning

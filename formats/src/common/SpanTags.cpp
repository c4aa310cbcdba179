#include "common/SpanTags.h"

#include <algorithm>
#include <array>

namespace captionformats {

StyleTags StyleTagsOf(const zelcaptioning::TextSpanAttributes& attributes) {
    static constexpr std::array<StyleTags, 8> kTags{{
        {"", ""},
        {"<b>", "</b>"},
        {"<i>", "</i>"},
        {"<b><i>", "</i></b>"},
        {"<u>", "</u>"},
        {"<b><u>", "</u></b>"},
        {"<i><u>", "</u></i>"},
        {"<b><i><u>", "</u></i></b>"},
    }};
    static_assert(kStyleTagBytes == kTags.back().open.size() + kTags.back().close.size());
    return kTags[(attributes.IsBolded() ? 1U : 0U) | (attributes.IsItalicized() ? 2U : 0U) |
                 (attributes.IsUnderlined() ? 4U : 0U)];
}

void AppendInStyleTags(std::string& out, const zelcaptioning::TextSpanAttributes& attributes,
                       std::string_view text, void (*escape)(std::string&, std::string_view)) {
    const StyleTags tags = StyleTagsOf(attributes);
    out += tags.open;
    escape(out, text);
    out += tags.close;
}

char* CopyInStyleTags(char* to, const zelcaptioning::TextSpanAttributes& attributes,
                      std::string_view text, char* (*escape)(char*, std::string_view)) {
    const StyleTags tags = StyleTagsOf(attributes);
    to = std::copy(tags.open.begin(), tags.open.end(), to);
    to = escape(to, text);
    return std::copy(tags.close.begin(), tags.close.end(), to);
}

bool OnlyEmphasis(const zelcaptioning::TextSpanAttributes& attributes) {
    using namespace zelcaptioning;
    return attributes.textColor == kCaptioningColor_White &&
           attributes.backgroundColor == kCaptioningColor_Transparent &&
           attributes.edgeColor == kCaptioningColor_Transparent && attributes.edgeWidth == 0.0f &&
           attributes.GetTextEdge() == TextSpanAttributes::kTextEdge_None &&
           attributes.GetFontSize() == 0.0f && attributes.GetFontName().empty();
}

} // namespace captionformats

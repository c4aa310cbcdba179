#include "common/SpanTags.h"

namespace captionformats {

void AppendInStyleTags(std::string& out, const zelcaptioning::TextSpanAttributes& attributes,
                       std::string_view text, void (*escape)(std::string&, std::string_view)) {
    const Emphasis emphasis = (attributes.IsBolded() ? kEmphasisBold : 0) |
                              (attributes.IsItalicized() ? kEmphasisItalic : 0) |
                              (attributes.IsUnderlined() ? kEmphasisUnderline : 0);
    AppendOpeningTags(out, emphasis);
    escape(out, text);
    AppendClosingTags(out, emphasis);
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

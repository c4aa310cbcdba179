#include "common/SpanTags.h"

namespace captionformats {

void AppendInStyleTags(std::string& out, const zelcaptioning::TextSpanAttributes& attributes,
                       std::string_view text, void (*escape)(std::string&, std::string_view)) {
    const bool bold = attributes.IsBolded();
    const bool italic = attributes.IsItalicized();
    const bool underline = attributes.IsUnderlined();
    if (bold) {
        out += "<b>";
    }
    if (italic) {
        out += "<i>";
    }
    if (underline) {
        out += "<u>";
    }
    escape(out, text);
    if (underline) {
        out += "</u>";
    }
    if (italic) {
        out += "</i>";
    }
    if (bold) {
        out += "</b>";
    }
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

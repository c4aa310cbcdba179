#include "common/SpanTags.h"

namespace captionformats {

void AppendInStyleTags(std::string& out, const zelcaptioning::TextSpanAttributes& attributes,
                       std::string_view text, void (*escape)(std::string&, std::string_view)) {
    const bool bold = attributes.IsBolded();
    const bool italic = attributes.IsItalicized();
    const bool underline = attributes.IsUnderlined();
    if (bold || italic || underline) {
        out += bold ? std::string_view("<b>") : std::string_view();
        out += italic ? std::string_view("<i>") : std::string_view();
        out += underline ? std::string_view("<u>") : std::string_view();
        escape(out, text);
        out += underline ? std::string_view("</u>") : std::string_view();
        out += italic ? std::string_view("</i>") : std::string_view();
        out += bold ? std::string_view("</b>") : std::string_view();
    } else {
        escape(out, text);
    }
}

bool OnlyEmphasis(const zelcaptioning::TextSpanAttributes& attributes) {
    static const zelcaptioning::TextSpanAttributes plain;
    return attributes.textColor == plain.textColor &&
           attributes.backgroundColor == plain.backgroundColor &&
           attributes.edgeColor == plain.edgeColor && attributes.edgeWidth == plain.edgeWidth &&
           attributes.GetTextEdge() == plain.GetTextEdge() &&
           attributes.GetFontSize() == plain.GetFontSize() && attributes.GetFontName().empty();
}

} // namespace captionformats

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

// The tags of each emphasis, indexed by its bits: bold outermost, underline innermost.
constexpr std::string_view kOpeningTags[] = {"",    "<b>",    "<i>",    "<b><i>",
                                             "<u>", "<b><u>", "<i><u>", "<b><i><u>"};
constexpr std::string_view kClosingTags[] = {"",     "</b>",     "</i>",     "</i></b>",
                                             "</u>", "</u></b>", "</u></i>", "</u></i></b>"};
static_assert(kEmphasisBold == 1 && kEmphasisItalic == 2 && kEmphasisUnderline == 4);

void AppendOpeningTags(std::string& out, Emphasis emphasis) {
    out += kOpeningTags[emphasis & 7];
}

void AppendClosingTags(std::string& out, Emphasis emphasis) {
    out += kClosingTags[emphasis & 7];
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

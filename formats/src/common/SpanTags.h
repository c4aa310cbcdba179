#pragma once

#include "zelcaptioning/TextSpanAttributes.h"

#include <string>
#include <string_view>

namespace captionformats {

// Bold, italic and underline, the emphasis SubRip and WebVTT both mark with
// tags, as bits of one number: cheap to pass, keep and compare.
using Emphasis = unsigned;
inline constexpr Emphasis kEmphasisBold = 1;
inline constexpr Emphasis kEmphasisItalic = 2;
inline constexpr Emphasis kEmphasisUnderline = 4;

// Appends `text`, escaped by `escape`, inside the bold, italic and underline
// tags the attributes ask for: "<b><i><u>text</u></i></b>", the markup SubRip
// and WebVTT share.
void AppendInStyleTags(std::string& out, const zelcaptioning::TextSpanAttributes& attributes,
                       std::string_view text, void (*escape)(std::string&, std::string_view));

// The tags AppendInStyleTags writes before and after a span's text, for a
// writer that appends the text in pieces: indexed by the emphasis bits, bold
// outermost and underline innermost.
inline constexpr std::string_view kOpeningTags[] = {"",    "<b>",    "<i>",    "<b><i>",
                                                    "<u>", "<b><u>", "<i><u>", "<b><i><u>"};
inline constexpr std::string_view kClosingTags[] = {"",     "</b>",     "</i>",     "</i></b>",
                                                    "</u>", "</u></b>", "</u></i>", "</u></i></b>"};
static_assert(kEmphasisBold == 1 && kEmphasisItalic == 2 && kEmphasisUnderline == 4);

inline void AppendOpeningTags(std::string& out, Emphasis emphasis) {
    if (emphasis != 0) {
        out += kOpeningTags[emphasis & 7];
    }
}

inline void AppendClosingTags(std::string& out, Emphasis emphasis) {
    if (emphasis != 0) {
        out += kClosingTags[emphasis & 7];
    }
}

// True when the attributes are the defaults but for bold, italic and
// underline: a span both formats write whole, with no loss to note.
bool OnlyEmphasis(const zelcaptioning::TextSpanAttributes& attributes);

} // namespace captionformats

#pragma once

#include "zelcaptioning/TextSpanAttributes.h"

#include <string>
#include <string_view>

namespace captionformats {

// Appends `text`, escaped by `escape`, inside the bold, italic and underline
// tags the attributes ask for: "<b><i><u>text</u></i></b>", the markup SubRip
// and WebVTT share.
void AppendInStyleTags(std::string& out, const zelcaptioning::TextSpanAttributes& attributes,
                       std::string_view text, void (*escape)(std::string&, std::string_view));

// The tags around a span for its bold, italic and underline, nested in that
// order; spans alike in these have the same tags, the same views.
struct StyleTags {
    std::string_view open;
    std::string_view close;
};
StyleTags StyleTagsOf(const zelcaptioning::TextSpanAttributes& attributes);

// The most bytes the tags of AppendInStyleTags take.
inline constexpr std::size_t kStyleTagBytes = 21;

// AppendInStyleTags writing at `to`, which has room for the tags and the
// escaped text; `escape` copies and returns the end of its copy, as this
// returns the end of all.
char* CopyInStyleTags(char* to, const zelcaptioning::TextSpanAttributes& attributes,
                      std::string_view text, char* (*escape)(char*, std::string_view));

// True when the attributes are the defaults but for bold, italic and
// underline: a span both formats write whole, with no loss to note.
bool OnlyEmphasis(const zelcaptioning::TextSpanAttributes& attributes);

} // namespace captionformats

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

// True when the attributes are the defaults but for bold, italic and
// underline: a span both formats write whole, with no loss to note.
bool OnlyEmphasis(const zelcaptioning::TextSpanAttributes& attributes);

} // namespace captionformats

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

} // namespace captionformats

#pragma once

#include "zelcore/UTF16String.h"

namespace HandlerCaptions {

// Removes a leading weight word ("Ultra Light", "Light", "Medium", "Demi Bold",
// "Heavy", tried in that order) and the space after it from a font style
// name; returns whether one was there. Style names are compared without it,
// so "Medium Italic" matches "Italic".
bool StripLeadingWeightWord(zelcore::UTF16String& styleName);

// What a style name says of bold and italic: the four standard names exactly;
// any other is bold when it contains the bold style word and italic when it
// ends with the italic one.
struct StyleFlags {
    bool bold = false;
    bool italic = false;
};
StyleFlags StyleFlagsOf(const zelcore::UTF16String& styleName);

// The standard style name for bold and italic ("Regular", "Bold", ...).
zelcore::UTF16String StyleNameOf(bool bold, bool italic);

} // namespace HandlerCaptions

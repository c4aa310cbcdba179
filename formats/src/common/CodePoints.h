#pragma once

#include "zelcore/UTF16String.h"

#include <string>

namespace captionformats {

// The text's Unicode code points: surrogate pairs joined, a lone surrogate
// kept as it is (encoders report it as a character they cannot write).
std::u32string CodePoints(const zelcore::UTF16String& text);

} // namespace captionformats

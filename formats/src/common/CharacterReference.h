#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace captionformats {

struct DecodedReference {
    std::string utf8;
    std::size_t length = 0; // bytes of the reference, '&' and ';' included
};

// The HTML character reference at the start of `text` (which begins with '&'):
// "&#NNN;", "&#xHHH;" or one of the named references caption files use (amp,
// lt, gt, quot, apos, nbsp, lrm, rlm, and a few typographic ones). Anything
// else, a missing ';' included, is no reference: the '&' stands for itself.
// A numeric reference to NUL, a surrogate or past U+10FFFF gives U+FFFD.
std::optional<DecodedReference> DecodeCharacterReference(std::string_view text);

} // namespace captionformats

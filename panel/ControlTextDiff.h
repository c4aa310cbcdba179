#pragma once

#include "zelcore/UTF16String.h"

#include <cstdint>
#include <optional>

namespace HandlerCaptions {

// What an edit of a text control changed, in the editing engine's terms: a
// line break counts as one character (LF), where the control writes CR LF.
struct ControlTextChange {
    std::uint64_t position = 0;    // engine position of the first changed character
    zelcore::UTF16String removed;  // the old text of the range, LF breaks
    zelcore::UTF16String inserted; // its new text, LF breaks
};

// The smallest range that turns `before` into `after` (their common prefix and
// suffix are left out, never splitting a CR LF pair); empty when equal.
std::optional<ControlTextChange> DiffControlText(const zelcore::UTF16String& before,
                                                 const zelcore::UTF16String& after);

// The text with every CR LF pair (and lone CR) written as LF.
zelcore::UTF16String ToEngineBreaks(std::u16string_view text);

// An engine range (start, end) as a range of the control's CR LF text: each
// pair met up to the range's first character shifts both ends by one. Pairs
// inside the range do not move its end; an end of -1 stays the end of text.
void ToControlRange(std::u16string_view controlText, std::int64_t& start, std::int64_t& end);
// The control offset as an engine position.
std::int64_t EnginePositionOf(std::u16string_view controlText, std::int64_t controlOffset);

} // namespace HandlerCaptions

#pragma once

#include "common/SpanTags.h"
#include "common/TextInput.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace captionformats::srt {

// <b>, <i>, <u> or their closing tags, in any case: nearly every tag a SubRip
// file holds.
struct EmphasisTag {
    char name = 'b'; // 'b', 'i' or 'u', as written
    bool closing = false;
    std::size_t length = 0;
};

// The emphasis tag `text` starts with, read by its shape without a tag scan.
inline std::optional<EmphasisTag> ReadEmphasisTag(std::string_view text) {
    const bool closing = text.size() > 1 && text[1] == '/';
    const std::size_t name = closing ? 2 : 1;
    if (name + 1 >= text.size() || text[name + 1] != '>') {
        return std::nullopt;
    }
    // Setting bit 5 lowercases a letter; only 'B' and 'b' become 'b', and so on.
    const char lower = static_cast<char>(text[name] | 0x20);
    if (lower != 'b' && lower != 'i' && lower != 'u') {
        return std::nullopt;
    }
    return EmphasisTag{text[name], closing, name + 2};
}

// How many of each emphasis tag are open in a cue: a closing tag with none
// open changes nothing.
class EmphasisDepths {
public:
    // Opens or closes emphasis `name` (b, i or u in any case); false, changing
    // nothing, for any other name.
    bool Change(char name, bool closing) {
        const char lower = static_cast<char>(name | 0x20);
        const int which = lower == 'b' ? 0 : lower == 'i' ? 1 : lower == 'u' ? 2 : -1;
        if (which < 0) {
            return false;
        }
        int& depth = depths_[which];
        depth = closing ? std::max(0, depth - 1) : depth + 1;
        const Emphasis bit = Emphasis{1} << which;
        current_ = depth > 0 ? (current_ | bit) : (current_ & ~bit);
        return true;
    }
    Emphasis Current() const { return current_; }

private:
    static_assert(kEmphasisBold == 1 && kEmphasisItalic == 2 && kEmphasisUnderline == 4);
    int depths_[3] = {}; // bold, italic, underline
    Emphasis current_ = 0;
};

// Appends the text lines of one SubRip cue as the cue writers write what
// SrtCueText reads from them, when the lines hold nothing but text and
// emphasis tags: on each line, the text between tags in runs of one emphasis,
// each run escaped by `escape` inside the tags AppendInStyleTags gives it, and
// a '\n'. Returns false, having appended nothing, when a line holds '&', '{',
// a '<' that starts no emphasis tag, or no text at all (a line the writers
// drop with a loss): such cues take the general path. `escape` must change
// no byte but '&', '<' and '>', each on its own: only a '>' is handed to it,
// alone, as the rest of the text it would get holds none of them.
bool AppendEmphasisLines(std::string& out, std::span<const TextLine> lines,
                         void (*escape)(std::string&, std::string_view));

} // namespace captionformats::srt

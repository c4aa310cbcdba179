#include "srt/SrtEmphasis.h"

#include "common/ByteScan.h"

namespace captionformats::srt {

bool AppendEmphasisLines(std::string& out, std::span<const TextLine> lines,
                         void (*escape)(std::string&, std::string_view)) {
    const std::size_t mark = out.size();
    auto decline = [&out, mark] {
        out.resize(mark);
        return false;
    };
    EmphasisDepths depths;
    for (const TextLine& line : lines) {
        std::string_view text = line.text;
        while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
            text.remove_suffix(1);
        }
        // The run being written: text in the same emphasis joins it.
        constexpr Emphasis kNoRun = ~Emphasis{0};
        Emphasis run = kNoRun;
        auto appendText = [&](std::string_view piece, bool escaped) {
            const Emphasis emphasis = depths.Current();
            if (run != emphasis) {
                if (run != kNoRun) {
                    AppendClosingTags(out, run);
                }
                AppendOpeningTags(out, emphasis);
                run = emphasis;
            }
            if (escaped) {
                escape(out, piece);
            } else {
                out.append(piece);
            }
        };
        for (std::size_t start = 0;;) {
            const std::size_t at = FindFirstOf<'<', '{', '&', '>'>(text, start);
            if (at > start) {
                appendText(text.substr(start, at - start), false);
            }
            if (at == text.size()) {
                break;
            }
            if (text[at] == '>') {
                appendText(text.substr(at, 1), true);
                start = at + 1;
                continue;
            }
            const auto tag = text[at] == '<' ? ReadEmphasisTag(text.substr(at)) : std::nullopt;
            if (!tag) {
                return decline();
            }
            depths.Change(tag->name, tag->closing);
            start = at + tag->length;
        }
        if (run == kNoRun) {
            return decline();
        }
        AppendClosingTags(out, run);
        out += '\n';
    }
    return true;
}

} // namespace captionformats::srt

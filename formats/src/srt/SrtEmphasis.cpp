#include "srt/SrtEmphasis.h"

#include "common/ByteScan.h"

#include <algorithm>

namespace captionformats::srt {

namespace {

enum class PieceKind { kTags, kText, kEscapedText };
enum class LineOutcome { kWritten, kStopped, kDeclined };

// Walks one trimmed line, handing what the cue writers write for it to
// `emit(piece, kind)` in order: the tags around each run, and the text, a '>'
// alone as text to escape. kStopped when emit returns false; kDeclined for a
// line AppendEmphasisLines declines.
template <typename Emit>
LineOutcome WalkEmphasisLine(std::string_view text, EmphasisDepths& depths, Emit&& emit) {
    // The run being written: text in the same emphasis joins it.
    constexpr Emphasis kNoRun = ~Emphasis{0};
    Emphasis run = kNoRun;
    auto emitText = [&](std::string_view piece, PieceKind kind) {
        const Emphasis emphasis = depths.Current();
        if (run != emphasis) {
            if (run != kNoRun && !emit(kClosingTags[run & 7], PieceKind::kTags)) {
                return false;
            }
            run = emphasis;
            if (!emit(kOpeningTags[emphasis & 7], PieceKind::kTags)) {
                return false;
            }
        }
        return emit(piece, kind);
    };
    for (std::size_t start = 0;;) {
        const std::size_t at = FindFirstOf<'<', '{', '&', '>'>(text, start);
        if (at > start && !emitText(text.substr(start, at - start), PieceKind::kText)) {
            return LineOutcome::kStopped;
        }
        if (at == text.size()) {
            break;
        }
        if (text[at] == '>') {
            if (!emitText(text.substr(at, 1), PieceKind::kEscapedText)) {
                return LineOutcome::kStopped;
            }
            start = at + 1;
            continue;
        }
        const auto tag = text[at] == '<' ? ReadEmphasisTag(text.substr(at)) : std::nullopt;
        if (!tag) {
            return LineOutcome::kDeclined;
        }
        depths.Change(tag->name, tag->closing);
        start = at + tag->length;
    }
    if (run == kNoRun) {
        return LineOutcome::kDeclined;
    }
    return emit(kClosingTags[run & 7], PieceKind::kTags) ? LineOutcome::kWritten
                                                         : LineOutcome::kStopped;
}

// Whether what the writers write for the line is the line itself, as it is for
// most lines: each run's text where it stands, between the very tags the
// writers put around it. Checked without writing, so that such a line is
// copied whole.
bool WrittenAsItStands(std::string_view text, EmphasisDepths& depths) {
    std::size_t matched = 0;
    const LineOutcome outcome =
        WalkEmphasisLine(text, depths, [text, &matched](std::string_view piece, PieceKind kind) {
            if (kind == PieceKind::kText) {
                if (piece.data() != text.data() + matched) {
                    return false;
                }
            } else if (kind == PieceKind::kEscapedText ||
                       !std::equal(piece.begin(), piece.end(), text.begin() + matched,
                                   text.begin() + std::min(text.size(), matched + piece.size()))) {
                return false;
            }
            matched += piece.size();
            return true;
        });
    return outcome == LineOutcome::kWritten && matched == text.size();
}

} // namespace

bool AppendEmphasisLines(std::string& out, std::span<const TextLine> lines,
                         void (*escape)(std::string&, std::string_view)) {
    const std::size_t mark = out.size();
    EmphasisDepths depths;
    for (const TextLine& line : lines) {
        std::string_view text = line.text;
        while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
            text.remove_suffix(1);
        }
        const EmphasisDepths before = depths;
        if (WrittenAsItStands(text, depths)) {
            out += text;
        } else {
            depths = before;
            const LineOutcome outcome = WalkEmphasisLine(
                text, depths, [&out, escape](std::string_view piece, PieceKind kind) {
                    if (kind == PieceKind::kEscapedText) {
                        escape(out, piece);
                    } else {
                        out += piece;
                    }
                    return true;
                });
            if (outcome == LineOutcome::kDeclined) {
                out.resize(mark);
                return false;
            }
        }
        out += '\n';
    }
    return true;
}

} // namespace captionformats::srt

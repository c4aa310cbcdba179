#pragma once

#include "common/CueWriterBase.h"
#include "common/SpanTags.h"
#include "zelcaptioning/Caption.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace captionformats::cea608 {
class CaptionMemory;
}

namespace captionformats::srt {

// Appends captions to `out` as numbered SubRip cues, noting what SubRip cannot
// carry. A caption comes either from the model or, in a direct conversion, as
// lines of spans or as a CEA-608 screen; all give the same bytes and the same
// losses for the same caption.
class SrtCueWriter : private CueWriterBase {
public:
    SrtCueWriter(std::string& out, LossReport& losses)
        : CueWriterBase(out, losses) {}

    // `index` counts captions in writing order, from 0.
    void Write(const zelcaptioning::Caption& caption, std::size_t index);

    // A run of a line's text in one set of attributes.
    struct Span {
        std::string_view utf8;
        const zelcaptioning::TextSpanAttributes* attributes;
    };
    // A caption whose lines all have paragraph style `style`; line i is
    // spans[lineEnds[i - 1], lineEnds[i]) (from 0 for the first). Adjacent
    // spans of a line differ in attributes, as a paragraph's do.
    void WriteSpans(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                    zelcaptioning::CaptionType type,
                    const zelcaptioning::ParagraphStyleAttributes& style,
                    std::span<const Span> spans, std::span<const std::size_t> lineEnds,
                    std::size_t index);

    // A caption of the CEA-608 screen's rows, each a line with paragraph style
    // `style`, written straight from its cells when they are plain: ASCII
    // without markup in styles that only emphasise, within the 32 columns.
    // Returns false, having written nothing, for any other screen; WriteSpans
    // then writes it (the losses noted here are noted again there, which
    // counts them once).
    bool WriteScreen(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                     zelcaptioning::CaptionType type,
                     const zelcaptioning::ParagraphStyleAttributes& style,
                     const cea608::CaptionMemory& screen, std::size_t index);

private:
    // The number and timing lines of a cue, written at `to`; returns their end.
    static char* CopyCueHead(char* to, zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                             std::size_t index);
    // Appends what `write` writes at the pointer it is given, in room for
    // `most` bytes; `write` returns the end of what it wrote.
    template <typename Write> void Reserved(std::size_t most, const Write& write) {
        const std::size_t start = out_.size();
        out_.resize(start + most);
        char* const end = write(out_.data() + start);
        out_.resize(static_cast<std::size_t>(end - out_.data()));
    }
    // The {\anN} tag for a placement ("" for bottom centre), noting what the
    // tag cannot say.
    std::string PlacementTag(const zelcaptioning::ParagraphStyleAttributes& style);
    // A span's text, escaped, in its tags, written at `to`, which has room for
    // them; returns their end.
    char* CopySpan(char* to, const zelcaptioning::TextSpanAttributes& attributes,
                   std::string_view utf8);

    // What WriteScreen makes of each cell style it has met: whether it only
    // emphasises, and how.
    struct ScreenStyle {
        std::uint32_t cellStyle;
        bool plain;
        Emphasis emphasis;
    };
    // Looked up in line: a screen's few styles each come many times.
    const ScreenStyle& ScreenStyleOf(std::uint32_t cellStyle) {
        for (const ScreenStyle& known : screenStyles_) {
            if (known.cellStyle == cellStyle) {
                return known;
            }
        }
        return AddScreenStyle(cellStyle);
    }
    const ScreenStyle& AddScreenStyle(std::uint32_t cellStyle);
    std::vector<ScreenStyle> screenStyles_;
    std::string screenCue_; // WriteScreen's cue until it is known to be plain
    // Noted for nearly every caption decoded from a 608 screen, found once.
    LossReport::Tally* freePositionDropped_ = nullptr;
};

} // namespace captionformats::srt

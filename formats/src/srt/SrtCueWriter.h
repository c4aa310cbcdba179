#pragma once

#include "common/CaptionTextBuilder.h"
#include "common/CueWriterBase.h"

#include <string>

namespace captionformats::srt {

// Appends captions to `out` as numbered SubRip cues, noting what SubRip cannot
// carry. A caption comes either from the model or, in a direct conversion, as
// the lines of a builder; the two give the same bytes and the same losses for
// the same caption.
class SrtCueWriter : private CueWriterBase {
public:
    SrtCueWriter(std::string& out, LossReport& losses)
        : CueWriterBase(out, losses) {}

    // `index` counts captions in writing order, from 0.
    void Write(const zelcaptioning::Caption& caption, std::size_t index);

    // A caption of `lineCount` lines of `text`, each with paragraph style `style`.
    void WriteLines(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                    zelcaptioning::CaptionType type,
                    const zelcaptioning::ParagraphStyleAttributes& style,
                    const CaptionTextBuilder& text, std::size_t lineCount, std::size_t index);

private:
    void StartCue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                  zelcaptioning::CaptionType type, std::size_t index);
    // The {\anN} tag for a placement ("" for bottom centre), noting what the
    // tag cannot say.
    std::string PlacementTag(const zelcaptioning::ParagraphStyleAttributes& style);
    void AppendSpan(const zelcaptioning::TextSpanAttributes& attributes, std::string_view utf8);
};

} // namespace captionformats::srt

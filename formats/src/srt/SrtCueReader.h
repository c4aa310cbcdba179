#pragma once

#include "common/CaptionTextBuilder.h"
#include "common/DiagnosticLog.h"
#include "common/TextInput.h"
#include "srt/SrtTiming.h"

#include <span>
#include <string_view>

namespace captionformats::srt {

// Receives the cues of a SubRip file one by one, in file order.
class CueSink {
public:
    virtual ~CueSink() = default;
    // `text` holds the cue's `lineCount` lines (none for a cue without text),
    // each to take paragraph style `style`. The sink leaves `text` empty.
    virtual void Cue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                     const zelcaptioning::ParagraphStyleAttributes& style, CaptionTextBuilder& text,
                     std::size_t lineCount) = 0;
    // Offered each cue's text lines as they stand in the file, before they
    // are parsed (none for a cue without text). A sink that takes the cue
    // from them returns true, and Cue is not called for it; one that declines
    // must be as it was before the call.
    virtual bool CueLines(const CueTiming& /*timing*/, std::span<const TextLine> /*lines*/) {
        return false;
    }
};

// Reads a SubRip file (see SrtReader) into `sink`, its findings into `log`;
// returns the number of cues.
std::size_t ReadSrtCues(std::string_view bytes, DiagnosticLog& log, CueSink& sink);

} // namespace captionformats::srt

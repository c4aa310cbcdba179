#pragma once

#include "common/CaptionTextBuilder.h"
#include "common/CueWriterBase.h"

#include <optional>
#include <string>
#include <vector>

namespace captionformats::webvtt {

// Every WebVTT file we write starts with this signature and a blank line.
inline constexpr std::string_view kSignature = "WEBVTT\n\n";

// Appends captions to `out` as WebVTT cues, noting what WebVTT cannot carry.
// A caption comes either from the model or, in a direct conversion, as the
// lines of a builder; the two give the same bytes and the same losses for the
// same caption.
class VttCueWriter : private CueWriterBase {
public:
    VttCueWriter(std::string& out, LossReport& losses)
        : CueWriterBase(out, losses) {}

    // `index` counts captions in writing order, from 0.
    void Write(const zelcaptioning::Caption& caption, std::size_t index);

    // An open caption of `lineCount` unplaced lines of `text` (none for a cue
    // without text), each with paragraph style `style`.
    void WriteOpenCaption(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                          const zelcaptioning::ParagraphStyleAttributes& style,
                          const CaptionTextBuilder& text, std::size_t lineCount, std::size_t index);

private:
    void StartCue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                  zelcaptioning::CaptionType type, std::size_t index);
    std::string Settings(const zelcaptioning::Caption& caption);
    std::string SettingsOf(const zelcaptioning::ParagraphStyleAttributes& style,
                           const zelcaptioning::Position& firstLinePosition);
    // SettingsOf for unplaced lines of `style`, kept from the caption before
    // when its style was the same: the cues of a file are mostly placed alike.
    const std::string& OpenCaptionSettings(const zelcaptioning::ParagraphStyleAttributes& style);
    void AppendSpan(const zelcaptioning::TextSpanAttributes& attributes, std::string_view utf8);

    struct OpenPlacement {
        zelcaptioning::ParagraphStyleAttributes style;
        std::string settings;
        std::vector<std::string> losses; // noted again for every caption placed so
    };
    std::optional<OpenPlacement> lastOpenPlacement_;
};

} // namespace captionformats::webvtt

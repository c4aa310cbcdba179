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

    // The same caption when its lines need no loss noted and `appendLines`
    // writes them itself: called as appendLines(out, escape), it appends each
    // line's spans in the markup of AppendInStyleTags, escaped by `escape`,
    // and a '\n' after each line. Returns false, having written and noted
    // nothing, when the cue's time or placement costs a loss or appendLines
    // returns false (having appended nothing); WriteOpenCaption then takes it.
    // `clockText`, when not empty, is begin and end as "HH:MM:SS?mmm -->
    // HH:MM:SS?mmm" with any byte for '?': copied instead of formatted.
    template <typename AppendLines>
    bool WriteOpenCaptionLines(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                               std::string_view clockText,
                               const zelcaptioning::ParagraphStyleAttributes& style, bool hasLines,
                               AppendLines&& appendLines, std::size_t index) {
        const OpenPlacement& placement = OpenPlacementOf(style);
        if (begin < zelmediatypes::kTime_Zero || (hasLines && !placement.losses.empty())) {
            return false;
        }
        const std::size_t mark = out_.size();
        WriteOpenTimingLine(begin, end, index, clockText,
                            hasLines ? std::string_view(placement.settings) : std::string_view());
        if (!appendLines(out_, &AppendEscaped)) {
            out_.resize(mark);
            return false;
        }
        out_ += '\n';
        return true;
    }

    // WebVTT's escaping of cue text: '&', '<' and '>' as character references.
    static void AppendEscaped(std::string& out, std::string_view text);

private:
    struct OpenPlacement {
        zelcaptioning::ParagraphStyleAttributes style;
        std::string settings;
        std::vector<std::string> losses; // noted again for every caption placed so
    };

    // The cue's timing line but for its settings.
    void StartCue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                  zelcaptioning::CaptionType type, std::size_t index);
    // An open caption's whole timing line, `settings` and its '\n' included;
    // `clockText` as for WriteOpenCaptionLines.
    void WriteOpenTimingLine(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                             std::size_t index, std::string_view clockText,
                             std::string_view settings);
    std::string Settings(const zelcaptioning::Caption& caption);
    std::string SettingsOf(const zelcaptioning::ParagraphStyleAttributes& style,
                           const zelcaptioning::Position& firstLinePosition);
    // The settings and losses of unplaced lines of `style`, kept from the
    // caption before when its style was the same: the cues of a file are
    // mostly placed alike.
    const OpenPlacement& OpenPlacementOf(const zelcaptioning::ParagraphStyleAttributes& style);
    // SettingsOf for unplaced lines of `style`.
    const std::string& OpenCaptionSettings(const zelcaptioning::ParagraphStyleAttributes& style);
    void AppendSpan(const zelcaptioning::TextSpanAttributes& attributes, std::string_view utf8);

    std::optional<OpenPlacement> lastOpenPlacement_;
};

} // namespace captionformats::webvtt

#pragma once

#include "common/CaptionTextBuilder.h"
#include "common/DiagnosticLog.h"
#include "srt/SrtEmphasis.h"

#include <optional>
#include <string_view>
#include <vector>

namespace captionformats::srt {

// Reads the text lines of one cue into a builder. Styles opened by tags run on
// across the cue's lines until closed, and end with the cue. Tags other than b,
// i, u and font, and override blocks other than {\anN}, are dropped with a
// warning; a '<' or '{' that starts no tag is text.
class SrtCueText {
public:
    SrtCueText(CaptionTextBuilder& builder, DiagnosticLog& log)
        : builder_(builder)
        , log_(log) {}

    void ParseLine(std::string_view line, std::uint64_t lineNumber);

    // The last {\anN} tag of the cue: 1 to 9, numbered like a numeric keypad.
    std::optional<int> KeypadPosition() const { return keypadPosition_; }

private:
    // Each returns the bytes it consumed, 0 when the text there is no tag.
    // ParseEmphasisTag reads only emphasis tags, without the tag scan.
    std::size_t ParseEmphasisTag(std::string_view text);
    std::size_t ParseTag(std::string_view text, std::uint64_t lineNumber, std::size_t column);
    std::size_t ParseOverride(std::string_view text, std::uint64_t lineNumber, std::size_t column);
    void ApplyFontTag(std::string_view attributes, std::uint64_t lineNumber, std::size_t column);
    // The style the open tags give, recomputed whenever a tag opens or closes.
    const zelcaptioning::TextSpanAttributes& CurrentAttributes() const { return current_; }
    void Restyle();

    CaptionTextBuilder& builder_;
    DiagnosticLog& log_;
    EmphasisDepths emphasis_;
    std::vector<zelcaptioning::CaptioningColor> colorStack_;
    std::optional<int> keypadPosition_;
    zelcaptioning::TextSpanAttributes current_;
};

} // namespace captionformats::srt

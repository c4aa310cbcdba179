#pragma once

#include "zelcaptioning/CaptioningColor.h"
#include "zelcaptioning/ParagraphStyleAttributes.h"
#include "zelcaptioning/Position.h"
#include "zelcore/UTF16String.h"

#include <cstdint>
#include <iosfwd>

namespace caption_editor {

// What the styles of a character range have in common, as the toolbar shows it.
struct StyleSummary {
    static constexpr std::int32_t kAlignmentNone = 1002;  // no paragraph seen
    static constexpr std::int32_t kAlignmentMixed = 1003; // differing or unaligned blocks
    static constexpr zelcaptioning::AnchorID kAnchorMixed = -2;

    // True only when every span of the range has the style.
    bool bold = false;
    bool italic = false;
    bool underline = false;
    // The first non-zero size met; 20.0 when there is none.
    float fontSize = 20.0f;
    // The first non-empty family met.
    zelcore::UTF16String fontName;
    // The first span's colours; a mixed flag tells that a later span differs.
    zelcaptioning::CaptioningColor textColor = zelcaptioning::kCaptioningColor_White;
    zelcaptioning::CaptioningColor backgroundColor = zelcaptioning::kCaptioningColor_Transparent;
    zelcaptioning::CaptioningColor edgeColor = zelcaptioning::kCaptioningColor_Transparent;
    bool textColorMixed = false;
    bool backgroundColorMixed = false;
    bool edgeColorMixed = false;
    // The edge width of the span that gave the edge colour.
    float edgeWidth = 0.0f;
    // A TextAlignmentType, kAlignmentNone or kAlignmentMixed.
    std::int32_t alignment = kAlignmentNone;
    // The first paragraph's anchor, kAnchorID_None when no paragraph was seen,
    // kAnchorMixed when paragraphs differ; `position` is that first paragraph's.
    zelcaptioning::AnchorID anchor = zelcaptioning::kAnchorID_None;
    zelcaptioning::Position position = zelcaptioning::kPosition_Uninitialized;
};

std::ostream& operator<<(std::ostream& os, const StyleSummary& summary);

} // namespace caption_editor

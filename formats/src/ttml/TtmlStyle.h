#pragma once

#include "common/DiagnosticLog.h"
#include "ttml/TtmlNames.h"

#include "zelcaptioning/CaptionTextParagraph.h"

#include <optional>
#include <string>

namespace pugi {
class xml_node;
}

namespace captionformats::ttml {

// A pair of lengths as percentages of the root container (tts:origin, tts:extent).
struct PercentPair {
    zelcaptioning::Rational x;
    zelcaptioning::Rational y;
    friend bool operator==(const PercentPair&, const PercentPair&) = default;
};

enum class DisplayAlign { kBefore, kCenter, kAfter };

// The TTML style properties we map, each set or not.
struct TtmlStyle {
    std::optional<zelcaptioning::CaptioningColor> color;
    std::optional<zelcaptioning::CaptioningColor> backgroundColor;
    std::optional<std::string> fontFamily;
    std::optional<float> fontSize;
    std::optional<bool> italic;
    std::optional<bool> bold;
    std::optional<bool> underline;
    std::optional<zelcaptioning::CaptioningColor> outlineColor;
    std::optional<float> outlineWidth;
    std::optional<zelcaptioning::TextAlignmentType> textAlign;
    std::optional<PercentPair> origin;
    std::optional<PercentPair> extent;
    std::optional<DisplayAlign> displayAlign;

    // Properties set in `over` replace these.
    void MergeFrom(const TtmlStyle& over);
    // A span's attributes from these properties (unset ones keep their defaults).
    zelcaptioning::TextSpanAttributes SpanAttributes() const;
};

// The tts: attributes of an element. Values we cannot read, and properties we
// do not map, are warned at the element (by byte offset, which the reader
// turns into a line and column).
TtmlStyle ParseStyleAttributes(const pugi::xml_node& element, const TtmlNames& names,
                               DiagnosticLog& log, const SourceLocation& where);

} // namespace captionformats::ttml

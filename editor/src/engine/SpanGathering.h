#pragma once

#include "zelcaptioning/Caption.h"

#include <cstdint>
#include <vector>

namespace caption_editor::detail {

// A span that a character range touches, with where it stands.
struct SpanRecord {
    zelcaptioning::CaptionTextSpanPtr span;
    std::uint64_t spanIndex = 0;
    std::uint64_t firstPosition = 0; // flat
    std::uint64_t length = 0;
    zelcaptioning::CaptionTextParagraphPtr paragraph;
    std::uint64_t paragraphIndex = 0;
};

// The spans of [start, end) in caption order. A non-empty range takes every
// span it overlaps, an empty span counting as one position wide. A caret takes
// the span it stands in or just after, and the first span of a paragraph it
// stands at the start of; of two such, the later one wins only when it starts
// exactly at the caret. So a caret between two spans selects the earlier span,
// and a caret at the start of a paragraph selects that paragraph's first span.
std::vector<SpanRecord> GatherSpans(const zelcaptioning::Caption& caption, std::uint64_t start,
                                    std::uint64_t end);

// The distinct paragraphs of the records, in caption order, with their indices.
struct ParagraphRef {
    zelcaptioning::CaptionTextParagraphPtr paragraph;
    std::uint64_t index = 0;
};
std::vector<ParagraphRef> DistinctParagraphs(const std::vector<SpanRecord>& records);

// Splits `span` so that the object itself keeps the `length` code units from
// `offset`; the text before and after goes to new spans with copies of its
// attributes, inserted beside it. Does nothing when the span is not in the paragraph.
void SplitSpan(zelcaptioning::CaptionTextParagraph& paragraph,
               const zelcaptioning::CaptionTextSpanPtr& span, std::uint64_t offset,
               std::uint64_t length);

} // namespace caption_editor::detail

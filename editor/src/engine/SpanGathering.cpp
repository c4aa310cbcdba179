#include "SpanGathering.h"

#include <algorithm>

namespace caption_editor::detail {

using zelcaptioning::CaptionTextParagraphPtr;
using zelcaptioning::CaptionTextSpanPtr;

std::vector<SpanRecord> GatherSpans(const zelcaptioning::Caption& caption, std::uint64_t start,
                                    std::uint64_t end) {
    std::vector<SpanRecord> records;
    const std::uint64_t length = end > start ? end - start : 0;
    std::uint64_t position = 0;
    const std::uint64_t paragraphCount = caption.GetNumParagraphs();
    for (std::uint64_t p = 0; p < paragraphCount; ++p) {
        const CaptionTextParagraphPtr paragraph = caption.GetCaptionTextParagraph(p);
        if (!paragraph) {
            continue;
        }
        const std::uint64_t spanCount = paragraph->GetNumSpans();
        for (std::uint64_t s = 0; s < spanCount; ++s) {
            CaptionTextSpanPtr span = paragraph->GetCaptionTextSpan(s);
            if (!span) {
                continue;
            }
            const std::uint64_t first = position;
            const std::uint64_t n = span->GetTextLength();
            const std::uint64_t last = first + std::max<std::uint64_t>(n, 1) - 1;
            const bool taken =
                length > 0 ? start + length > first && start <= last
                           : (start > first && start <= last + 1) || (s == 0 && start == first);
            if (taken) {
                records.push_back({std::move(span), s, first, n, paragraph, p});
            }
            position += n;
        }
        position += 1;
    }
    if (length == 0 && records.size() > 1 && records[1].firstPosition == start) {
        records.erase(records.begin());
    }
    return records;
}

std::vector<ParagraphRef> DistinctParagraphs(const std::vector<SpanRecord>& records) {
    std::vector<ParagraphRef> paragraphs;
    for (const SpanRecord& record : records) {
        if (paragraphs.empty() || paragraphs.back().paragraph != record.paragraph) {
            paragraphs.push_back({record.paragraph, record.paragraphIndex});
        }
    }
    return paragraphs;
}

void SplitSpan(zelcaptioning::CaptionTextParagraph& paragraph, const CaptionTextSpanPtr& span,
               std::uint64_t offset, std::uint64_t length) {
    std::uint64_t index = 0;
    const std::uint64_t count = paragraph.GetNumSpans();
    while (index < count && paragraph.GetCaptionTextSpan(index) != span) {
        ++index;
    }
    if (index == count) {
        return;
    }
    const zelcore::UTF16String text = span->GetCaptionText();
    const zelcaptioning::TextSpanAttributes& attributes = span->StyleAttributes();
    if (offset > 0) {
        paragraph.InsertCaptionTextSpan(
            index, new zelcaptioning::CaptionTextSpan(text.substr(0, offset), attributes));
        ++index;
    }
    span->SetCaptionText(text.substr(offset, length));
    if (offset + length < text.size()) {
        paragraph.InsertCaptionTextSpan(index + 1, new zelcaptioning::CaptionTextSpan(
                                                       text.substr(offset + length), attributes));
    }
}

} // namespace caption_editor::detail

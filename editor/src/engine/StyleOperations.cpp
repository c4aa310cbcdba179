// Character-style operations over a range: split the touched spans at the
// range's ends, restyle the middle parts, then merge equal neighbours again.
#include "SpanGathering.h"
#include "caption_editor/CaptionTextEditor.h"

#include <algorithm>

namespace caption_editor {

using zelcaptioning::CaptioningColor;
using zelcaptioning::TextSpanAttributes;

template <typename Has, typename Set>
void CaptionTextEditor::ApplySpanStyle(std::uint64_t start, std::uint64_t end, Has has, Set set) {
    modified_ = true;
    if (!workingCopy_) {
        return;
    }
    const bool isRange = end > start;
    for (const detail::SpanRecord& record : detail::GatherSpans(*workingCopy_, start, end)) {
        if (has(record.span->StyleAttributes())) {
            continue;
        }
        const std::uint64_t spanEnd = record.firstPosition + record.length;
        if (isRange && (start > record.firstPosition || end < spanEnd)) {
            const std::uint64_t offset =
                std::max(start, record.firstPosition) - record.firstPosition;
            const std::uint64_t length = std::min(spanEnd, end) - record.firstPosition - offset;
            detail::SplitSpan(*record.paragraph, record.span, offset, length);
        }
        TextSpanAttributes attributes = record.span->GetTextSpanStyleAttributes();
        set(attributes);
        record.span->SetTextSpanStyleAttributes(attributes);
    }
    std::vector<zelcaptioning::CaptionTextParagraphPtr> paragraphs;
    workingCopy_->GetCaptionTextParagraphs(paragraphs);
    for (const auto& paragraph : paragraphs) {
        if (paragraph) {
            paragraph->PackSpansWithMatchingStyle();
        }
    }
}

void CaptionTextEditor::SetBold(bool bold, std::uint64_t start, std::uint64_t end) {
    ApplySpanStyle(
        start, end, [&](const TextSpanAttributes& a) { return a.IsBolded() == bold; },
        [&](TextSpanAttributes& a) { a.SetBolded(bold); });
}

void CaptionTextEditor::SetItalic(bool italic, std::uint64_t start, std::uint64_t end) {
    ApplySpanStyle(
        start, end, [&](const TextSpanAttributes& a) { return a.IsItalicized() == italic; },
        [&](TextSpanAttributes& a) { a.SetItalicized(italic); });
}

void CaptionTextEditor::SetUnderline(bool underline, std::uint64_t start, std::uint64_t end) {
    ApplySpanStyle(
        start, end, [&](const TextSpanAttributes& a) { return a.IsUnderlined() == underline; },
        [&](TextSpanAttributes& a) { a.SetUnderlined(underline); });
}

void CaptionTextEditor::SetFontName(const zelcore::UTF16String& name, std::uint64_t start,
                                    std::uint64_t end) {
    ApplySpanStyle(
        start, end, [&](const TextSpanAttributes& a) { return a.GetFontName() == name; },
        [&](TextSpanAttributes& a) { a.SetFontName(name); });
}

void CaptionTextEditor::SetFontSize(float size, std::uint64_t start, std::uint64_t end) {
    ApplySpanStyle(
        start, end, [&](const TextSpanAttributes& a) { return a.GetFontSize() == size; },
        [&](TextSpanAttributes& a) { a.SetFontSize(size); });
}

void CaptionTextEditor::SetColor(const CaptioningColor& color, std::int32_t selector,
                                 std::uint64_t start, std::uint64_t end) {
    ApplySpanStyle(
        start, end,
        [&](const TextSpanAttributes& a) {
            switch (selector) {
            case 0:
                return !(a.textColor != color);
            case 1:
                return !(a.backgroundColor != color);
            case 2:
                return !(a.edgeColor != color);
            default:
                return true;
            }
        },
        [&](TextSpanAttributes& a) {
            if (selector == 0) {
                a.textColor = color;
            } else if (selector == 1) {
                a.backgroundColor = color;
            } else {
                a.edgeColor = color;
                a.SetTextEdge(color.Alpha() == 0.0f ? TextSpanAttributes::kTextEdge_None
                                                    : TextSpanAttributes::kTextEdge_Uniform);
            }
        });
}

void CaptionTextEditor::SetEdgeWidth(float width, std::uint64_t start, std::uint64_t end) {
    ApplySpanStyle(
        start, end, [&](const TextSpanAttributes& a) { return a.edgeWidth == width; },
        [&](TextSpanAttributes& a) {
            a.edgeWidth = width;
            a.SetTextEdge(width == 0.0f ? TextSpanAttributes::kTextEdge_None
                                        : TextSpanAttributes::kTextEdge_Uniform);
        });
}

} // namespace caption_editor

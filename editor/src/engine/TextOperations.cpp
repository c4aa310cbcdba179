// Inserting and deleting text, and breaking and joining paragraphs.
#include "SpanGathering.h"
#include "caption_editor/CaptionTextEditor.h"

#include <algorithm>

namespace caption_editor {

using zelcaptioning::CaptionTextParagraph;
using zelcaptioning::CaptionTextParagraphPtr;
using zelcaptioning::CaptionTextSpan;
using zelcaptioning::CaptionTextSpanPtr;
using zelcore::UTF16String;

namespace {

constexpr char16_t kLineFeed = u'\n';

CaptionTextSpanPtr LastSpan(const CaptionTextParagraph& paragraph) {
    for (std::uint64_t i = paragraph.GetNumSpans(); i > 0; --i) {
        if (auto span = paragraph.GetCaptionTextSpan(i - 1)) {
            return span;
        }
    }
    return nullptr;
}

// An empty span counts as one position wide when a caret is gathered, so an
// empty span left in front of text would take the text typed after that
// text's first character. Breaks and joins therefore never leave one: a
// paragraph keeps an empty span only as its only span.
void DropEmptySpansBeforeText(CaptionTextParagraph& paragraph) {
    if (paragraph.GetParagraphTextLength() == 0) {
        return;
    }
    std::vector<CaptionTextSpanPtr> spans;
    paragraph.GetCaptionTextSpans(spans);
    for (const CaptionTextSpanPtr& span : spans) {
        if (span && span->GetTextLength() == 0) {
            paragraph.RemoveCaptionTextSpan(span);
        }
    }
}

} // namespace

void CaptionTextEditor::InsertText(const UTF16String& text, std::uint64_t position) {
    if (!workingCopy_) {
        return;
    }
    modified_ = true;
    // A caption without paragraphs gets its first, empty line before anything
    // is typed, so that a leading line feed breaks that line like any other.
    if (workingCopy_->GetNumParagraphs() == 0) {
        BreakParagraph(0);
    }
    if (const std::size_t feed = text.find(kLineFeed); feed != UTF16String::npos) {
        if (feed > 0) {
            InsertText(text.substr(0, feed), position);
        }
        BreakParagraph(position + feed);
        if (feed + 1 < text.size()) {
            InsertText(text.substr(feed + 1), position + feed + 1);
        }
        return;
    }
    const auto records = detail::GatherSpans(*workingCopy_, position, position);
    if (records.empty()) {
        return;
    }
    const detail::SpanRecord& record = records.front();
    const std::uint64_t offset = std::max(position, record.firstPosition) - record.firstPosition;
    UTF16String spanText = record.span->GetCaptionText();
    if (offset < record.length) {
        spanText.insert(offset, text);
    } else {
        spanText += text;
    }
    record.span->SetCaptionText(spanText);
}

void CaptionTextEditor::DeleteText(const UTF16String& text, std::uint64_t position) {
    if (!workingCopy_) {
        return;
    }
    modified_ = true;
    if (const std::size_t feed = text.find(kLineFeed); feed != UTF16String::npos) {
        if (feed > 0) {
            DeleteText(text.substr(0, feed), position);
        }
        JoinParagraphs(position);
        if (feed + 1 < text.size()) {
            DeleteText(text.substr(feed + 1), position);
        }
        return;
    }
    std::uint64_t at = position;
    std::uint64_t remaining = text.size();
    for (const detail::SpanRecord& record :
         detail::GatherSpans(*workingCopy_, position, position + remaining)) {
        if (remaining == 0) {
            break;
        }
        if (record.firstPosition == at && remaining >= record.length) {
            record.span->SetCaptionText(UTF16String());
            if (record.paragraph->GetNumSpans() > 1) {
                record.paragraph->RemoveCaptionTextSpan(record.span);
            }
            at += record.length;
            remaining -= record.length;
        } else if (at >= record.firstPosition && at - record.firstPosition < record.length) {
            const std::uint64_t offset = at - record.firstPosition;
            const std::uint64_t count = std::min(remaining, record.length - offset);
            UTF16String spanText = record.span->GetCaptionText();
            spanText.erase(offset, count);
            record.span->SetCaptionText(spanText);
            at += count;
            remaining -= count;
        }
    }
}

void CaptionTextEditor::ReplaceText(const UTF16String& oldText, const UTF16String& newText,
                                    std::uint64_t position) {
    if (oldText == newText) {
        return;
    }
    DeleteText(oldText, position);
    InsertText(newText, position);
}

void CaptionTextEditor::BreakParagraph(std::uint64_t position) {
    if (!workingCopy_) {
        return;
    }
    modified_ = true;
    const auto records = detail::GatherSpans(*workingCopy_, position, position);
    if (records.empty()) {
        if (workingCopy_->GetNumParagraphs() == 0) {
            CaptionTextParagraphPtr first(new CaptionTextParagraph);
            first->AppendCaptionTextSpan(new CaptionTextSpan);
            InsertParagraph(0, first, nullptr, 0);
        }
        return;
    }
    const detail::SpanRecord& record = records.front();
    CaptionTextParagraph& origin = *record.paragraph;
    const std::uint64_t originLength = origin.GetParagraphTextLength();
    CaptionTextParagraphPtr added(new CaptionTextParagraph);
    added->SetParagraphStyleAttributes(origin.GetParagraphStyleAttributes());
    CaptionTextSpanPtr addedSpan(
        new CaptionTextSpan(UTF16String(), record.span->GetTextSpanStyleAttributes()));
    added->AppendCaptionTextSpan(addedSpan);

    if (record.spanIndex == 0 && position == record.firstPosition) {
        if (record.paragraphIndex > 0) {
            auto above = workingCopy_->GetCaptionTextParagraph(record.paragraphIndex - 1);
            if (CaptionTextSpanPtr last = above ? LastSpan(*above) : nullptr) {
                addedSpan->SetTextSpanStyleAttributes(last->GetTextSpanStyleAttributes());
            }
        }
        InsertParagraph(record.paragraphIndex, added, record.paragraph, originLength);
        return;
    }
    const std::uint64_t offset = position - record.firstPosition;
    if (offset != 0 && offset < record.length) {
        const UTF16String spanText = record.span->GetCaptionText();
        record.span->SetCaptionText(spanText.substr(0, offset));
        addedSpan->SetCaptionText(spanText.substr(offset));
    }
    std::vector<CaptionTextSpanPtr> spans;
    origin.GetCaptionTextSpans(spans);
    for (std::size_t i = record.spanIndex + 1; i < spans.size(); ++i) {
        added->AppendCaptionTextSpan(spans[i]);
        origin.RemoveCaptionTextSpan(spans[i]);
    }
    DropEmptySpansBeforeText(*added);
    InsertParagraph(record.paragraphIndex + 1, added, record.paragraph, originLength);
}

void CaptionTextEditor::JoinParagraphs(std::uint64_t position) {
    if (!workingCopy_) {
        return;
    }
    modified_ = true;
    const auto records = detail::GatherSpans(*workingCopy_, position, position);
    if (records.empty()) {
        return;
    }
    const detail::SpanRecord& record = records.back();
    const std::uint64_t nextIndex = record.paragraphIndex + 1;
    if (nextIndex >= workingCopy_->GetNumParagraphs()) {
        return;
    }
    CaptionTextParagraphPtr next = workingCopy_->GetCaptionTextParagraph(nextIndex);
    if (next) {
        std::vector<CaptionTextSpanPtr> spans;
        next->GetCaptionTextSpans(spans);
        for (const CaptionTextSpanPtr& span : spans) {
            if (span && span->GetTextLength() > 0) {
                record.paragraph->AppendCaptionTextSpan(span);
                next->RemoveCaptionTextSpan(span);
            }
        }
    }
    DropEmptySpansBeforeText(*record.paragraph);
    RemoveJoinedParagraph(nextIndex);
}

} // namespace caption_editor

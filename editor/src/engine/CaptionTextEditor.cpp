#include "caption_editor/CaptionTextEditor.h"

#include "zelcaptioning/CaptionArea.h"

namespace caption_editor {

using zelcaptioning::Caption;
using zelcaptioning::CaptionPtr;
using zelcaptioning::CaptionTextParagraphPtr;
using zelcaptioning::CaptionTextSpan;

namespace {

// Gives every paragraph exactly the spans it shows: an empty span where there
// is none, and no empty span trailing a non-empty one.
void Normalise(Caption& caption) {
    std::vector<CaptionTextParagraphPtr> paragraphs;
    caption.GetCaptionTextParagraphs(paragraphs);
    for (const CaptionTextParagraphPtr& paragraph : paragraphs) {
        if (!paragraph) {
            continue;
        }
        const std::uint64_t count = paragraph->GetNumSpans();
        if (count == 0) {
            paragraph->AppendCaptionTextSpan(new CaptionTextSpan);
        } else if (count >= 2) {
            auto last = paragraph->GetCaptionTextSpan(count - 1);
            if (last && last->GetTextLength() == 0) {
                paragraph->RemoveCaptionTextSpan(last);
            }
        }
    }
}

} // namespace

void CaptionTextEditor::SetCaption(const CaptionPtr& caption, std::int32_t columnCount,
                                   std::int32_t rowCount, std::int32_t width, std::int32_t height) {
    if (caption == workingCopy_) {
        return;
    }
    columnCount_ = columnCount;
    rowCount_ = rowCount;
    areaWidth_ = zelcaptioning::CaptionAreaExtent(width);
    areaHeight_ = zelcaptioning::CaptionAreaExtent(height);
    pixelLayout_ = areaWidth_ > 0 && areaHeight_ > 0;
    if (caption) {
        workingCopy_ = new Caption(*caption);
        Normalise(*workingCopy_);
        savedCopy_ = new Caption(*caption);
        hostCaption_ = caption;
    } else {
        workingCopy_.reset();
        savedCopy_.reset();
        hostCaption_.reset();
    }
}

void CaptionTextEditor::Reload() {
    const CaptionPtr host = hostCaption_;
    SetCaption(nullptr, columnCount_, rowCount_, areaWidth_, areaHeight_);
    SetCaption(host, columnCount_, rowCount_, areaWidth_, areaHeight_);
}

bool CaptionTextEditor::Revert() {
    if (!modified_ || !workingCopy_ || !savedCopy_) {
        return false;
    }
    *workingCopy_ = *savedCopy_;
    return true;
}

} // namespace caption_editor

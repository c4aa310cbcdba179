#include "common/CaptionTextBuilder.h"

namespace captionformats {

using namespace zelcaptioning;

void CaptionTextBuilder::Append(std::string_view utf8, const TextSpanAttributes& attributes) {
    if (utf8.empty()) {
        return;
    }
    std::vector<Run>& line = lines_[lineCount_ - 1];
    if (!line.empty() && line.back().attributes == attributes) {
        line.back().utf8 += utf8;
    } else {
        line.push_back({std::string(utf8), attributes});
    }
}

void CaptionTextBuilder::BreakLine() {
    if (lineCount_ == lines_.size()) {
        lines_.emplace_back();
    }
    ++lineCount_;
}

bool CaptionTextBuilder::IsEmpty() const {
    return lineCount_ == 1 && lines_.front().empty();
}

std::vector<CaptionTextParagraphPtr>
CaptionTextBuilder::TakeParagraphs(const ParagraphStyleAttributes& style) {
    std::vector<CaptionTextParagraphPtr> paragraphs;
    paragraphs.reserve(lineCount_);
    for (std::size_t index = 0; index < lineCount_; ++index) {
        std::vector<Run>& line = lines_[index];
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        paragraph->SetParagraphStyleAttributes(style);
        for (const Run& run : line) {
            paragraph->AppendCaptionTextSpan(
                new CaptionTextSpan(zelcore::ToUTF16(run.utf8), run.attributes));
        }
        paragraphs.push_back(paragraph);
        line.clear();
    }
    lineCount_ = 1;
    return paragraphs;
}

CaptionPtr MakeCaption(zelmediatypes::TickTime begin, zelmediatypes::TickTime end, CaptionType type,
                       const std::vector<CaptionTextParagraphPtr>& paragraphs) {
    CaptionPtr caption(new Caption);
    caption->SetBeginTime(begin);
    caption->SetEndTime(end);
    caption->SetCaptionType(type);
    for (const CaptionTextParagraphPtr& paragraph : paragraphs) {
        caption->AppendCaptionTextParagraph(paragraph);
    }
    return caption;
}

} // namespace captionformats

#include "common/CaptionTextBuilder.h"

namespace captionformats {

using namespace zelcaptioning;

namespace {

// Neighbouring runs differ mostly in emphasis: that is compared first.
bool SameAttributes(const TextSpanAttributes& a, const TextSpanAttributes& b) {
    return a.IsItalicized() == b.IsItalicized() && a.IsBolded() == b.IsBolded() &&
           a.IsUnderlined() == b.IsUnderlined() && a == b;
}

} // namespace

void CaptionTextBuilder::Append(std::string_view utf8, const TextSpanAttributes& attributes) {
    if (utf8.empty()) {
        return;
    }
    Line& line = lines_[lineCount_ - 1];
    if (line.runCount > 0 && SameAttributes(line.runs[line.runCount - 1].attributes, attributes)) {
        line.runs[line.runCount - 1].utf8 += utf8;
        return;
    }
    if (line.runCount < line.runs.size()) {
        Run& run = line.runs[line.runCount];
        run.utf8.assign(utf8);
        run.attributes = attributes;
    } else {
        line.runs.push_back({std::string(utf8), attributes});
    }
    ++line.runCount;
}

void CaptionTextBuilder::BreakLine() {
    if (lineCount_ == lines_.size()) {
        lines_.emplace_back();
    }
    ++lineCount_;
}

bool CaptionTextBuilder::IsEmpty() const {
    return lineCount_ == 1 && lines_.front().runCount == 0;
}

void CaptionTextBuilder::Clear() {
    for (std::size_t index = 0; index < lineCount_; ++index) {
        lines_[index].runCount = 0;
    }
    lineCount_ = 1;
}

std::vector<CaptionTextParagraphPtr>
CaptionTextBuilder::TakeParagraphs(const ParagraphStyleAttributes& style) {
    std::vector<CaptionTextParagraphPtr> paragraphs;
    paragraphs.reserve(lineCount_);
    for (std::size_t index = 0; index < lineCount_; ++index) {
        Line& line = lines_[index];
        std::vector<CaptionTextSpanPtr> spans;
        spans.reserve(line.runCount);
        for (std::size_t run = 0; run < line.runCount; ++run) {
            spans.emplace_back(new CaptionTextSpan(zelcore::ToUTF16(line.runs[run].utf8),
                                                   line.runs[run].attributes));
        }
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        paragraph->SetParagraphStyleAttributes(style);
        paragraph->SetCaptionTextSpans(std::move(spans));
        paragraphs.push_back(std::move(paragraph));
    }
    Clear();
    return paragraphs;
}

CaptionPtr MakeCaption(zelmediatypes::TickTime begin, zelmediatypes::TickTime end, CaptionType type,
                       std::vector<CaptionTextParagraphPtr> paragraphs) {
    CaptionPtr caption(new Caption);
    caption->SetBeginTime(begin);
    caption->SetEndTime(end);
    caption->SetCaptionType(type);
    caption->SetCaptionTextParagraphs(std::move(paragraphs));
    return caption;
}

} // namespace captionformats

#include "zelcaptioning/Caption.h"

#include <algorithm>
#include <ostream>

namespace zelcaptioning {

Caption::Caption(const Caption& other)
    : RefCounted(other)
    , begin_(other.begin_)
    , end_(other.end_)
    , type_(other.type_) {
    paragraphs_.reserve(other.paragraphs_.size());
    for (const CaptionTextParagraphPtr& paragraph : other.paragraphs_) {
        paragraphs_.push_back(paragraph ? paragraph->Clone() : CaptionTextParagraphPtr());
    }
}

Caption& Caption::operator=(const Caption& other) {
    if (this != &other) {
        Caption copy(other);
        begin_ = copy.begin_;
        end_ = copy.end_;
        type_ = copy.type_;
        paragraphs_.swap(copy.paragraphs_);
    }
    return *this;
}

void Caption::InsertCaptionTextParagraph(std::uint64_t index,
                                         const CaptionTextParagraphPtr& paragraph) {
    const auto at = std::min<std::uint64_t>(index, paragraphs_.size());
    paragraphs_.insert(paragraphs_.begin() + static_cast<std::ptrdiff_t>(at), paragraph);
}

void Caption::RemoveCaptionTextParagraph(const CaptionTextParagraphPtr& paragraph) {
    auto it = std::find(paragraphs_.begin(), paragraphs_.end(), paragraph);
    if (it != paragraphs_.end()) {
        paragraphs_.erase(it);
    }
}

zelcore::UTF16String Caption::GetPlainText() const {
    zelcore::UTF16String text;
    for (std::size_t i = 0; i < paragraphs_.size(); ++i) {
        if (i > 0) {
            text += u'\n';
        }
        if (paragraphs_[i]) {
            text += paragraphs_[i]->GetText();
        }
    }
    return text;
}

std::ostream& operator<<(std::ostream& os, const Caption& caption) {
    os << "Caption(" << caption.GetBeginTime() << " to " << caption.GetEndTime() << ", "
       << caption.GetCaptionType() << ") {";
    for (std::uint64_t i = 0; i < caption.GetNumParagraphs(); ++i) {
        os << "\n  ";
        if (auto paragraph = caption.GetCaptionTextParagraph(i)) {
            os << *paragraph;
        } else {
            os << "(null)";
        }
    }
    return os << (caption.GetNumParagraphs() ? "\n}" : "}");
}

} // namespace zelcaptioning

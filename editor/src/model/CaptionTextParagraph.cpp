#include "zelcaptioning/CaptionTextParagraph.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace zelcaptioning {
namespace {

constexpr double kLineHeightPerEm = 1.25;
constexpr double kEstimatedAdvancePerEm = 0.6;

float EffectiveSize(const TextSpanAttributes& attributes) {
    return attributes.GetFontSize() > 0.0f ? attributes.GetFontSize()
                                           : TextSpanAttributes::kDefaultFontSize;
}

} // namespace

CaptionTextParagraphPtr CaptionTextParagraph::Clone() const {
    CaptionTextParagraphPtr copy(new CaptionTextParagraph);
    copy->spans_.reserve(spans_.size());
    for (const CaptionTextSpanPtr& span : spans_) {
        copy->spans_.push_back(span ? span->Clone() : CaptionTextSpanPtr());
    }
    copy->style_ = style_;
    copy->position_ = position_;
    copy->measuredWidthPx_ = measuredWidthPx_;
    copy->measuredHeightPx_ = measuredHeightPx_;
    return copy;
}

void CaptionTextParagraph::InsertCaptionTextSpan(std::uint64_t index,
                                                 const CaptionTextSpanPtr& span) {
    spans_.insert(spans_.begin() +
                      static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(index, spans_.size())),
                  span);
}

void CaptionTextParagraph::RemoveCaptionTextSpan(const CaptionTextSpanPtr& span) {
    auto it = std::find(spans_.begin(), spans_.end(), span);
    if (it != spans_.end()) {
        spans_.erase(it);
    }
}

std::uint64_t CaptionTextParagraph::GetParagraphTextLength() const {
    std::uint64_t length = 0;
    for (const CaptionTextSpanPtr& span : spans_) {
        if (span) {
            length += span->GetTextLength();
        }
    }
    return length;
}

std::uint64_t CaptionTextParagraph::GetParagraphLineHeightFromFontSize() const {
    float largest = 0.0f;
    for (const CaptionTextSpanPtr& span : spans_) {
        if (span) {
            largest = std::max(largest, EffectiveSize(span->StyleAttributes()));
        }
    }
    if (largest == 0.0f) {
        largest = TextSpanAttributes::kDefaultFontSize;
    }
    return static_cast<std::uint64_t>(std::ceil(largest * kLineHeightPerEm));
}

std::uint64_t CaptionTextParagraph::GetParagraphLineHeight() const {
    return measuredHeightPx_ != 0 ? measuredHeightPx_ : GetParagraphLineHeightFromFontSize();
}

std::uint64_t CaptionTextParagraph::GetParagraphLineWidth() const {
    if (measuredHeightPx_ != 0) {
        return measuredWidthPx_;
    }
    double width = 0.0;
    for (const CaptionTextSpanPtr& span : spans_) {
        if (span) {
            width += static_cast<double>(span->GetTextLength()) *
                     EffectiveSize(span->StyleAttributes()) * kEstimatedAdvancePerEm;
        }
    }
    return static_cast<std::uint64_t>(std::ceil(width));
}

void CaptionTextParagraph::SetMeasuredLineSize(std::uint64_t widthPx, std::uint64_t heightPx) {
    measuredWidthPx_ = widthPx;
    measuredHeightPx_ = heightPx;
}

void CaptionTextParagraph::GetUsedRect(std::int64_t width, std::int64_t height,
                                       zelcore::geom::RectT<int>& rect) const {
    if (position_ == kPosition_Uninitialized) {
        rect = {};
        return;
    }
    const auto left = static_cast<int>(ValueWithScale(position_.GetX(), width, true));
    const auto top = static_cast<int>(ValueWithScale(position_.GetY(), height, true));
    rect = zelcore::geom::RectT<int>::FromSize(left, top, static_cast<int>(GetParagraphLineWidth()),
                                               static_cast<int>(GetParagraphLineHeight()));
}

void CaptionTextParagraph::GetVerticalPosition(std::int64_t height, std::int64_t& top,
                                               std::int64_t& bottom) const {
    if (position_ == kPosition_Uninitialized) {
        top = bottom = 0;
        return;
    }
    top = ValueWithScale(position_.GetY(), height, true);
    bottom = top + static_cast<std::int64_t>(GetParagraphLineHeight());
}

void CaptionTextParagraph::PackSpansWithMatchingStyle() {
    std::vector<CaptionTextSpanPtr> packed;
    packed.reserve(spans_.size());
    for (const CaptionTextSpanPtr& span : spans_) {
        if (span && !packed.empty() && packed.back() &&
            packed.back()->StyleAttributes() == span->StyleAttributes()) {
            packed.back()->SetCaptionText(packed.back()->GetCaptionText() + span->GetCaptionText());
        } else {
            packed.push_back(span);
        }
    }
    spans_.swap(packed);
}

zelcore::UTF16String CaptionTextParagraph::GetText() const {
    zelcore::UTF16String text;
    for (const CaptionTextSpanPtr& span : spans_) {
        if (span) {
            text += span->GetCaptionText();
        }
    }
    return text;
}

std::ostream& operator<<(std::ostream& os, const CaptionTextParagraph& paragraph) {
    os << "P(" << paragraph.GetParagraphStyleAttributes() << " at "
       << paragraph.GetCaptionPosition() << ")[";
    for (std::uint64_t i = 0; i < paragraph.GetNumSpans(); ++i) {
        os << (i ? " " : "");
        if (auto span = paragraph.GetCaptionTextSpan(i)) {
            os << *span;
        } else {
            os << "(null)";
        }
    }
    return os << ']';
}

} // namespace zelcaptioning

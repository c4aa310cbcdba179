#pragma once

#include "zelcaptioning/CaptionTextSpan.h"
#include "zelcaptioning/ParagraphStyleAttributes.h"
#include "zelcaptioning/Position.h"
#include "zelcore/geom/Rect.h"

#include <utility>
#include <vector>

namespace zelcaptioning {

// One line of a caption: spans in order, a paragraph style and a position.
// Its line width and height are measured by the host's renderer with the real
// fonts (SetMeasuredLineSize); until then they are estimated from the font size.
class CaptionTextParagraph : public RefCounted {
public:
    CaptionTextParagraph() = default;
    ~CaptionTextParagraph() override = default;

    // A new paragraph with copies of this one's spans, style, position and measures.
    boost::intrusive_ptr<CaptionTextParagraph> Clone() const;

    std::uint64_t GetNumSpans() const { return spans_.size(); }
    CaptionTextSpanPtr GetCaptionTextSpan(std::uint64_t index) const { return spans_[index]; }
    void GetCaptionTextSpans(std::vector<CaptionTextSpanPtr>& spans) const { spans = spans_; }
    void AppendCaptionTextSpan(const CaptionTextSpanPtr& span) { spans_.push_back(span); }
    // Replaces every span at once, taking over the vector.
    void SetCaptionTextSpans(std::vector<CaptionTextSpanPtr> spans) { spans_ = std::move(spans); }
    // Inserts before the span at `index`; an index past the end appends.
    void InsertCaptionTextSpan(std::uint64_t index, const CaptionTextSpanPtr& span);
    // Removes the span by identity; a span that is not here is ignored.
    void RemoveCaptionTextSpan(const CaptionTextSpanPtr& span);

    ParagraphStyleAttributes GetParagraphStyleAttributes() const { return style_; }
    void SetParagraphStyleAttributes(const ParagraphStyleAttributes& style) { style_ = style; }

    Position GetCaptionPosition() const { return position_; }
    void SetCaptionPosition(const Position& position) { position_ = position; }

    // Line width and height in pixels: the measured values when the host has
    // measured the line, else estimates (width 0.6 em per code unit, height from
    // the font size).
    std::uint64_t GetParagraphLineWidth() const;
    std::uint64_t GetParagraphLineHeight() const;
    // 1.25 × the largest font size of the spans (a size of 0.0 counts as the
    // default size), rounded up.
    std::uint64_t GetParagraphLineHeightFromFontSize() const;
    // The text length in UTF-16 code units: the sum of the spans' lengths.
    std::uint64_t GetParagraphTextLength() const;
    void SetMeasuredLineSize(std::uint64_t widthPx, std::uint64_t heightPx);
    bool HasMeasuredLineSize() const { return measuredHeightPx_ != 0; }

    // The rectangle the line covers in an area of width × height pixels; empty
    // for a paragraph that was never placed.
    void GetUsedRect(std::int64_t width, std::int64_t height,
                     zelcore::geom::RectT<int>& rect) const;
    // The line's top and bottom in an area `height` high; both 0 when unplaced.
    void GetVerticalPosition(std::int64_t height, std::int64_t& top, std::int64_t& bottom) const;

    // Merges each run of adjacent spans with equal attributes into its first span.
    void PackSpansWithMatchingStyle();

    // The paragraph's text: its spans' texts concatenated.
    zelcore::UTF16String GetText() const;

private:
    std::vector<CaptionTextSpanPtr> spans_;
    ParagraphStyleAttributes style_;
    Position position_ = kPosition_Uninitialized;
    std::uint64_t measuredWidthPx_ = 0;
    std::uint64_t measuredHeightPx_ = 0;
};

using CaptionTextParagraphPtr = boost::intrusive_ptr<CaptionTextParagraph>;

// True for an existing paragraph that has been given a position.
inline bool IsPlaced(const CaptionTextParagraphPtr& paragraph) {
    return paragraph && paragraph->GetCaptionPosition() != kPosition_Uninitialized;
}

std::ostream& operator<<(std::ostream& os, const CaptionTextParagraph& paragraph);

} // namespace zelcaptioning

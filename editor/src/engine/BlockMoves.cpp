// Moving a whole block: by columns and rows in grid layout, to typed x/y
// fractions in pixel layout.
#include "SpanGathering.h"
#include "caption_editor/CaptionTextEditor.h"
#include "caption_editor/RationalFromDouble.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace caption_editor {

using zelcaptioning::CaptionTextParagraphPtr;
using zelcaptioning::ParagraphStyleAttributes;
using zelcaptioning::Position;
using zelcaptioning::Rational;

namespace {

// The delta that keeps a block within the grid, given the least and the most
// it may move by (the distances of its edges to the grid's edges). Clamping
// with 0 included lets a block that is already over an edge come back in
// without being pushed further out.
std::int64_t ClampDelta(std::int32_t delta, std::int64_t least, std::int64_t most) {
    return std::clamp<std::int64_t>(delta, std::min<std::int64_t>(least, 0),
                                    std::max<std::int64_t>(most, 0));
}

double ClampFraction(double value) {
    return std::isnan(value) ? 0.0 : std::clamp(value, 0.0, 1.0);
}

struct LinePlacement {
    Position position;
    ParagraphStyleAttributes style;
    friend bool operator==(const LinePlacement&, const LinePlacement&) = default;
};

std::vector<LinePlacement> Placements(const zelcaptioning::Caption& caption) {
    std::vector<LinePlacement> placements;
    for (std::uint64_t i = 0; i < caption.GetNumParagraphs(); ++i) {
        if (const CaptionTextParagraphPtr paragraph = caption.GetCaptionTextParagraph(i)) {
            placements.push_back(
                {paragraph->GetCaptionPosition(), paragraph->GetParagraphStyleAttributes()});
        }
    }
    return placements;
}

} // namespace

void CaptionTextEditor::MoveBlock(std::int32_t deltaColumns, std::int32_t deltaRows,
                                  std::uint64_t start, std::uint64_t end) {
    if (pixelLayout_ || !workingCopy_ || columnCount_ <= 0 || rowCount_ <= 0) {
        return;
    }
    std::vector<CaptionTextParagraphPtr> placed;
    for (const detail::ParagraphRef& ref :
         detail::DistinctParagraphs(detail::GatherSpans(*workingCopy_, start, end))) {
        if (IsPlaced(ref.paragraph)) {
            placed.push_back(ref.paragraph);
        }
    }
    if (placed.empty()) {
        return;
    }
    // The union of the lines' blocks; unlike RectT::Union it keeps an empty
    // line's column and row, so that line cannot be moved off the grid either.
    std::int64_t left = std::numeric_limits<std::int64_t>::max();
    std::int64_t right = std::numeric_limits<std::int64_t>::min();
    std::int64_t top = left;
    std::int64_t bottomRow = right;
    for (const CaptionTextParagraphPtr& paragraph : placed) {
        const zelcore::geom::RectT<int> block = BlockOf(*paragraph);
        left = std::min<std::int64_t>(left, block.left);
        right = std::max<std::int64_t>(right, block.right);
        top = std::min<std::int64_t>(top, block.top);
        bottomRow = std::max<std::int64_t>(bottomRow, block.top);
    }
    const std::int64_t columns = ClampDelta(deltaColumns, -left, columnCount_ - right);
    const std::int64_t rows = ClampDelta(deltaRows, -top, rowCount_ - 1 - bottomRow);
    if (columns == 0 && rows == 0) {
        return;
    }
    modified_ = true;
    for (const CaptionTextParagraphPtr& paragraph : placed) {
        Position position = paragraph->GetCaptionPosition();
        position.SetX(position.GetX() + Rational(columns, columnCount_));
        position.SetY(position.GetY() + Rational(rows, rowCount_));
        paragraph->SetCaptionPosition(position);
    }
}

void CaptionTextEditor::PlaceParagraphs(double x, double y, std::uint64_t start,
                                        std::uint64_t end) {
    if (!pixelLayout_ || !workingCopy_) {
        return;
    }
    const std::vector<detail::ParagraphRef> paragraphs =
        detail::DistinctParagraphs(detail::GatherSpans(*workingCopy_, start, end));
    if (paragraphs.empty()) {
        return;
    }
    const std::vector<LinePlacement> before = Placements(*workingCopy_);
    const Position typed(RationalFromDouble(ClampFraction(x)),
                         RationalFromDouble(ClampFraction(y)));
    for (const detail::ParagraphRef& ref : paragraphs) {
        ref.paragraph->SetCaptionPosition(ref.paragraph == paragraphs.front().paragraph
                                              ? typed
                                              : zelcaptioning::kPosition_Uninitialized);
        ParagraphStyleAttributes style = ref.paragraph->GetParagraphStyleAttributes();
        style.SetAnchorID(zelcaptioning::kAnchorID_Free);
        ref.paragraph->SetParagraphStyleAttributes(style);
    }
    workingCopy_->UpdateLinePositions(areaWidth_, areaHeight_);
    if (Placements(*workingCopy_) != before) {
        modified_ = true;
    }
}

} // namespace caption_editor

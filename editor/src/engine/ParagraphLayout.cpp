// Where paragraphs stand: caption-type changes, alignment, row moves, anchors,
// and the placement of paragraphs that breaks create and joins remove.
//
// Placement of a new paragraph in grid layout: it goes on the row below the
// paragraph it was split from (on that paragraph's own row when it goes before
// it). When that row is taken, the run of taken rows from it downwards moves
// down one row if there is a free row below the run; otherwise the new line
// goes one row higher and the run of taken rows from there upwards moves up one
// row. In roll-up all lines share the base row. A split line keeps its block's
// left edge, centre or right edge by its alignment, and so does the new line.
// After a join the rows above the emptied row close the gap by moving down,
// so a caption keeps standing on its bottom row.
//
// In pixel layout the caption lays its lines out by their anchors; a free line
// (anchor 9) that gains or loses a line pushes or pulls the rest of its block.
#include "SpanGathering.h"
#include "caption_editor/AnchorGrid.h"
#include "caption_editor/CaptionTextEditor.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace caption_editor {

using zelcaptioning::CaptionTextParagraph;
using zelcaptioning::CaptionTextParagraphPtr;
using zelcaptioning::Position;
using zelcaptioning::Rational;
using zelcaptioning::ValueWithScale;

namespace {

void SetX(CaptionTextParagraph& paragraph, const Rational& x) {
    Position position = paragraph.GetCaptionPosition();
    position.SetX(x);
    paragraph.SetCaptionPosition(position);
}

void SetY(CaptionTextParagraph& paragraph, const Rational& y) {
    Position position = paragraph.GetCaptionPosition();
    position.SetY(y);
    paragraph.SetCaptionPosition(position);
}

} // namespace

std::int32_t CaptionTextEditor::RowOf(const CaptionTextParagraph& paragraph) const {
    return static_cast<std::int32_t>(
        ValueWithScale(paragraph.GetCaptionPosition().GetY(), rowCount_, true));
}

zelcore::geom::RectT<int> CaptionTextEditor::BlockOf(const CaptionTextParagraph& paragraph) const {
    if (pixelLayout_) {
        return zelcore::geom::RectT<int>::FromSize(0, 0, 0, 1);
    }
    const Position position = paragraph.GetCaptionPosition();
    return zelcore::geom::RectT<int>::FromSize(
        static_cast<int>(ValueWithScale(position.GetX(), columnCount_, true)),
        static_cast<int>(ValueWithScale(position.GetY(), rowCount_, true)),
        static_cast<int>(paragraph.GetParagraphTextLength()), 1);
}

void CaptionTextEditor::SetCaptionType(zelcaptioning::CaptionType type) {
    if (pixelLayout_ || !workingCopy_) {
        return;
    }
    modified_ = true;
    const bool wasRollUp = zelcaptioning::IsRollUp(workingCopy_->GetCaptionType());
    const bool toRollUp = zelcaptioning::IsRollUp(type);
    std::vector<CaptionTextParagraphPtr> paragraphs;
    workingCopy_->GetCaptionTextParagraphs(paragraphs);
    if (wasRollUp != toRollUp && !paragraphs.empty() && IsPlaced(paragraphs.front()) &&
        rowCount_ > 0) {
        if (toRollUp) {
            // The walk remembers only the last two placed lines, so the base row
            // is the lower of those two, not of the whole caption: deliberate.
            std::vector<CaptionTextParagraphPtr> placed;
            std::copy_if(paragraphs.begin(), paragraphs.end(), std::back_inserter(placed),
                         [](const auto& p) { return IsPlaced(p); });
            std::int32_t baseRow = 0;
            for (std::size_t i = 0; i < placed.size(); ++i) {
                baseRow = std::max(RowOf(*placed[i == 0 ? 0 : i - 1]), RowOf(*placed[i]));
            }
            for (const CaptionTextParagraphPtr& paragraph : placed) {
                SetY(*paragraph, Rational(baseRow, rowCount_));
            }
        } else {
            const auto count = static_cast<std::int32_t>(paragraphs.size());
            std::int32_t firstRow = RowOf(*paragraphs.front()) - count + 1;
            if (firstRow < 1) {
                firstRow = 0;
            }
            for (std::int32_t i = 0; i < count; ++i) {
                if (IsPlaced(paragraphs[i])) {
                    SetY(*paragraphs[i],
                         Rational(std::min(firstRow + i, rowCount_ - 1), rowCount_));
                }
            }
        }
    }
    workingCopy_->SetCaptionType(type);
}

std::int32_t CaptionTextEditor::GetAlignmentOffset(const CaptionTextParagraphPtr& a,
                                                   const CaptionTextParagraphPtr& b) const {
    if (pixelLayout_ || !a || !b) {
        return 0;
    }
    const auto alignment = a->GetParagraphStyleAttributes().GetTextAlignment();
    if (alignment != b->GetParagraphStyleAttributes().GetTextAlignment()) {
        return 0;
    }
    const auto blockA = BlockOf(*a);
    const auto blockB = BlockOf(*b);
    switch (alignment) {
    case zelcaptioning::kTextAlignment_Left:
        return blockA.left - blockB.left;
    case zelcaptioning::kTextAlignment_Center:
        return (blockA.left + (blockA.Width() >> 1)) - (blockB.left + (blockB.Width() >> 1));
    case zelcaptioning::kTextAlignment_Right:
        return blockA.right - blockB.right;
    default:
        return 0;
    }
}

void CaptionTextEditor::SetAlignment(zelcaptioning::TextAlignmentType alignment,
                                     std::uint64_t start, std::uint64_t end) {
    modified_ = true;
    if (!workingCopy_) {
        return;
    }
    const auto paragraphs =
        detail::DistinctParagraphs(detail::GatherSpans(*workingCopy_, start, end));
    zelcore::geom::RectT<int> all;
    if (!pixelLayout_) {
        for (const detail::ParagraphRef& ref : paragraphs) {
            if (IsPlaced(ref.paragraph)) {
                all = all.Union(BlockOf(*ref.paragraph));
            }
        }
    }
    for (const detail::ParagraphRef& ref : paragraphs) {
        CaptionTextParagraph& paragraph = *ref.paragraph;
        zelcaptioning::ParagraphStyleAttributes style = paragraph.GetParagraphStyleAttributes();
        style.SetTextAlignment(alignment);
        paragraph.SetParagraphStyleAttributes(style);
        if (pixelLayout_ || !IsPlaced(ref.paragraph) || columnCount_ <= 0) {
            continue;
        }
        const auto block = BlockOf(paragraph);
        std::int32_t shift = 0;
        switch (alignment) {
        case zelcaptioning::kTextAlignment_Left:
            shift = all.left - block.left;
            break;
        case zelcaptioning::kTextAlignment_Center:
            shift = ((all.Width() >> 1) + all.left) - ((block.Width() >> 1) + block.left);
            break;
        case zelcaptioning::kTextAlignment_Right:
            shift = all.right - block.right;
            break;
        default:
            break;
        }
        if (shift != 0) {
            SetX(paragraph, paragraph.GetCaptionPosition().GetX() + Rational(shift, columnCount_));
        }
    }
    if (pixelLayout_) {
        workingCopy_->UpdateLinePositions(areaWidth_, areaHeight_);
    }
}

void CaptionTextEditor::SetParagraphRow(std::uint64_t index, std::int32_t row) {
    if (pixelLayout_ || !workingCopy_ || rowCount_ <= 0 ||
        index >= workingCopy_->GetNumParagraphs()) {
        return;
    }
    CaptionTextParagraphPtr paragraph = workingCopy_->GetCaptionTextParagraph(index);
    if (IsPlaced(paragraph)) {
        modified_ = true;
        SetY(*paragraph, Rational(row, rowCount_));
    }
}

void CaptionTextEditor::MoveParagraphByRows(std::uint64_t index, std::int32_t deltaRows) {
    if (pixelLayout_ || !workingCopy_ || rowCount_ <= 0 ||
        index >= workingCopy_->GetNumParagraphs()) {
        return;
    }
    CaptionTextParagraphPtr paragraph = workingCopy_->GetCaptionTextParagraph(index);
    if (!IsPlaced(paragraph)) {
        return;
    }
    modified_ = true;
    Rational y = paragraph->GetCaptionPosition().GetY() + Rational(deltaRows, rowCount_);
    if (y < 0) {
        y = Rational(0, 1);
    } else if (ValueWithScale(y, rowCount_, true) >= rowCount_) {
        y = Rational(rowCount_ - 1, rowCount_);
    }
    SetY(*paragraph, y);
}

void CaptionTextEditor::MoveRows(std::int32_t firstRow, std::int32_t count,
                                 std::int32_t deltaRows) {
    if (pixelLayout_ || !workingCopy_ || rowCount_ <= 0) {
        return;
    }
    const std::uint64_t paragraphCount = workingCopy_->GetNumParagraphs();
    for (std::uint64_t i = 0; i < paragraphCount; ++i) {
        CaptionTextParagraphPtr paragraph = workingCopy_->GetCaptionTextParagraph(i);
        if (!IsPlaced(paragraph)) {
            continue;
        }
        const std::int32_t row = RowOf(*paragraph);
        if (row >= firstRow && row <= firstRow + count - 1) {
            MoveParagraphByRows(i, deltaRows);
        }
    }
}

void CaptionTextEditor::SetBlockAnchor(std::int32_t column, std::int32_t row, std::uint64_t start,
                                       std::uint64_t end) {
    if (!workingCopy_) {
        return;
    }
    const zelcaptioning::AnchorID anchor = AnchorFromCell(column, row);
    for (const detail::ParagraphRef& ref :
         detail::DistinctParagraphs(detail::GatherSpans(*workingCopy_, start, end))) {
        zelcaptioning::ParagraphStyleAttributes style =
            ref.paragraph->GetParagraphStyleAttributes();
        if (style.GetAnchorID() != anchor) {
            style.SetAnchorID(anchor);
            ref.paragraph->SetParagraphStyleAttributes(style);
            modified_ = true;
        }
    }
    workingCopy_->UpdateLinePositions(areaWidth_, areaHeight_);
}

} // namespace caption_editor

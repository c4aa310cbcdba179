// Placing the paragraph a break creates and closing the gap a join leaves; the
// rules are described at the top of ParagraphLayout.cpp.
#include "caption_editor/CaptionTextEditor.h"

#include <algorithm>
#include <vector>

namespace caption_editor {

using zelcaptioning::CaptionTextParagraph;
using zelcaptioning::CaptionTextParagraphPtr;
using zelcaptioning::Position;
using zelcaptioning::Rational;
using zelcaptioning::ValueWithScale;

namespace {

// How many placed paragraphs stand on each row of the grid.
std::vector<int> CountRows(const zelcaptioning::Caption& caption, std::int32_t rowCount) {
    std::vector<int> counts(static_cast<std::size_t>(std::max(rowCount, 0)), 0);
    for (std::uint64_t i = 0; i < caption.GetNumParagraphs(); ++i) {
        CaptionTextParagraphPtr paragraph = caption.GetCaptionTextParagraph(i);
        if (!IsPlaced(paragraph)) {
            continue;
        }
        const auto row = ValueWithScale(paragraph->GetCaptionPosition().GetY(), rowCount, true);
        if (row >= 0 && row < rowCount) {
            ++counts[static_cast<std::size_t>(row)];
        }
    }
    return counts;
}

} // namespace

void CaptionTextEditor::MakeRoomOnRow(std::int32_t& row) {
    const std::vector<int> counts = CountRows(*workingCopy_, rowCount_);
    const auto taken = [&](std::int32_t r) {
        return r >= 0 && r < rowCount_ && counts[r] > 0;
    };
    if (row < rowCount_) {
        row = std::max(row, 0);
        if (!taken(row)) {
            return;
        }
        std::int32_t below = row;
        while (taken(below)) {
            ++below;
        }
        if (below < rowCount_) {
            MoveRows(row, below - row, +1);
            return;
        }
    }
    row = std::min(row, rowCount_) - 1;
    if (!taken(row)) {
        row = std::max(row, 0);
        return;
    }
    std::int32_t above = row;
    while (taken(above)) {
        --above;
    }
    if (above >= 0) {
        MoveRows(above + 1, row - above, -1);
    }
    row = std::max(row, 0);
}

void CaptionTextEditor::InsertParagraph(std::uint64_t index, const CaptionTextParagraphPtr& added,
                                        const CaptionTextParagraphPtr& origin,
                                        std::uint64_t originLengthBefore) {
    const bool addedAfterOrigin =
        origin && index > 0 && workingCopy_->GetCaptionTextParagraph(index - 1) == origin;
    if (pixelLayout_) {
        const bool free =
            added->GetParagraphStyleAttributes().GetAnchorID() == zelcaptioning::kAnchorID_Free;
        std::uint64_t first = zelcaptioning::Caption::kNoBlock;
        std::uint64_t last = first;
        if (free && IsPlaced(origin)) {
            workingCopy_->GetTextBlock(addedAfterOrigin ? index - 1 : index, areaHeight_, first,
                                       last);
        }
        workingCopy_->InsertCaptionTextParagraph(index, added);
        if (first != zelcaptioning::Caption::kNoBlock) {
            Position position = origin->GetCaptionPosition();
            if (addedAfterOrigin) {
                const std::int64_t below =
                    ValueWithScale(position.GetY(), areaHeight_, true) +
                    static_cast<std::int64_t>(origin->GetParagraphLineHeight());
                position.SetY(
                    Rational(std::min<std::int64_t>(below, areaHeight_ - 1), areaHeight_));
            }
            added->SetCaptionPosition(position);
            workingCopy_->MoveParagraphsVertically(index + 1, last + 1, false,
                                                   added->GetParagraphLineHeight(), areaHeight_);
        }
        workingCopy_->UpdateLinePositions(areaWidth_, areaHeight_);
        return;
    }

    workingCopy_->InsertCaptionTextParagraph(index, added);
    if (rowCount_ <= 0 || columnCount_ <= 0) {
        return;
    }
    if (!origin) {
        added->SetCaptionPosition(Position(Rational(0), Rational(rowCount_ - 1, rowCount_)));
        return;
    }
    if (!IsPlaced(origin)) {
        return;
    }
    std::int32_t row = RowOf(*origin);
    if (!zelcaptioning::IsRollUp(workingCopy_->GetCaptionType())) {
        row = addedAfterOrigin ? row + 1 : row;
        MakeRoomOnRow(row);
    }
    // Both lines keep the block's edge or centre that the split line had.
    const std::int64_t left =
        ValueWithScale(origin->GetCaptionPosition().GetX(), columnCount_, true);
    const auto originLength = static_cast<std::int64_t>(origin->GetParagraphTextLength());
    const auto addedLength = static_cast<std::int64_t>(added->GetParagraphTextLength());
    const auto before = static_cast<std::int64_t>(originLengthBefore);
    std::int64_t originLeft = left;
    std::int64_t addedLeft = left;
    switch (origin->GetParagraphStyleAttributes().GetTextAlignment()) {
    case zelcaptioning::kTextAlignment_Center:
        originLeft = (2 * left + before - originLength) / 2;
        addedLeft = (2 * left + before - addedLength) / 2;
        break;
    case zelcaptioning::kTextAlignment_Right:
        originLeft = left + before - originLength;
        addedLeft = left + before - addedLength;
        break;
    default:
        break;
    }
    Position originMoved = origin->GetCaptionPosition();
    if (originLeft != left) {
        originMoved.SetX(Rational(std::max<std::int64_t>(originLeft, 0), columnCount_));
        origin->SetCaptionPosition(originMoved);
    }
    added->SetCaptionPosition(Position(Rational(std::max<std::int64_t>(addedLeft, 0), columnCount_),
                                       Rational(row, rowCount_)));
}

void CaptionTextEditor::RemoveJoinedParagraph(std::uint64_t index) {
    const CaptionTextParagraphPtr removed = workingCopy_->GetCaptionTextParagraph(index);
    if (pixelLayout_) {
        std::uint64_t first = zelcaptioning::Caption::kNoBlock;
        std::uint64_t last = first;
        if (IsPlaced(removed) &&
            removed->GetParagraphStyleAttributes().GetAnchorID() == zelcaptioning::kAnchorID_Free) {
            workingCopy_->GetTextBlock(index, areaHeight_, first, last);
        }
        workingCopy_->RemoveCaptionTextParagraph(removed);
        if (first != zelcaptioning::Caption::kNoBlock && last > index) {
            workingCopy_->MoveParagraphsVertically(index, last - 1, true,
                                                   removed->GetParagraphLineHeight(), areaHeight_);
        }
        workingCopy_->UpdateLinePositions(areaWidth_, areaHeight_);
        return;
    }
    const std::int32_t row = IsPlaced(removed) ? RowOf(*removed) : -1;
    workingCopy_->RemoveCaptionTextParagraph(removed);
    if (row < 0 || row >= rowCount_ || zelcaptioning::IsRollUp(workingCopy_->GetCaptionType())) {
        return;
    }
    const std::vector<int> counts = CountRows(*workingCopy_, rowCount_);
    if (counts[row] > 0) {
        return;
    }
    std::int32_t top = row;
    while (top > 0 && counts[top - 1] > 0) {
        --top;
    }
    if (top < row) {
        MoveRows(top, row - top, +1);
    }
}

} // namespace caption_editor

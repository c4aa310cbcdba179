// The pixel layout of a caption's lines: blocks, anchors and vertical moves.
#include "zelcaptioning/Caption.h"

#include <algorithm>

namespace zelcaptioning {
namespace {

bool IsGridAnchor(AnchorID anchor) {
    return anchor >= 0 && anchor <= 8;
}

std::int64_t LineWidth(const CaptionTextParagraph& p) {
    return static_cast<std::int64_t>(p.GetParagraphLineWidth());
}

std::int64_t LineHeight(const CaptionTextParagraph& p) {
    return static_cast<std::int64_t>(p.GetParagraphLineHeight());
}

// Offset of a box of `size` within `extent` for a grid column or row (0, 1, 2),
// never before the area's start.
std::int64_t PlaceInThirds(int cell, std::int64_t extent, std::int64_t size) {
    const std::int64_t offset = cell == 0 ? 0 : cell == 1 ? (extent - size) / 2 : extent - size;
    return std::max<std::int64_t>(0, offset);
}

bool Place(CaptionTextParagraph& paragraph, std::int64_t x, std::int64_t y, std::int64_t width,
           std::int64_t height) {
    const Position position(Rational(x, width), Rational(y, height));
    if (paragraph.GetCaptionPosition() == position) {
        return false;
    }
    paragraph.SetCaptionPosition(position);
    return true;
}

} // namespace

bool Caption::UpdateLinePositions(std::int64_t width, std::int64_t height) {
    if (width <= 0 || height <= 0) {
        return false;
    }
    bool changed = false;
    const std::size_t count = paragraphs_.size();
    for (std::size_t first = 0; first < count;) {
        if (!paragraphs_[first]) {
            ++first;
            continue;
        }
        const AnchorID anchor = paragraphs_[first]->GetParagraphStyleAttributes().GetAnchorID();
        std::size_t end = first + 1;
        while (end < count && paragraphs_[end] &&
               paragraphs_[end]->GetParagraphStyleAttributes().GetAnchorID() == anchor) {
            ++end;
        }
        if (IsGridAnchor(anchor)) {
            std::int64_t blockWidth = 0;
            std::int64_t blockHeight = 0;
            for (std::size_t i = first; i < end; ++i) {
                blockWidth = std::max(blockWidth, LineWidth(*paragraphs_[i]));
                blockHeight += LineHeight(*paragraphs_[i]);
            }
            const std::int64_t left = PlaceInThirds(anchor % 3, width, blockWidth);
            std::int64_t top = PlaceInThirds(anchor / 3, height, blockHeight);
            for (std::size_t i = first; i < end; ++i) {
                CaptionTextParagraph& p = *paragraphs_[i];
                const std::int64_t slack = blockWidth - LineWidth(p);
                const TextAlignmentType alignment =
                    p.GetParagraphStyleAttributes().GetTextAlignment();
                const std::int64_t x = alignment == kTextAlignment_Left    ? left
                                       : alignment == kTextAlignment_Right ? left + slack
                                                                           : left + slack / 2;
                changed |= Place(p, x, top, width, height);
                top += LineHeight(p);
            }
        } else {
            for (std::size_t i = first; i < end; ++i) {
                CaptionTextParagraph& p = *paragraphs_[i];
                if (IsPlaced(paragraphs_[i])) {
                    continue;
                }
                if (i > first) {
                    const CaptionTextParagraph& above = *paragraphs_[i - 1];
                    const Position abovePosition = above.GetCaptionPosition();
                    const std::int64_t x = ValueWithScale(abovePosition.GetX(), width, true);
                    const std::int64_t y =
                        ValueWithScale(abovePosition.GetY(), height, true) + LineHeight(above);
                    changed |= Place(p, x, std::min(y, height - 1), width, height);
                } else {
                    changed |= Place(p, PlaceInThirds(1, width, LineWidth(p)),
                                     PlaceInThirds(2, height, LineHeight(p)), width, height);
                }
            }
        }
        first = end;
    }
    return changed;
}

AnchorID Caption::UpdateAnchorIDFromPosition(std::int64_t width, std::int64_t height) {
    if (width <= 0 || height <= 0) {
        return kAnchorID_None;
    }
    bool any = false;
    zelcore::geom::RectT<int> bounds;
    for (const CaptionTextParagraphPtr& paragraph : paragraphs_) {
        if (!IsPlaced(paragraph)) {
            continue;
        }
        zelcore::geom::RectT<int> rect;
        paragraph->GetUsedRect(width, height, rect);
        if (!any) {
            bounds = rect;
            any = true;
        } else {
            bounds = {std::min(bounds.left, rect.left), std::min(bounds.top, rect.top),
                      std::max(bounds.right, rect.right), std::max(bounds.bottom, rect.bottom)};
        }
    }
    if (!any) {
        return kAnchorID_None;
    }
    const auto third = [](std::int64_t centreTwice, std::int64_t extent) {
        // centreTwice / 2 lies in third k when k * extent / 3 <= centre.
        return static_cast<AnchorID>(
            std::clamp<std::int64_t>(centreTwice * 3 / (2 * extent), 0, 2));
    };
    const AnchorID anchor = third(std::int64_t{bounds.top} + bounds.bottom, height) * 3 +
                            third(std::int64_t{bounds.left} + bounds.right, width);
    for (const CaptionTextParagraphPtr& paragraph : paragraphs_) {
        if (IsPlaced(paragraph)) {
            ParagraphStyleAttributes style = paragraph->GetParagraphStyleAttributes();
            style.SetAnchorID(anchor);
            paragraph->SetParagraphStyleAttributes(style);
        }
    }
    return anchor;
}

void Caption::GetTextBlock(std::uint64_t index, std::int64_t height, std::uint64_t& first,
                           std::uint64_t& last) const {
    if (index >= paragraphs_.size() || !IsPlaced(paragraphs_[index])) {
        first = last = kNoBlock;
        return;
    }
    const auto follows = [&](std::uint64_t upper, std::uint64_t lower) {
        const CaptionTextParagraphPtr& a = paragraphs_[upper];
        const CaptionTextParagraphPtr& b = paragraphs_[lower];
        if (!IsPlaced(a) || !IsPlaced(b) ||
            a->GetParagraphStyleAttributes().GetAnchorID() !=
                b->GetParagraphStyleAttributes().GetAnchorID()) {
            return false;
        }
        std::int64_t topA = 0, bottomA = 0, topB = 0, bottomB = 0;
        a->GetVerticalPosition(height, topA, bottomA);
        b->GetVerticalPosition(height, topB, bottomB);
        return topB >= topA && topB - topA <= LineHeight(*a);
    };
    first = index;
    while (first > 0 && follows(first - 1, first)) {
        --first;
    }
    last = index;
    while (last + 1 < paragraphs_.size() && follows(last, last + 1)) {
        ++last;
    }
}

void Caption::MoveParagraphsVertically(std::uint64_t first, std::uint64_t last, bool up,
                                       std::uint64_t amount, std::int64_t height) {
    if (height <= 0) {
        return;
    }
    const auto delta = static_cast<std::int64_t>(amount);
    for (std::uint64_t i = first; i <= last && i < paragraphs_.size(); ++i) {
        if (!IsPlaced(paragraphs_[i])) {
            continue;
        }
        CaptionTextParagraph& p = *paragraphs_[i];
        Position position = p.GetCaptionPosition();
        const std::int64_t top = ValueWithScale(position.GetY(), height, true);
        const std::int64_t lowest = std::max<std::int64_t>(0, height - LineHeight(p));
        const std::int64_t moved =
            std::clamp<std::int64_t>(up ? top - delta : top + delta, 0, lowest);
        position.SetY(Rational(moved, height));
        p.SetCaptionPosition(position);
    }
}

} // namespace zelcaptioning

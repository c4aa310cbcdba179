#pragma once

#include <cstdint>
#include <iosfwd>

namespace zelcaptioning {

// Anchors of a caption block on a three-by-three grid, numbered row × 3 + column.
using AnchorID = std::int32_t;
inline constexpr AnchorID kAnchorID_TopLeft = 0;
inline constexpr AnchorID kAnchorID_Center = 4;
inline constexpr AnchorID kAnchorID_BottomCenter = 7;
inline constexpr AnchorID kAnchorID_BottomRight = 8;
// Placed by its own x and y rather than by a grid anchor; the lines after it in
// its block stack below it.
inline constexpr AnchorID kAnchorID_Free = 9;
// Not a paragraph's value: the answer when no anchor can be derived.
inline constexpr AnchorID kAnchorID_None = -1;

enum TextAlignmentType : std::int32_t {
    kTextAlignment_Left = 0,
    kTextAlignment_Center = 1,
    kTextAlignment_Right = 2,
};

// Paragraph style: alignment of the line within its block and the block's anchor.
class ParagraphStyleAttributes {
public:
    ParagraphStyleAttributes() = default;

    TextAlignmentType GetTextAlignment() const { return alignment_; }
    void SetTextAlignment(TextAlignmentType alignment) { alignment_ = alignment; }
    AnchorID GetAnchorID() const { return anchor_; }
    void SetAnchorID(AnchorID anchor) { anchor_ = anchor; }

    friend bool operator==(const ParagraphStyleAttributes&,
                           const ParagraphStyleAttributes&) = default;

private:
    TextAlignmentType alignment_ = kTextAlignment_Center;
    AnchorID anchor_ = kAnchorID_BottomCenter;
};

std::ostream& operator<<(std::ostream& os, const ParagraphStyleAttributes& attributes);

} // namespace zelcaptioning

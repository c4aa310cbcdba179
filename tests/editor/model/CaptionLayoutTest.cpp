#include "CaptionBuilder.h"

#include <gtest/gtest.h>

using namespace test;
using namespace zelcaptioning;

namespace {

// A caption of measured lines: (width, height, anchor, alignment) each.
struct Line {
    std::uint64_t width;
    std::uint64_t height;
    AnchorID anchor;
    TextAlignmentType alignment = kTextAlignment_Center;
};

CaptionPtr MakeLines(std::initializer_list<Line> lines) {
    CaptionPtr caption(new Caption);
    for (const Line& line : lines) {
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(new CaptionTextSpan(u"text", {}));
        paragraph->SetMeasuredLineSize(line.width, line.height);
        ParagraphStyleAttributes style;
        style.SetAnchorID(line.anchor);
        style.SetTextAlignment(line.alignment);
        paragraph->SetParagraphStyleAttributes(style);
        caption->AppendCaptionTextParagraph(paragraph);
    }
    return caption;
}

zelcore::geom::RectT<int> Used(const Caption& caption, std::uint64_t index) {
    zelcore::geom::RectT<int> rect;
    caption.GetCaptionTextParagraph(index)->GetUsedRect(1000, 500, rect);
    return rect;
}

} // namespace

TEST(CaptionLayout, AnchoredBlockStandsAtItsCellAndLinesAlignWithinIt) {
    CaptionPtr caption = MakeLines({{200, 40, kAnchorID_BottomRight, kTextAlignment_Left},
                                    {100, 40, kAnchorID_BottomRight, kTextAlignment_Right},
                                    {50, 40, kAnchorID_BottomRight, kTextAlignment_Center}});
    EXPECT_TRUE(caption->UpdateLinePositions(1000, 500));
    EXPECT_EQ(Used(*caption, 0), (zelcore::geom::RectT<int>{800, 380, 1000, 420}));
    EXPECT_EQ(Used(*caption, 1), (zelcore::geom::RectT<int>{900, 420, 1000, 460}));
    EXPECT_EQ(Used(*caption, 2), (zelcore::geom::RectT<int>{875, 460, 925, 500}));
    EXPECT_FALSE(caption->UpdateLinePositions(1000, 500)) << "a second layout changes nothing";

    caption = MakeLines({{100, 40, kAnchorID_TopLeft}, {300, 20, kAnchorID_Center}});
    caption->UpdateLinePositions(1000, 500);
    EXPECT_EQ(Used(*caption, 0), (zelcore::geom::RectT<int>{0, 0, 100, 40}));
    EXPECT_EQ(Used(*caption, 1), (zelcore::geom::RectT<int>{350, 240, 650, 260}));
}

TEST(CaptionLayout, AreaWithoutSizeIsLeftAlone) {
    CaptionPtr caption = MakeLines({{100, 40, kAnchorID_Center}});
    EXPECT_FALSE(caption->UpdateLinePositions(0, 0));
    EXPECT_FALSE(caption->UpdateLinePositions(1000, -5));
    EXPECT_EQ(caption->GetCaptionTextParagraph(0)->GetCaptionPosition(), kPosition_Uninitialized);
}

TEST(CaptionLayout, FreeLinesKeepTheirPlaceAndNewOnesStackBelow) {
    CaptionPtr caption = MakeLines({{100, 40, kAnchorID_Free}, {80, 30, kAnchorID_Free}});
    caption->GetCaptionTextParagraph(0)->SetCaptionPosition(
        Position(Rational(1, 10), Rational(1, 5)));
    caption->UpdateLinePositions(1000, 500);
    EXPECT_EQ(Used(*caption, 0), (zelcore::geom::RectT<int>{100, 100, 200, 140}));
    EXPECT_EQ(Used(*caption, 1), (zelcore::geom::RectT<int>{100, 140, 180, 170}));

    caption = MakeLines({{100, 40, kAnchorID_Free}});
    caption->UpdateLinePositions(1000, 500);
    EXPECT_EQ(Used(*caption, 0), (zelcore::geom::RectT<int>{450, 460, 550, 500}))
        << "an unplaced free line starts at the bottom centre";
}

TEST(CaptionLayout, TextBlocksAreRunsOfFollowingLinesWithOneAnchor) {
    CaptionPtr caption = MakeLines({{100, 40, kAnchorID_TopLeft},
                                    {100, 40, kAnchorID_TopLeft},
                                    {100, 40, kAnchorID_BottomCenter},
                                    {100, 40, kAnchorID_BottomCenter},
                                    {100, 40, kAnchorID_BottomCenter}});
    caption->UpdateLinePositions(1000, 500);
    caption->AppendCaptionTextParagraph(new CaptionTextParagraph); // never placed
    std::uint64_t first = 0, last = 0;
    caption->GetTextBlock(1, 500, first, last);
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(last, 1u);
    caption->GetTextBlock(2, 500, first, last);
    EXPECT_EQ(first, 2u);
    EXPECT_EQ(last, 4u);
    caption->GetTextBlock(5, 500, first, last);
    EXPECT_EQ(first, Caption::kNoBlock);
    caption->GetTextBlock(99, 500, first, last);
    EXPECT_EQ(first, Caption::kNoBlock);

    // A line moved far below its neighbour leaves the block.
    caption->MoveParagraphsVertically(4, 4, true, 300, 500);
    caption->GetTextBlock(2, 500, first, last);
    EXPECT_EQ(last, 3u);
}

TEST(CaptionLayout, VerticalMovesStayInsideTheArea) {
    CaptionPtr caption = MakeLines({{100, 40, kAnchorID_TopLeft}, {100, 40, kAnchorID_TopLeft}});
    caption->UpdateLinePositions(1000, 500);
    caption->MoveParagraphsVertically(0, 1, false, 30, 500);
    std::int64_t top = 0, bottom = 0;
    caption->GetCaptionTextParagraph(1)->GetVerticalPosition(500, top, bottom);
    EXPECT_EQ(top, 70);
    EXPECT_EQ(bottom, 110);
    caption->MoveParagraphsVertically(0, 1, true, 1000, 500);
    caption->GetCaptionTextParagraph(1)->GetVerticalPosition(500, top, bottom);
    EXPECT_EQ(top, 0);
    caption->MoveParagraphsVertically(0, 0, false, 1000, 500);
    caption->GetCaptionTextParagraph(0)->GetVerticalPosition(500, top, bottom);
    EXPECT_EQ(bottom, 500) << "the lowest line ends on the area's bottom";
}

TEST(CaptionLayout, AnchorDerivedFromWhereTheLinesStand) {
    CaptionPtr caption = MakeLines({{100, 40, kAnchorID_Free}, {100, 40, kAnchorID_Free}});
    EXPECT_EQ(caption->UpdateAnchorIDFromPosition(1000, 500), kAnchorID_None);
    caption->GetCaptionTextParagraph(0)->SetCaptionPosition(Position(Rational(9, 10), Rational(0)));
    caption->UpdateLinePositions(1000, 500);
    EXPECT_EQ(caption->UpdateAnchorIDFromPosition(1000, 500), 2) << "top right";
    EXPECT_EQ(caption->GetCaptionTextParagraph(1)->GetParagraphStyleAttributes().GetAnchorID(), 2);
}

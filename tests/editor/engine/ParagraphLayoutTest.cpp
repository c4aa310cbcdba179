#include "CaptionBuilder.h"
#include "caption_editor/CaptionTextEditor.h"

#include <gtest/gtest.h>

using namespace test;
using caption_editor::CaptionTextEditor;
using namespace zelcaptioning;

namespace {

std::vector<std::int64_t> Rows(const Caption& caption) {
    std::vector<std::int64_t> rows;
    for (std::uint64_t i = 0; i < caption.GetNumParagraphs(); ++i) {
        rows.push_back(RowOf(caption, i));
    }
    return rows;
}

using RowList = std::vector<std::int64_t>;

class ParagraphLayout : public testing::Test {
protected:
    void EditGrid(CaptionPtr caption, CaptionType type) {
        caption->SetCaptionType(type);
        editor.SetCaption(caption, 32, 15, 0, 0);
    }
    Caption& Working() { return *editor.GetCaption(); }
    CaptionTextEditor editor;
};

} // namespace

TEST_F(ParagraphLayout, IntoRollUpAndBackKeepsTheLines) {
    EditGrid(MakeGridCaption({{u"a", 0, 10}, {u"b", 0, 11}, {u"c", 0, 12}}), kCaptionType_PopOn);
    editor.SetCaptionType(kCaptionType_RollUp3);
    EXPECT_EQ(Rows(Working()), (RowList{12, 12, 12}));
    EXPECT_EQ(Working().GetCaptionType(), kCaptionType_RollUp3);
    editor.SetCaptionType(kCaptionType_PopOn);
    EXPECT_EQ(Rows(Working()), (RowList{10, 11, 12}));
}

TEST_F(ParagraphLayout, RollUpBaseRowRemembersOnlyTheLastTwoLines) {
    EditGrid(MakeGridCaption({{u"a", 0, 14}, {u"b", 0, 3}, {u"c", 0, 4}}), kCaptionType_PopOn);
    editor.SetCaptionType(kCaptionType_RollUp2);
    EXPECT_EQ(Rows(Working()), (RowList{4, 4, 4}));
}

TEST_F(ParagraphLayout, OutOfRollUpStacksDownToTheBaseRowWithinTheGrid) {
    EditGrid(MakeGridCaption({{u"a", 0, 1}, {u"b", 0, 1}, {u"c", 0, 1}}), kCaptionType_RollUp3);
    editor.SetCaptionType(kCaptionType_PaintOn);
    EXPECT_EQ(Rows(Working()), (RowList{0, 1, 2})) << "first row clamped to 0";

    EditGrid(MakeGridCaption(
                 {{u"a", 0, 14}, {u"b", 0, 14}, {u"c", 0, 14}, {u"d", 0, 14}, {u"e", 0, 14}}),
             kCaptionType_RollUp4);
    editor.SetCaptionType(kCaptionType_PopOn);
    EXPECT_EQ(Rows(Working()), (RowList{10, 11, 12, 13, 14}));

    EditGrid(MakeGridCaption({{u"a", 0, 2}, {u"b", 0, 2}, {u"c", 0, 2}, {u"d", 0, 2}}),
             kCaptionType_RollUp4);
    editor.SetCaptionType(kCaptionType_PopOn);
    EXPECT_EQ(Rows(Working()), (RowList{0, 1, 2, 3})) << "clamped start runs past the base row";

    EditGrid(MakeGridCaption({{u"a", 0, 14}, {u"b", 0, 14}}), kCaptionType_RollUp2);
    editor.GetCaption()->GetCaptionTextParagraph(0)->SetCaptionPosition(
        Position(Rational(0), Rational(14, 15)));
    editor.SetCaptionType(kCaptionType_PopOn);
    EXPECT_EQ(Rows(Working()), (RowList{13, 14}));
}

TEST_F(ParagraphLayout, SameKindOfTypeOrUnplacedLinesOnlyChangeTheType) {
    EditGrid(MakeGridCaption({{u"a", 3, 14}, {u"b", 5, 2}}), kCaptionType_RollUp2);
    editor.SetCaptionType(kCaptionType_RollUp4);
    EXPECT_EQ(Rows(Working()), (RowList{14, 2}));
    EXPECT_EQ(Working().GetCaptionType(), kCaptionType_RollUp4);

    EditGrid(MakeCaption({{{u"a"}}}), kCaptionType_PopOn);
    editor.SetCaptionType(kCaptionType_RollUp2);
    EXPECT_EQ(Working().GetCaptionTextParagraph(0)->GetCaptionPosition(), kPosition_Uninitialized);
    EXPECT_EQ(Working().GetCaptionType(), kCaptionType_RollUp2);
}

TEST_F(ParagraphLayout, PixelLayoutIgnoresCaptionTypeRequests) {
    CaptionPtr caption = MakeGridCaption({{u"a", 0, 10}});
    caption->SetCaptionType(kCaptionType_Open);
    editor.SetCaption(caption, 0, 0, 1920, 1080);
    editor.SetCaptionType(kCaptionType_RollUp2);
    EXPECT_FALSE(editor.IsModified());
    EXPECT_EQ(Working().GetCaptionType(), kCaptionType_Open);
}

TEST_F(ParagraphLayout, AlignmentLinesUpTheBlockOnItsEdgeOrCentre) {
    // Blocks: [4, 10) "abcdef", [8, 10) "gh"; union [4, 10).
    EditGrid(MakeGridCaption({{u"abcdef", 4, 13}, {u"gh", 8, 14}}), kCaptionType_PopOn);
    editor.SetAlignment(kTextAlignment_Left, 0, 9);
    EXPECT_EQ(ColumnOf(Working(), 0), 4);
    EXPECT_EQ(ColumnOf(Working(), 1), 4);
    editor.SetAlignment(kTextAlignment_Right, 0, 9);
    EXPECT_EQ(ColumnOf(Working(), 0), 4);
    EXPECT_EQ(ColumnOf(Working(), 1), 8);
    editor.SetAlignment(kTextAlignment_Center, 0, 9);
    EXPECT_EQ(ColumnOf(Working(), 1), 6);
    EXPECT_EQ(
        Working().GetCaptionTextParagraph(1)->GetParagraphStyleAttributes().GetTextAlignment(),
        kTextAlignment_Center);
    EXPECT_EQ(editor.GetAlignmentOffset(Working().GetCaptionTextParagraph(0),
                                        Working().GetCaptionTextParagraph(1)),
              0);
    EXPECT_EQ(editor.GetStyleSummary(0, 9).alignment, kTextAlignment_Center);
}

TEST_F(ParagraphLayout, AlignmentOffsetComparesBlocksByTheirCommonAlignment) {
    EditGrid(MakeGridCaption({{u"abcdef", 4, 13}, {u"gh", 9, 14}}), kCaptionType_PopOn);
    auto a = Working().GetCaptionTextParagraph(0);
    auto b = Working().GetCaptionTextParagraph(1);
    EXPECT_EQ(editor.GetAlignmentOffset(a, b), (4 + 3) - (9 + 1));
    editor.SetAlignment(kTextAlignment_Right, 0, 0);
    EXPECT_EQ(editor.GetAlignmentOffset(a, b), 0) << "alignments differ";
    editor.SetAlignment(kTextAlignment_Right, 0, 9);
    EXPECT_EQ(editor.GetAlignmentOffset(a, b), 0) << "now lined up on the right";
    EXPECT_EQ(editor.GetAlignmentOffset(a, nullptr), 0);
}

TEST_F(ParagraphLayout, RowMovesStayOnTheGrid) {
    EditGrid(MakeGridCaption({{u"a", 0, 1}, {u"b", 0, 13}, {u"c", 0, 14}}), kCaptionType_PopOn);
    editor.MoveParagraphByRows(0, -5);
    editor.MoveParagraphByRows(2, 3);
    EXPECT_EQ(Rows(Working()), (RowList{0, 13, 14}));
    EXPECT_EQ(Working().GetCaptionTextParagraph(0)->GetCaptionPosition().GetY(), Rational(0));
    editor.MoveRows(13, 2, -4);
    EXPECT_EQ(Rows(Working()), (RowList{0, 9, 10}));
    editor.SetParagraphRow(0, 7);
    EXPECT_EQ(Rows(Working()), (RowList{7, 9, 10}));
    editor.MoveRows(7, 3, 10);
    EXPECT_EQ(Rows(Working()), (RowList{14, 14, 10})) << "row 10 is outside rows 7 to 9";
}

TEST_F(ParagraphLayout, BlockAnchorSetsChangedAnchorsAndAlwaysRelaysOut) {
    CaptionPtr caption = MakeCaption({{{u"top"}}, {{u"left"}}});
    caption->SetCaptionType(kCaptionType_Open);
    editor.SetCaption(caption, 0, 0, 1250, 625); // area 1000 x 500
    editor.SetBlockAnchor(0, 0, 0, 8);
    EXPECT_TRUE(editor.IsModified());
    EXPECT_EQ(editor.GetStyleSummary(0, 8).anchor, kAnchorID_TopLeft);
    zelcore::geom::RectT<int> rect;
    Working().GetCaptionTextParagraph(1)->GetUsedRect(1000, 500, rect);
    EXPECT_EQ(rect.top, 25) << "the second line stacks under the first";

    editor.SetModified(false);
    Working().GetCaptionTextParagraph(0)->SetCaptionPosition(kPosition_Uninitialized);
    editor.SetBlockAnchor(0, 0, 0, 8);
    EXPECT_FALSE(editor.IsModified()) << "nothing to change";
    EXPECT_NE(Working().GetCaptionTextParagraph(0)->GetCaptionPosition(), kPosition_Uninitialized)
        << "but the lines were laid out again";

    editor.SetBlockAnchor(3, 0, 0, 0);
    EXPECT_EQ(Working().GetCaptionTextParagraph(0)->GetParagraphStyleAttributes().GetAnchorID(),
              kAnchorID_None);
}

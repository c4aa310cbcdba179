// Moving a block by columns and rows, and placing it at typed x/y fractions.
#include "CaptionBuilder.h"
#include "caption_editor/CaptionTextEditor.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

using namespace test;
using caption_editor::CaptionTextEditor;
using namespace zelcaptioning;

namespace {

using Cells = std::vector<std::pair<std::int64_t, std::int64_t>>;

class BlockMoves : public testing::Test {
protected:
    void EditGrid(CaptionPtr caption) {
        caption->SetCaptionType(kCaptionType_PopOn);
        editor.SetCaption(caption, 32, 15, 0, 0);
    }
    Caption& Working() { return *editor.GetCaption(); }
    Position PositionOf(std::uint64_t paragraph) {
        return Working().GetCaptionTextParagraph(paragraph)->GetCaptionPosition();
    }
    AnchorID AnchorOf(std::uint64_t paragraph) {
        return Working()
            .GetCaptionTextParagraph(paragraph)
            ->GetParagraphStyleAttributes()
            .GetAnchorID();
    }
    // (column, row) of every line.
    Cells CellsOf() {
        Cells cells;
        for (std::uint64_t i = 0; i < Working().GetNumParagraphs(); ++i) {
            cells.emplace_back(ColumnOf(Working(), i), RowOf(Working(), i));
        }
        return cells;
    }
    CaptionTextEditor editor;
};

constexpr std::uint64_t kAll = std::numeric_limits<std::uint32_t>::max();

} // namespace

TEST_F(BlockMoves, BlockMovesByWholeColumnsAndRowsInExactFractions) {
    EditGrid(MakeGridCaption({{u"abcd", 4, 12}, {u"ab", 6, 13}}));
    editor.MoveBlock(3, -2, 0, 6);
    EXPECT_TRUE(editor.IsModified());
    EXPECT_EQ(CellsOf(), (Cells{{7, 10}, {9, 11}}));
    EXPECT_EQ(PositionOf(0), Position(Rational(7, 32), Rational(2, 3)));
    editor.MoveBlock(-5, 0, 0, 6);
    EXPECT_EQ(CellsOf(), (Cells{{2, 10}, {4, 11}}));
}

TEST_F(BlockMoves, BlockStopsAtTheGridEdgesWithItsShape) {
    // The block spans columns 4 to 8 (the first line's end) and rows 12 to 13.
    EditGrid(MakeGridCaption({{u"abcd", 4, 12}, {u"ab", 6, 13}}));
    editor.MoveBlock(100, 100, 0, kAll);
    EXPECT_EQ(CellsOf(), (Cells{{28, 13}, {30, 14}})) << "right edge at column 32, last row 14";
    editor.MoveBlock(-100, -100, 0, kAll);
    EXPECT_EQ(CellsOf(), (Cells{{0, 0}, {2, 1}}));

    editor.SetModified(false);
    editor.MoveBlock(-1, -1, 0, kAll);
    EXPECT_FALSE(editor.IsModified()) << "already at the top-left corner";
    EXPECT_EQ(CellsOf(), (Cells{{0, 0}, {2, 1}}));

    // An empty line counts at its cell, so it cannot leave the grid.
    EditGrid(MakeGridCaption({{u"", 32, 14}, {u"ab", 20, 1}}));
    editor.MoveBlock(5, 5, 0, kAll);
    EXPECT_EQ(CellsOf(), (Cells{{32, 14}, {20, 1}}));

    // A line wider than the grid may come back in but not go further out.
    EditGrid(MakeGridCaption({{u"0123456789012345678901234567890", 5, 3}}));
    editor.MoveBlock(2, 0, 0, 0);
    EXPECT_EQ(CellsOf(), (Cells{{5, 3}}));
    editor.MoveBlock(-9, 0, 0, 0);
    EXPECT_EQ(CellsOf(), (Cells{{0, 3}}));
}

TEST_F(BlockMoves, OnlyThePlacedLinesOfTheRangeMove) {
    // "top" 0-2, "line" 4-7, "low" 9-11, "end" 13-15: the range covers the lower block.
    EditGrid(
        MakeGridCaption({{u"top", 2, 1}, {u"line", 2, 2}, {u"low", 10, 12}, {u"end", 10, 13}}));
    editor.MoveBlock(5, -3, 9, 16);
    EXPECT_EQ(CellsOf(), (Cells{{2, 1}, {2, 2}, {15, 9}, {15, 10}}));

    CaptionPtr caption = MakeGridCaption({{u"ab", 3, 4}});
    caption->AppendCaptionTextParagraph(MakeCaption({{{u"unplaced"}}})->GetCaptionTextParagraph(0));
    EditGrid(caption);
    editor.MoveBlock(1, 1, 0, kAll);
    EXPECT_EQ(CellsOf().front(), std::make_pair(std::int64_t{4}, std::int64_t{5}));
    EXPECT_EQ(PositionOf(1), kPosition_Uninitialized);

    EditGrid(MakeCaption({{{u"unplaced"}}}));
    editor.SetModified(false);
    editor.MoveBlock(1, 1, 0, kAll);
    EXPECT_FALSE(editor.IsModified());
    EXPECT_EQ(PositionOf(0), kPosition_Uninitialized);
}

TEST_F(BlockMoves, EachLayoutIgnoresTheOtherLayoutsMove) {
    CaptionPtr caption = MakeGridCaption({{u"ab", 3, 4}});
    caption->SetCaptionType(kCaptionType_Open);
    editor.SetCaption(caption, 0, 0, 1000, 500);
    editor.MoveBlock(2, 2, 0, kAll);
    EXPECT_FALSE(editor.IsModified());
    EXPECT_EQ(PositionOf(0), Position(Rational(3, 32), Rational(4, 15)));

    EditGrid(MakeGridCaption({{u"ab", 3, 4}}));
    editor.PlaceParagraphs(0.5, 0.5, 0, kAll);
    EXPECT_FALSE(editor.IsModified());
    EXPECT_EQ(AnchorOf(0), kAnchorID_BottomCenter);
    EXPECT_EQ(CellsOf(), (Cells{{3, 4}}));
}

TEST_F(BlockMoves, PlacedBlockStartsAtTheTypedFractionsAndStacksBelow) {
    // "one" 0-2, "two" 4-6, "three" 8-12; the range covers the first two lines.
    CaptionPtr caption = MakeCaption({{{u"one"}}, {{u"two"}}, {{u"three"}}});
    caption->SetCaptionType(kCaptionType_Open);
    editor.SetCaption(caption, 0, 0, 1000, 500); // area 800 × 400
    for (std::uint64_t i = 0; i < 3; ++i) {
        Working().GetCaptionTextParagraph(i)->SetMeasuredLineSize(100, 40);
    }
    editor.SetBlockAnchor(1, 2, 0, kAll); // laid out at the bottom centre
    const Position thirdBefore = PositionOf(2);
    editor.SetModified(false);

    editor.PlaceParagraphs(0.25, 0.1234, 0, 5);
    EXPECT_TRUE(editor.IsModified());
    EXPECT_EQ(PositionOf(0), Position(Rational(1, 4), Rational(617, 5000)));
    // Row 49 of 400 (0.1234 × 400 rounded) plus one line of 40.
    EXPECT_EQ(PositionOf(1), Position(Rational(1, 4), Rational(89, 400)));
    EXPECT_EQ(AnchorOf(0), kAnchorID_Free);
    EXPECT_EQ(AnchorOf(1), kAnchorID_Free);
    EXPECT_EQ(AnchorOf(2), kAnchorID_BottomCenter);
    EXPECT_EQ(PositionOf(2), thirdBefore);

    editor.SetModified(false);
    editor.PlaceParagraphs(0.25, 0.1234, 0, 5);
    EXPECT_FALSE(editor.IsModified()) << "placed there already";

    editor.PlaceParagraphs(-0.5, 2.0, 4, 4);
    EXPECT_EQ(PositionOf(1), Position(Rational(0), Rational(1)));
    editor.PlaceParagraphs(std::numeric_limits<double>::quiet_NaN(), 0.5, 4, 4);
    EXPECT_EQ(PositionOf(1), Position(Rational(0), Rational(1, 2)));
    EXPECT_EQ(PositionOf(0), Position(Rational(1, 4), Rational(617, 5000)));
}

// Where breaks put new lines and how joins close gaps.
#include "CaptionBuilder.h"
#include "caption_editor/CaptionTextEditor.h"

#include <gtest/gtest.h>

using namespace test;
using caption_editor::CaptionTextEditor;
using namespace zelcaptioning;

namespace {

using RowList = std::vector<std::int64_t>;

class ParagraphPlacement : public testing::Test {
protected:
    void EditGrid(CaptionPtr caption, CaptionType type = kCaptionType_PopOn) {
        caption->SetCaptionType(type);
        editor.SetCaption(caption, 32, 15, 0, 0);
    }
    Caption& Working() { return *editor.GetCaption(); }
    RowList Rows() {
        RowList rows;
        for (std::uint64_t i = 0; i < Working().GetNumParagraphs(); ++i) {
            rows.push_back(RowOf(Working(), i));
        }
        return rows;
    }
    void Align(std::uint64_t paragraph, TextAlignmentType alignment) {
        auto p = Working().GetCaptionTextParagraph(paragraph);
        auto style = p->GetParagraphStyleAttributes();
        style.SetTextAlignment(alignment);
        p->SetParagraphStyleAttributes(style);
    }
    CaptionTextEditor editor;
};

} // namespace

TEST_F(ParagraphPlacement, NewLineGoesBelowIntoAFreeRow) {
    EditGrid(MakeGridCaption({{u"hello world", 2, 10}}));
    Align(0, kTextAlignment_Left);
    editor.BreakParagraph(5);
    EXPECT_EQ(Rows(), (RowList{10, 11}));
    EXPECT_EQ(ColumnOf(Working(), 1), 2);
}

TEST_F(ParagraphPlacement, TakenRowsBelowArePushedDownWhenThereIsRoom) {
    EditGrid(MakeGridCaption({{u"ab", 0, 9}, {u"cd", 0, 10}, {u"ef", 0, 11}}));
    editor.BreakParagraph(1);
    EXPECT_EQ(PlainText(Working()), "a\nb\ncd\nef");
    EXPECT_EQ(Rows(), (RowList{9, 10, 11, 12}));
}

TEST_F(ParagraphPlacement, OnTheBottomRowTheLinesAboveMoveUp) {
    EditGrid(MakeGridCaption({{u"ab", 0, 13}, {u"cd", 0, 14}}));
    editor.BreakParagraph(4);
    EXPECT_EQ(PlainText(Working()), "ab\nc\nd");
    EXPECT_EQ(Rows(), (RowList{12, 13, 14}));

    editor.BreakParagraph(0); // a new first line before ab, no room below: it goes above
    EXPECT_EQ(Rows(), (RowList{11, 12, 13, 14}));
}

TEST_F(ParagraphPlacement, NewLineBeforeALinePushesItDown) {
    EditGrid(MakeGridCaption({{u"ab", 0, 3}}));
    editor.BreakParagraph(0);
    EXPECT_EQ(Rows(), (RowList{3, 4}));
    EXPECT_EQ(PlainText(Working()), "\nab");
}

TEST_F(ParagraphPlacement, RollUpLinesShareTheBaseRow) {
    EditGrid(MakeGridCaption({{u"ab", 0, 14}, {u"cd", 0, 14}}), kCaptionType_RollUp2);
    editor.BreakParagraph(1);
    EXPECT_EQ(Rows(), (RowList{14, 14, 14}));
}

TEST_F(ParagraphPlacement, SplitLinesKeepTheirCentreOrRightEdge) {
    EditGrid(MakeGridCaption({{u"abcdefgh", 10, 12}}));
    editor.BreakParagraph(4); // centre 10 + 8/2 = 14
    EXPECT_EQ(ColumnOf(Working(), 0), 12);
    EXPECT_EQ(ColumnOf(Working(), 1), 12);

    EditGrid(MakeGridCaption({{u"abcdefgh", 10, 12}}));
    Align(0, kTextAlignment_Right);
    editor.BreakParagraph(6); // right edge 18
    EXPECT_EQ(ColumnOf(Working(), 0), 12);
    EXPECT_EQ(ColumnOf(Working(), 1), 16);
}

TEST_F(ParagraphPlacement, JoinClosesTheGapFromAbove) {
    EditGrid(MakeGridCaption({{u"ab", 0, 12}, {u"cd", 0, 13}, {u"ef", 0, 14}}));
    editor.JoinParagraphs(5); // cd + ef: row 14 empties
    EXPECT_EQ(PlainText(Working()), "ab\ncdef");
    EXPECT_EQ(Rows(), (RowList{13, 14}));

    EditGrid(MakeGridCaption({{u"ab", 0, 2}, {u"cd", 0, 5}}));
    editor.JoinParagraphs(2);
    EXPECT_EQ(Rows(), (RowList{2})) << "the row above the removed one was empty";

    EditGrid(MakeGridCaption({{u"ab", 0, 14}, {u"cd", 0, 14}, {u"ef", 0, 14}}),
             kCaptionType_RollUp3);
    editor.JoinParagraphs(2);
    EXPECT_EQ(Rows(), (RowList{14, 14}));
}

TEST_F(ParagraphPlacement, FreeLinesInPixelLayoutPushAndPullTheirBlock) {
    CaptionPtr caption(new Caption);
    for (const char16_t* text : {u"one two", u"three"}) {
        CaptionTextParagraphPtr p(new CaptionTextParagraph);
        p->AppendCaptionTextSpan(new CaptionTextSpan(text, {}));
        ParagraphStyleAttributes style;
        style.SetAnchorID(kAnchorID_Free);
        p->SetParagraphStyleAttributes(style);
        caption->AppendCaptionTextParagraph(p);
    }
    caption->GetCaptionTextParagraph(0)->SetCaptionPosition(
        Position(Rational(1, 10), Rational(1, 10)));
    caption->GetCaptionTextParagraph(1)->SetCaptionPosition(
        Position(Rational(1, 10), Rational(15, 100)));
    editor.SetCaption(caption, 0, 0, 1250, 625); // area 1000 x 500; lines 25 high
    const auto top = [&](std::uint64_t i) {
        std::int64_t t = 0, b = 0;
        Working().GetCaptionTextParagraph(i)->GetVerticalPosition(500, t, b);
        return t;
    };
    editor.BreakParagraph(3);
    ASSERT_EQ(Working().GetNumParagraphs(), 3u);
    EXPECT_EQ(top(0), 50);
    EXPECT_EQ(top(1), 75);
    EXPECT_EQ(top(2), 100) << "the line below moved down by one line";

    editor.JoinParagraphs(3);
    EXPECT_EQ(top(1), 75) << "and back up after the join";
}

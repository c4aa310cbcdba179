#include "CaptionBuilder.h"
#include "caption_editor/CaptionTextEditor.h"

#include <gtest/gtest.h>

using namespace test;
using caption_editor::CaptionTextEditor;
using zelcaptioning::CaptioningColor;

namespace {

using Texts = std::vector<std::string>;

class StyleOperations : public testing::Test {
protected:
    void Edit(CaptionPtr caption) { editor.SetCaption(caption, 32, 15, 0, 0); }
    Caption& Working() { return *editor.GetCaption(); }
    TextSpanAttributes Style(std::uint64_t paragraph, std::uint64_t span) {
        return SpanAt(Working(), paragraph, span)->GetTextSpanStyleAttributes();
    }
    CaptionTextEditor editor;
};

} // namespace

TEST_F(StyleOperations, BoldSplitsAtTheRangeEndsAndUnboldPacksAgain) {
    Edit(MakeCaption({{{u"abcdefg"}}}));
    const auto original = SpanAt(Working(), 0, 0);
    editor.SetBold(true, 2, 5);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"ab", "cde", "fg"}));
    EXPECT_FALSE(Style(0, 0).IsBolded());
    EXPECT_TRUE(Style(0, 1).IsBolded());
    EXPECT_FALSE(Style(0, 2).IsBolded());
    EXPECT_EQ(SpanAt(Working(), 0, 1), original) << "the split span keeps the middle part";

    editor.SetBold(false, 2, 5);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"abcdefg"}));
}

TEST_F(StyleOperations, CaretRestylesTheWholeSpanItSelects) {
    Edit(MakeCaption({{{u"abc"}, {u"def", Italic()}}}));
    editor.SetBold(true, 4, 4);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"abc", "def"}));
    EXPECT_TRUE(Style(0, 1).IsBolded());

    editor.SetUnderline(true, 3, 3); // between the spans: the earlier one
    EXPECT_TRUE(Style(0, 0).IsUnderlined());
    EXPECT_FALSE(Style(0, 1).IsUnderlined());
}

TEST_F(StyleOperations, NothingToChangeStillMarksModified) {
    TextSpanAttributes boldItalic = Bold();
    boldItalic.SetItalicized(true);
    Edit(MakeCaption({{{u"ab", Bold()}, {u"cd", boldItalic}}}));
    editor.SetBold(true, 0, 4);
    EXPECT_TRUE(editor.IsModified());
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"ab", "cd"}));
    EXPECT_EQ(Style(0, 1), boldItalic);
}

TEST_F(StyleOperations, PackingRunsOverEveryParagraphAfterEachOperation) {
    Edit(MakeCaption({{{u"ab"}, {u"cd"}}, {{u"ef", Bold()}, {u"gh", Bold()}}}));
    editor.SetItalic(true, 0, 1);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"a", "bcd"}));
    EXPECT_EQ(SpanTexts(Working(), 1), (Texts{"efgh"})) << "an untouched paragraph is packed too";
}

TEST_F(StyleOperations, RangeAcrossABreakRestylesBothSidesButNotTheBreak) {
    Edit(MakeCaption({{{u"abc"}}, {{u"def"}}}));
    editor.SetItalic(true, 2, 6); // c, the break at 3, d and e
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"ab", "c"}));
    EXPECT_EQ(SpanTexts(Working(), 1), (Texts{"de", "f"}));
    EXPECT_TRUE(Style(0, 1).IsItalicized());
    EXPECT_TRUE(Style(1, 0).IsItalicized());
    EXPECT_FALSE(Style(1, 1).IsItalicized());
    EXPECT_EQ(PlainText(Working()), "abc\ndef");
}

TEST_F(StyleOperations, EdgeColourAndWidthSwitchTheTextEdge) {
    Edit(MakeCaption({{{u"abc"}}}));
    editor.SetColor(CaptioningColor(1, 0, 0, 1), 2, 0, 3);
    EXPECT_EQ(Style(0, 0).GetTextEdge(), TextSpanAttributes::kTextEdge_Uniform);
    EXPECT_EQ(Style(0, 0).edgeColor, CaptioningColor(1, 0, 0, 1));
    editor.SetColor(CaptioningColor(1, 0, 0, 0), 2, 0, 3);
    EXPECT_EQ(Style(0, 0).GetTextEdge(), TextSpanAttributes::kTextEdge_None);

    editor.SetEdgeWidth(2.5f, 0, 3);
    EXPECT_EQ(Style(0, 0).GetTextEdge(), TextSpanAttributes::kTextEdge_Uniform);
    EXPECT_EQ(Style(0, 0).edgeWidth, 2.5f);
    editor.SetEdgeWidth(0.0f, 0, 3);
    EXPECT_EQ(Style(0, 0).GetTextEdge(), TextSpanAttributes::kTextEdge_None);
}

TEST_F(StyleOperations, EachColourSelectorTargetsItsOwnField) {
    Edit(MakeCaption({{{u"abcd"}}}));
    const CaptioningColor yellow(1, 1, 0, 1);
    editor.SetColor(yellow, 0, 0, 1);
    editor.SetColor(yellow, 1, 1, 2);
    editor.SetColor(yellow, 7, 2, 3); // no such colour: nothing happens
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"a", "b", "cd"}));
    EXPECT_EQ(Style(0, 0).textColor, yellow);
    EXPECT_EQ(Style(0, 0).backgroundColor, zelcaptioning::kCaptioningColor_Transparent);
    EXPECT_EQ(Style(0, 1).backgroundColor, yellow);
    EXPECT_EQ(Style(0, 1).textColor, zelcaptioning::kCaptioningColor_White);
}

TEST_F(StyleOperations, FontFamilyAndSizeCompareExactly) {
    Edit(MakeCaption({{{u"abcdef"}}}));
    editor.SetFontName(u"DejaVu Serif", 0, 3);
    editor.SetFontSize(24.0f, 3, 6);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"abc", "def"}));
    EXPECT_EQ(Style(0, 0).GetFontName(), U(u"DejaVu Serif"));
    EXPECT_EQ(Style(0, 1).GetFontSize(), 24.0f);
    editor.SetFontName(u"DejaVu Serif", 0, 6);
    editor.SetFontSize(24.0f, 0, 6);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"abcdef"}));
}

TEST_F(StyleOperations, WithoutACaptionOrPastTheEndOnlyTheFlagChanges) {
    editor.SetBold(true, 0, 5);
    EXPECT_TRUE(editor.IsModified());
    EXPECT_FALSE(editor.GetCaption());

    Edit(MakeCaption({{{u"abc"}}}));
    editor.SetBold(true, 10, 20);
    EXPECT_TRUE(editor.IsModified());
    EXPECT_FALSE(Style(0, 0).IsBolded());
    EXPECT_EQ(PlainText(*editor.GetSavedCaption()), "abc");
}

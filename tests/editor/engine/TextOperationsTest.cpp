#include "CaptionBuilder.h"
#include "caption_editor/CaptionTextEditor.h"

#include <gtest/gtest.h>

using namespace test;
using caption_editor::CaptionTextEditor;

namespace {

using Texts = std::vector<std::string>;

class TextOperations : public testing::Test {
protected:
    void Edit(CaptionPtr caption) { editor.SetCaption(caption, 32, 15, 0, 0); }
    Caption& Working() { return *editor.GetCaption(); }
    CaptionTextEditor editor;
};

} // namespace

TEST_F(TextOperations, InsertedLineFeedsBecomeBreaksInTheSplitSpansStyle) {
    Edit(MakeCaption({{{u"xy", Italic()}}}));
    editor.InsertText(u"ab\ncd", 2);
    ASSERT_EQ(Working().GetNumParagraphs(), 2u);
    EXPECT_EQ(PlainText(Working()), "xyab\ncd");
    EXPECT_TRUE(SpanAt(Working(), 1, 0)->GetTextSpanStyleAttributes().IsItalicized());

    editor.InsertText(u"\n\n", 0);
    EXPECT_EQ(PlainText(Working()), "\n\nxyab\ncd");
}

TEST_F(TextOperations, InsertIntoAnEmptyCaptionCreatesItsFirstParagraph) {
    Edit(MakeCaption({}));
    editor.InsertText(u"hi", 0);
    ASSERT_EQ(Working().GetNumParagraphs(), 1u);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"hi"}));
    EXPECT_EQ(RowOf(Working(), 0), 14) << "a first line starts on the bottom row";
}

TEST_F(TextOperations, InsertTakesTheStyleOfTheSpanTheCaretSelects) {
    Edit(MakeCaption({{{u"ab", Bold()}, {u"cd"}}, {{u"ef", Italic()}, {u"gh"}}}));
    editor.InsertText(u"1", 2);  // between ab and cd: the earlier, bold span
    editor.InsertText(u"2", 6);  // start of the second paragraph: its first span
    editor.InsertText(u"3", 99); // past the end: dropped
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"ab1", "cd"}));
    EXPECT_EQ(SpanTexts(Working(), 1), (Texts{"2ef", "gh"}));
    EXPECT_EQ(PlainText(Working()), "ab1cd\n2efgh");
}

TEST_F(TextOperations, DeleteAcrossABreakJoinsAndRemovesBothSides) {
    Edit(MakeCaption({{{u"abc"}}, {{u"def", Bold()}}}));
    editor.DeleteText(u"c\nd", 2);
    ASSERT_EQ(Working().GetNumParagraphs(), 1u);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"ab", "ef"}));
    EXPECT_TRUE(SpanAt(Working(), 0, 1)->GetTextSpanStyleAttributes().IsBolded());
}

TEST_F(TextOperations, DeleteRemovesWholeSpansButKeepsAParagraphsLastOne) {
    Edit(MakeCaption({{{u"ab"}, {u"cd", Bold()}, {u"ef"}}}));
    editor.DeleteText(u"bcde", 1);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"a", "f"}));

    Edit(MakeCaption({{{u"only"}}}));
    const auto span = SpanAt(Working(), 0, 0);
    editor.DeleteText(u"only", 0);
    ASSERT_EQ(Working().GetCaptionTextParagraph(0)->GetNumSpans(), 1u);
    EXPECT_EQ(SpanAt(Working(), 0, 0), span);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{""}));
}

TEST_F(TextOperations, DeleteOfAWholeParagraphAndItsBreak) {
    Edit(MakeCaption({{{u"one"}}, {{u"two"}}, {{u"three"}}}));
    editor.DeleteText(u"two\n", 4);
    EXPECT_EQ(PlainText(Working()), "one\nthree");
    editor.DeleteText(u"\n", 3);
    EXPECT_EQ(PlainText(Working()), "onethree");
    editor.DeleteText(u"x", 8); // the final break position: no span, nothing happens
    EXPECT_EQ(PlainText(Working()), "onethree");
}

TEST_F(TextOperations, ReplaceDeletesThenInsertsAndEqualTextsTouchNothing) {
    Edit(MakeCaption({{{u"hello world"}}}));
    editor.ReplaceText(u"world", u"there", 6);
    EXPECT_EQ(PlainText(Working()), "hello there");
    EXPECT_TRUE(editor.IsModified());

    editor.SetModified(false);
    editor.ReplaceText(u"there", u"there", 6);
    EXPECT_FALSE(editor.IsModified());
    EXPECT_EQ(PlainText(Working()), "hello there");

    editor.ReplaceText(u"o t", u"o\nt", 4);
    EXPECT_EQ(PlainText(Working()), "hello\nthere");
}

TEST_F(TextOperations, BreakAtTheStartOfAParagraphInsertsAnEmptyOneBefore) {
    Edit(MakeCaption({{{u"ab", Bold()}}, {{u"cd", Italic()}}}));
    const auto second = Working().GetCaptionTextParagraph(1);
    editor.BreakParagraph(3);
    ASSERT_EQ(Working().GetNumParagraphs(), 3u);
    EXPECT_EQ(Working().GetCaptionTextParagraph(2), second);
    EXPECT_EQ(SpanTexts(Working(), 1), (Texts{""}));
    EXPECT_TRUE(SpanAt(Working(), 1, 0)->GetTextSpanStyleAttributes().IsBolded())
        << "the new line takes the style of the end of the line above";

    editor.BreakParagraph(0);
    EXPECT_TRUE(SpanAt(Working(), 0, 0)->GetTextSpanStyleAttributes().IsBolded())
        << "at the very start it takes the first span's style";
    EXPECT_EQ(PlainText(Working()), "\nab\n\ncd");
}

TEST_F(TextOperations, BreakInsideMovesTheRestOfTheLineToTheNewParagraph) {
    Edit(MakeCaption({{{u"abc"}, {u"def", Bold()}, {u"gh", Italic()}}}));
    const auto split = SpanAt(Working(), 0, 0);
    editor.BreakParagraph(1);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"a"}));
    EXPECT_EQ(SpanTexts(Working(), 1), (Texts{"bc", "def", "gh"}));
    EXPECT_EQ(SpanAt(Working(), 0, 0), split);

    editor.BreakParagraph(7); // between def and gh: the caret selects def, at its end
    EXPECT_EQ(SpanTexts(Working(), 1), (Texts{"bc", "def"}));
    EXPECT_EQ(SpanTexts(Working(), 2), (Texts{"gh"})) << "no empty span is left before gh";
    EXPECT_TRUE(SpanAt(Working(), 2, 0)->GetTextSpanStyleAttributes().IsItalicized());

    editor.InsertText(u"!", 9); // after g: must not land before it
    EXPECT_EQ(PlainText(Working()), "a\nbcdef\ng!h");
}

TEST_F(TextOperations, BreakAtTheEndOfALineStartsAnEmptyLineInItsStyle) {
    Edit(MakeCaption({{{u"ab", Bold()}}}));
    editor.BreakParagraph(2);
    EXPECT_EQ(SpanTexts(Working(), 1), (Texts{""}));
    EXPECT_TRUE(SpanAt(Working(), 1, 0)->GetTextSpanStyleAttributes().IsBolded());
}

TEST_F(TextOperations, LeadingLineFeedInAnEmptyCaptionMakesTwoLines) {
    Edit(MakeCaption({}));
    editor.InsertText(u"\nab", 0);
    EXPECT_EQ(PlainText(Working()), "\nab");
}

TEST_F(TextOperations, JoiningOntoAnEmptyLineDropsItsEmptySpan) {
    Edit(MakeCaption({{{u"", Bold()}}, {{u"cd"}}}));
    editor.JoinParagraphs(0);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"cd"}));
    editor.InsertText(u"!", 1);
    EXPECT_EQ(PlainText(Working()), "c!d");
}

TEST_F(TextOperations, JoinAppendsTheTextOfTheNextParagraph) {
    Edit(MakeCaption({{{u"ab"}}, {{u""}, {u"cd", Bold()}}, {{u"ef"}}}));
    editor.JoinParagraphs(2);
    ASSERT_EQ(Working().GetNumParagraphs(), 2u);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"ab", "cd"}));
    editor.JoinParagraphs(5); // the last break: the last paragraph has no next one
    editor.JoinParagraphs(40);
    EXPECT_EQ(PlainText(Working()), "abcd\nef");
}

TEST_F(TextOperations, MusicNoteIsTypedLikeAnyCharacter) {
    Edit(MakeCaption({{{u"la", Italic()}}}));
    editor.InsertText(u"\u266A", 2);
    EXPECT_EQ(SpanTexts(Working(), 0), (Texts{"la\u266A"}));
    EXPECT_EQ(Working().GetCaptionTextParagraph(0)->GetParagraphTextLength(), 3u);
}

#include "CaptionBuilder.h"
#include "caption_editor/CaptionTextEditor.h"

#include <gtest/gtest.h>

using namespace test;
using caption_editor::CaptionTextEditor;

TEST(EditorLifecycle, SetCaptionMakesTwoDeepCopiesAndKeepsTheHostCaption) {
    CaptionPtr host = MakeCaption({{{u"abc"}}});
    CaptionTextEditor editor;
    editor.SetCaption(host, 32, 15, 0, 0);
    EXPECT_EQ(editor.GetHostCaption(), host);
    EXPECT_NE(editor.GetCaption(), host);
    EXPECT_NE(editor.GetSavedCaption(), host);
    EXPECT_NE(editor.GetCaption(), editor.GetSavedCaption());
    EXPECT_FALSE(editor.IsPixelLayout());
    EXPECT_FALSE(editor.IsModified());

    editor.InsertText(u"X", 1);
    EXPECT_EQ(PlainText(*editor.GetCaption()), "aXbc");
    EXPECT_EQ(PlainText(*editor.GetSavedCaption()), "abc");
    EXPECT_EQ(PlainText(*host), "abc");
    EXPECT_TRUE(editor.IsModified());
}

TEST(EditorLifecycle, WorkingCopyIsNormalisedButTheSavedCopyIsNot) {
    CaptionPtr host = MakeCaption({{}, {{u"ab"}, {u"", Bold()}}, {{u""}}});
    CaptionTextEditor editor;
    editor.SetCaption(host, 32, 15, 0, 0);
    EXPECT_EQ(SpanTexts(*editor.GetCaption(), 0), (std::vector<std::string>{""}));
    EXPECT_EQ(SpanTexts(*editor.GetCaption(), 1), (std::vector<std::string>{"ab"}));
    EXPECT_EQ(SpanTexts(*editor.GetCaption(), 2), (std::vector<std::string>{""}));
    EXPECT_EQ(editor.GetSavedCaption()->GetCaptionTextParagraph(0)->GetNumSpans(), 0u);
    EXPECT_EQ(editor.GetSavedCaption()->GetCaptionTextParagraph(1)->GetNumSpans(), 2u);
}

TEST(EditorLifecycle, AreaIsEightTenthsAndEveryReloadShrinksItAgain) {
    CaptionTextEditor editor;
    editor.SetCaption(MakeCaption({{{u"a"}}}), 0, 0, 1000, 500);
    EXPECT_EQ(editor.GetCaptionAreaWidth(), 800);
    EXPECT_EQ(editor.GetCaptionAreaHeight(), 400);
    EXPECT_TRUE(editor.IsPixelLayout());
    editor.Reload();
    EXPECT_EQ(editor.GetCaptionAreaWidth(), 512);
    EXPECT_EQ(editor.GetCaptionAreaHeight(), 256);

    CaptionTextEditor other;
    other.SetCaption(MakeCaption({{{u"a"}}}), 0, 0, 1250, 625);
    other.Reload();
    EXPECT_EQ(other.GetCaptionAreaWidth(), 640) << "a stored area of 1000 x 500 reloads to 640";
    EXPECT_EQ(other.GetCaptionAreaHeight(), 320);

    CaptionTextEditor tiny;
    tiny.SetCaption(MakeCaption({{{u"a"}}}), 32, 15, 1, 1);
    EXPECT_FALSE(tiny.IsPixelLayout()) << "0.8 of one pixel truncates to none";
}

TEST(EditorLifecycle, ReloadDropsEditsAndTakesTheHostCaptionAgain) {
    CaptionPtr host = MakeCaption({{{u"abc"}}});
    CaptionTextEditor editor;
    editor.SetCaption(host, 32, 15, 0, 0);
    editor.InsertText(u"Z", 0);
    SpanAt(*host, 0, 0)->SetCaptionText(u"host changed");
    editor.Reload();
    EXPECT_EQ(PlainText(*editor.GetCaption()), "host changed");
    EXPECT_EQ(PlainText(*editor.GetSavedCaption()), "host changed");
    EXPECT_EQ(editor.GetHostCaption(), host);
}

TEST(EditorLifecycle, SameCaptionOrNoneAgainChangesNothing) {
    CaptionTextEditor editor;
    editor.SetCaption(nullptr, 10, 10, 1000, 1000);
    EXPECT_EQ(editor.GetCaptionAreaWidth(), 0) << "no caption onto no caption is ignored whole";
    EXPECT_EQ(editor.GetColumnCount(), CaptionTextEditor::kDefaultColumnCount);

    editor.SetCaption(MakeCaption({{{u"a"}}}), 32, 15, 0, 0);
    const CaptionPtr working = editor.GetCaption();
    editor.SetCaption(working, 40, 23, 100, 100);
    EXPECT_EQ(editor.GetCaption(), working);
    EXPECT_EQ(editor.GetColumnCount(), 32);

    editor.SetCaption(nullptr, 32, 15, 0, 0);
    EXPECT_FALSE(editor.GetCaption());
    EXPECT_FALSE(editor.GetSavedCaption());
    EXPECT_FALSE(editor.GetHostCaption());
    editor.InsertText(u"x", 0);
    EXPECT_FALSE(editor.GetCaption()) << "without a caption every operation does nothing";
}

TEST(EditorLifecycle, RevertRestoresTheSavedCopyOnlyWhenModified) {
    CaptionTextEditor editor;
    editor.SetCaption(MakeCaption({{{u"abc"}}}), 32, 15, 0, 0);
    const CaptionPtr working = editor.GetCaption();
    EXPECT_FALSE(editor.Revert());
    editor.SetBold(true, 0, 3);
    editor.InsertText(u"\nxy", 3);
    ASSERT_TRUE(editor.Revert());
    EXPECT_EQ(editor.GetCaption(), working) << "the working copy keeps its identity";
    EXPECT_EQ(PlainText(*working), "abc");
    EXPECT_FALSE(SpanAt(*working, 0, 0)->GetTextSpanStyleAttributes().IsBolded());
    EXPECT_NE(SpanAt(*working, 0, 0), SpanAt(*editor.GetSavedCaption(), 0, 0));
}

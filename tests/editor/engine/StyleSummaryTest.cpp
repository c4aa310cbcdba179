#include "CaptionBuilder.h"
#include "caption_editor/CaptionTextEditor.h"

#include <gtest/gtest.h>

using namespace test;
using caption_editor::CaptionTextEditor;
using caption_editor::StyleSummary;
using zelcaptioning::CaptioningColor;

namespace {

TextSpanAttributes BoldItalic() {
    TextSpanAttributes a = Italic();
    a.SetBolded(true);
    return a;
}

void SetAlignment(Caption& caption, std::uint64_t paragraph, zelcaptioning::TextAlignmentType a) {
    auto p = caption.GetCaptionTextParagraph(paragraph);
    auto style = p->GetParagraphStyleAttributes();
    style.SetTextAlignment(a);
    p->SetParagraphStyleAttributes(style);
}

} // namespace

TEST(StyleSummary, FlagsHoldOnlyWhenEverySpanHasTheStyle) {
    CaptionTextEditor editor;
    editor.SetCaption(MakeCaption({{{u"ab", BoldItalic()}, {u"cd", Italic()}}}), 32, 15, 0, 0);
    StyleSummary s = editor.GetStyleSummary(0, 4);
    EXPECT_TRUE(s.italic);
    EXPECT_FALSE(s.bold);
    EXPECT_FALSE(s.underline);
    EXPECT_TRUE(editor.GetStyleSummary(0, 2).bold);
    EXPECT_FALSE(editor.GetStyleSummary(50, 60).italic) << "no span: false";
    EXPECT_EQ(editor.GetStyleSummary(50, 60).alignment, StyleSummary::kAlignmentNone);
    EXPECT_EQ(editor.GetStyleSummary(50, 60).anchor, zelcaptioning::kAnchorID_None);
}

TEST(StyleSummary, SizeAndFamilyAreTheFirstOnesSet) {
    TextSpanAttributes zero, sized, named;
    sized.SetFontSize(30.0f);
    named.SetFontName(u"Serif");
    named.SetFontSize(12.0f);
    CaptionTextEditor editor;
    editor.SetCaption(MakeCaption({{{u"a", zero}, {u"b", sized}, {u"c", named}}}), 32, 15, 0, 0);
    StyleSummary s = editor.GetStyleSummary(0, 3);
    EXPECT_EQ(s.fontSize, 30.0f);
    EXPECT_EQ(s.fontName, U(u"Serif"));
    EXPECT_EQ(editor.GetStyleSummary(0, 1).fontSize, 20.0f) << "all sizes 0.0 report 20.0";
}

TEST(StyleSummary, ColoursComeFromTheFirstSpanAndMixedFlagsFromTheRest) {
    TextSpanAttributes red, redEdge;
    red.textColor = CaptioningColor(1, 0, 0, 1);
    redEdge = red;
    redEdge.edgeColor = CaptioningColor(0, 0, 1, 1);
    redEdge.edgeWidth = 3.0f;
    CaptionTextEditor editor;
    editor.SetCaption(MakeCaption({{{u"a", redEdge}, {u"b", red}}}), 32, 15, 0, 0);
    StyleSummary s = editor.GetStyleSummary(0, 2);
    EXPECT_EQ(s.textColor, CaptioningColor(1, 0, 0, 1));
    EXPECT_FALSE(s.textColorMixed);
    EXPECT_EQ(s.edgeColor, CaptioningColor(0, 0, 1, 1));
    EXPECT_TRUE(s.edgeColorMixed);
    EXPECT_FALSE(s.backgroundColorMixed);
    EXPECT_EQ(s.edgeWidth, 3.0f);
    EXPECT_EQ(editor.GetStyleSummary(9, 9).textColor, zelcaptioning::kCaptioningColor_White);
}

TEST(StyleSummary, AlignmentIsMixedWhenParagraphsDifferOrTheirBlocksDoNotLineUp) {
    // Left-aligned lines at columns 4 and 4: lined up; at 4 and 6: not.
    CaptionPtr caption = MakeGridCaption({{u"abcd", 4, 12}, {u"ef", 4, 13}, {u"gh", 6, 14}});
    for (std::uint64_t i = 0; i < 3; ++i) {
        SetAlignment(*caption, i, zelcaptioning::kTextAlignment_Left);
    }
    CaptionTextEditor editor;
    editor.SetCaption(caption, 32, 15, 0, 0);
    EXPECT_EQ(editor.GetStyleSummary(0, 7).alignment, zelcaptioning::kTextAlignment_Left);
    EXPECT_EQ(editor.GetStyleSummary(0, 10).alignment, StyleSummary::kAlignmentMixed);

    // Centres 4 + 4/2 = 6 and 5 + 2/2 = 6 agree; 8 + 1/2 = 8 is two off.
    caption = MakeGridCaption({{u"abcd", 4, 12}, {u"ef", 5, 13}, {u"g", 8, 14}});
    editor.SetCaption(caption, 32, 15, 0, 0);
    EXPECT_EQ(editor.GetStyleSummary(0, 7).alignment, zelcaptioning::kTextAlignment_Center);
    EXPECT_EQ(editor.GetStyleSummary(0, 9).alignment, StyleSummary::kAlignmentMixed);

    caption = MakeGridCaption({{u"ab", 4, 12}, {u"cd", 4, 13}});
    SetAlignment(*caption, 1, zelcaptioning::kTextAlignment_Right);
    editor.SetCaption(caption, 32, 15, 0, 0);
    EXPECT_EQ(editor.GetStyleSummary(0, 5).alignment, StyleSummary::kAlignmentMixed);
    EXPECT_EQ(editor.GetStyleSummary(4, 5).alignment, zelcaptioning::kTextAlignment_Right);
}

TEST(StyleSummary, AnchorOfTheFirstParagraphOrMixed) {
    CaptionPtr caption = MakeGridCaption({{u"ab", 0, 1}, {u"cd", 0, 2}});
    auto second = caption->GetCaptionTextParagraph(1);
    auto style = second->GetParagraphStyleAttributes();
    style.SetAnchorID(2);
    second->SetParagraphStyleAttributes(style);
    CaptionTextEditor editor;
    editor.SetCaption(caption, 32, 15, 0, 0);
    StyleSummary s = editor.GetStyleSummary(0, 1);
    EXPECT_EQ(s.anchor, zelcaptioning::kAnchorID_BottomCenter);
    EXPECT_EQ(s.position, caption->GetCaptionTextParagraph(0)->GetCaptionPosition());
    EXPECT_EQ(editor.GetStyleSummary(0, 5).anchor, StyleSummary::kAnchorMixed);
}

#include "CaptionBuilder.h"

#include <gtest/gtest.h>

using namespace test;
using namespace zelcaptioning;

TEST(CaptionModel, CopyIsDeepAndLeavesTheSourceUntouched) {
    CaptionPtr source = MakeCaption({{{u"ab", Bold()}, {u"cd"}}, {{u"ef"}}});
    source->SetBeginTime(zelmediatypes::TickTime(10));
    source->SetCaptionType(kCaptionType_PopOn);

    Caption copy(*source);
    SpanAt(copy, 0, 0)->SetCaptionText(u"XX");
    TextSpanAttributes attributes = SpanAt(copy, 0, 1)->GetTextSpanStyleAttributes();
    attributes.SetItalicized(true);
    SpanAt(copy, 0, 1)->SetTextSpanStyleAttributes(attributes);
    copy.GetCaptionTextParagraph(1)->SetCaptionPosition(Position(Rational(1, 2), Rational(1, 3)));

    EXPECT_EQ(PlainText(*source), "abcd\nef");
    EXPECT_FALSE(SpanAt(*source, 0, 1)->GetTextSpanStyleAttributes().IsItalicized());
    EXPECT_EQ(source->GetCaptionTextParagraph(1)->GetCaptionPosition(), kPosition_Uninitialized);
    EXPECT_EQ(copy.GetBeginTime(), zelmediatypes::TickTime(10));
    EXPECT_EQ(copy.GetCaptionType(), kCaptionType_PopOn);
    EXPECT_NE(copy.GetCaptionTextParagraph(0), source->GetCaptionTextParagraph(0));

    Caption assigned;
    assigned = *source;
    SpanAt(assigned, 1, 0)->SetCaptionText(u"zz");
    EXPECT_EQ(PlainText(*source), "abcd\nef");
    EXPECT_EQ(PlainText(assigned), "abcd\nzz");
}

TEST(CaptionModel, AssignmentKeepsTheTargetsIdentityAndCount) {
    CaptionPtr target = MakeCaption({{{u"old"}}});
    CaptionPtr holder = target;
    *target = *MakeCaption({{{u"new"}}, {{u"line"}}});
    EXPECT_EQ(holder, target);
    EXPECT_EQ(target->GetRefCount(), 2);
    EXPECT_EQ(PlainText(*holder), "new\nline");
    *target = *target;
    EXPECT_EQ(PlainText(*holder), "new\nline");
}

TEST(CaptionModel, ReferenceCountReleasesTheLastHolder) {
    struct Probe : CaptionTextSpan {
        bool* destroyed;
        explicit Probe(bool* flag)
            : destroyed(flag) {}
        ~Probe() override { *destroyed = true; }
    };
    bool destroyed = false;
    {
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(new Probe(&destroyed));
        CaptionTextSpanPtr held = paragraph->GetCaptionTextSpan(0);
        EXPECT_EQ(held->GetRefCount(), 2);
        paragraph->RemoveCaptionTextSpan(held);
        EXPECT_EQ(held->GetRefCount(), 1);
        EXPECT_FALSE(destroyed);
    }
    EXPECT_TRUE(destroyed);
}

TEST(CaptionModel, PackMergesOnlyNeighboursWithEqualStyles) {
    CaptionPtr caption = MakeCaption({{{u"a"}, {u"b"}, {u"c"}}});
    auto paragraph = caption->GetCaptionTextParagraph(0);
    const CaptionTextSpanPtr first = paragraph->GetCaptionTextSpan(0);
    paragraph->PackSpansWithMatchingStyle();
    EXPECT_EQ(SpanTexts(*caption, 0), (std::vector<std::string>{"abc"}));
    EXPECT_EQ(paragraph->GetCaptionTextSpan(0), first) << "the first span of a run survives";

    TextSpanAttributes halfAlpha;
    halfAlpha.backgroundColor.SetAlpha(0.5f);
    TextSpanAttributes otherFont;
    otherFont.SetFontName(u"Serif");
    caption = MakeCaption(
        {{{u"a"}, {u"b", halfAlpha}, {u"c"}, {u"d", otherFont}, {u"e", Bold()}, {u"f", Bold()}}});
    caption->GetCaptionTextParagraph(0)->PackSpansWithMatchingStyle();
    EXPECT_EQ(SpanTexts(*caption, 0), (std::vector<std::string>{"a", "b", "c", "d", "ef"}));
}

TEST(CaptionModel, UnplacedParagraphReportsTheUninitialisedPosition) {
    CaptionTextParagraph paragraph;
    EXPECT_FALSE(paragraph.GetCaptionPosition() != kPosition_Uninitialized);
    paragraph.SetCaptionPosition(Position(Rational(0), Rational(14, 15)));
    EXPECT_TRUE(paragraph.GetCaptionPosition() != kPosition_Uninitialized);
    zelcore::geom::RectT<int> rect{1, 2, 3, 4};
    CaptionTextParagraph().GetUsedRect(100, 100, rect);
    EXPECT_TRUE(rect.IsEmpty());
}

TEST(CaptionModel, ValueWithScaleRoundsOrFloorsExactly) {
    EXPECT_EQ(ValueWithScale(Rational(14, 15), 15, true), 14);
    EXPECT_EQ(ValueWithScale(Rational(1, 2), 3, true), 2) << "1.5 rounds up";
    EXPECT_EQ(ValueWithScale(Rational(1, 2), 3, false), 1);
    EXPECT_EQ(ValueWithScale(Rational(-1, 2), 3, true), -1) << "-1.5 rounds up to -1";
    EXPECT_EQ(ValueWithScale(Rational(-1, 2), 3, false), -2);
    EXPECT_EQ(ValueWithScale(Rational(2, 3), 1080, true), 720);
    EXPECT_DOUBLE_EQ(AsDouble(Rational(3, 8)), 0.375);
}

TEST(CaptionModel, LineMeasuresComeFromTheFontUntilMeasured) {
    TextSpanAttributes big;
    big.SetFontSize(40.0f);
    CaptionPtr caption = MakeCaption({{{u"ab"}, {u"cd", big}}});
    auto paragraph = caption->GetCaptionTextParagraph(0);
    EXPECT_EQ(paragraph->GetParagraphTextLength(), 4u);
    EXPECT_EQ(paragraph->GetParagraphLineHeightFromFontSize(), 50u);
    EXPECT_EQ(paragraph->GetParagraphLineHeight(), 50u);
    EXPECT_EQ(paragraph->GetParagraphLineWidth(), 72u) << "2 x 12 + 2 x 24";
    paragraph->SetMeasuredLineSize(61, 47);
    EXPECT_EQ(paragraph->GetParagraphLineWidth(), 61u);
    EXPECT_EQ(paragraph->GetParagraphLineHeight(), 47u);
    EXPECT_EQ(paragraph->GetParagraphLineHeightFromFontSize(), 50u);
}

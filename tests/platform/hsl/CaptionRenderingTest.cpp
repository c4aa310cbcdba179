#include "HSL/CaptionRendering.h"

#include "zelui/drawbot/Drawbot.h"

#include <gtest/gtest.h>

using namespace zelcaptioning;

namespace {

CaptionPtr OneLine(const char16_t* text, const TextSpanAttributes& attributes) {
    CaptionPtr caption(new Caption);
    CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
    paragraph->AppendCaptionTextSpan(new CaptionTextSpan(text, attributes));
    caption->AppendCaptionTextParagraph(paragraph);
    return caption;
}

std::uint64_t Width(const CaptionPtr& caption) {
    return caption->GetCaptionTextParagraph(0)->GetParagraphLineWidth();
}
std::uint64_t Height(const CaptionPtr& caption) {
    return caption->GetCaptionTextParagraph(0)->GetParagraphLineHeight();
}

// The bounding box of the pixels that are not black.
zelcore::geom::RectT<int> Drawn(const VF::VideoFrame& frame) {
    zelcore::geom::RectT<int> box{frame.GetWidthPx(), frame.GetHeightPx(), 0, 0};
    for (int y = 0; y < frame.GetHeightPx(); ++y) {
        const std::uint8_t* row = frame.GetRow(y);
        for (int x = 0; x < frame.GetWidthPx(); ++x) {
            if (row[4 * x] | row[4 * x + 1] | row[4 * x + 2]) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box;
}

} // namespace

TEST(CaptionRendering, MeasuresLinesWithTheirRealFonts) {
    const auto drawbot = zelui::drawbot::Drawbot::CreateMeasuring();
    TextSpanAttributes plain, big, bold;
    big.SetFontSize(40.0f);
    bold.SetBolded(true);
    CaptionPtr small = OneLine(u"Hello there", plain);
    CaptionPtr large = OneLine(u"Hello there", big);
    CaptionPtr heavy = OneLine(u"Hello there", bold);
    for (const CaptionPtr& c : {small, large, heavy}) {
        HSL::RefreshCaptionSizeInfo(c, *drawbot);
        EXPECT_TRUE(c->GetCaptionTextParagraph(0)->HasMeasuredLineSize());
    }
    EXPECT_GT(Width(small), 60u);
    EXPECT_NEAR(static_cast<double>(Width(large)), 2.0 * Width(small), 4.0);
    EXPECT_GT(Height(large), Height(small));
    EXPECT_GT(Width(heavy), Width(small));

    CaptionPtr empty(new Caption);
    empty->AppendCaptionTextParagraph(new CaptionTextParagraph);
    HSL::RefreshCaptionSizeInfo(empty, *drawbot);
    EXPECT_EQ(Width(empty), 0u);
    EXPECT_EQ(Height(empty), Height(small)) << "an empty line keeps the default line height";
}

TEST(CaptionRendering, MeasuredLinesLayOutToTheAreasEdge) {
    const auto drawbot = zelui::drawbot::Drawbot::CreateMeasuring();
    CaptionPtr caption = OneLine(u"Right", {});
    auto style = caption->GetCaptionTextParagraph(0)->GetParagraphStyleAttributes();
    style.SetAnchorID(kAnchorID_BottomRight);
    caption->GetCaptionTextParagraph(0)->SetParagraphStyleAttributes(style);
    HSL::RefreshCaptionSizeInfo(caption, *drawbot);
    caption->UpdateLinePositions(800, 450);
    zelcore::geom::RectT<int> used;
    caption->GetCaptionTextParagraph(0)->GetUsedRect(800, 450, used);
    EXPECT_EQ(used.right, 800);
    EXPECT_EQ(used.bottom, 450);
}

TEST(CaptionRendering, DrawsPlacedLinesInTheCaptionAreaScaledToTheFrame) {
    TextSpanAttributes red;
    red.textColor = CaptioningColor(1, 0, 0, 1);
    red.SetFontSize(40.0f);
    CaptionPtr caption = OneLine(u"MMMM", red);
    VF::VideoFrame untouched(400, 200);
    HSL::RenderOpenCaptions(untouched, *caption, 400, 200);
    EXPECT_TRUE(Drawn(untouched).IsEmpty()) << "an unplaced line is not drawn";

    caption->GetCaptionTextParagraph(0)->SetCaptionPosition(Position(Rational(0), Rational(0)));
    VF::VideoFrame full(400, 200);
    HSL::RenderOpenCaptions(full, *caption, 400, 200);
    const auto box = Drawn(full);
    ASSERT_FALSE(box.IsEmpty());
    EXPECT_GE(box.left, 40) << "the area starts a tenth of the frame in";
    EXPECT_LT(box.left, 48);
    EXPECT_GE(box.top, 20);
    const std::uint8_t* pixel = full.GetRow((box.top + box.bottom) / 2) + 4 * (box.left + 3);
    EXPECT_GT(pixel[0], 128);
    EXPECT_LT(pixel[1], 64) << "red text";

    VF::VideoFrame thumbnail(200, 100);
    HSL::RenderOpenCaptions(thumbnail, *caption, 400, 200);
    const auto small = Drawn(thumbnail);
    EXPECT_NEAR(small.Width(), box.Width() / 2.0, 3.0);
    EXPECT_NEAR(small.left, box.left / 2.0, 2.0);
}

TEST(CaptionRendering, BackgroundBoxCoversTheLine) {
    TextSpanAttributes boxed;
    boxed.backgroundColor = CaptioningColor(0, 0, 1, 1);
    CaptionPtr caption = OneLine(u"ab", boxed);
    caption->GetCaptionTextParagraph(0)->SetCaptionPosition(
        Position(Rational(1, 2), Rational(1, 2)));
    caption->GetCaptionTextParagraph(0)->SetMeasuredLineSize(30, 24);
    VF::VideoFrame frame(400, 200);
    HSL::RenderOpenCaptions(frame, *caption, 400, 200);
    const std::uint8_t* pixel = frame.GetRow(100 + 2) + 4 * (200 + 1);
    EXPECT_EQ(pixel[2], 255) << "the box starts at the line's position";
    EXPECT_EQ(frame.GetRow(100 + 30)[4 * 201 + 2], 0) << "and is one line high";
}

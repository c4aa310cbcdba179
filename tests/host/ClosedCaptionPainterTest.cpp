// Closed captions in the decoder's look: monospaced cells on black boxes at their grid places.
#include "ClosedCaptionPainter.h"

#include "zelcaptioning/CaptionTextParagraph.h"
#include "zelcaptioning/CaptionTextSpan.h"
#include "zelcore/UTF16String.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

namespace {

constexpr int kWidthPx = 640;
constexpr int kHeightPx = 360;
// The caption area is the middle 80%: 512 x 288 pixels from (64, 36), cells 16 x 19.2.
constexpr double kCellWidth = 16;
constexpr double kCellHeight = 19.2;
const QColor kGrey(128, 128, 128);

zelcaptioning::CaptionTextParagraphPtr Line(const char* text, zelcaptioning::Position position,
                                            zelcaptioning::CaptioningColor color) {
    zelcaptioning::TextSpanAttributes attributes;
    attributes.textColor = color;
    auto paragraph = boost::intrusive_ptr(new zelcaptioning::CaptionTextParagraph);
    paragraph->AppendCaptionTextSpan(
        new zelcaptioning::CaptionTextSpan(zelcore::ToUTF16(text), attributes));
    paragraph->SetCaptionPosition(position);
    return paragraph;
}

// The pixel at the centre of a grid cell.
QColor CellCentre(const QImage& image, int column, int row) {
    return image.pixelColor(static_cast<int>(64 + (column + 0.5) * kCellWidth),
                            static_cast<int>(36 + (row + 0.5) * kCellHeight));
}

// Whether any pixel of the cell passes the test.
template <typename Test> bool AnyPixelOfCell(const QImage& image, int column, int row, Test test) {
    for (int y = static_cast<int>(36 + row * kCellHeight) + 1;
         y < static_cast<int>(36 + (row + 1) * kCellHeight); ++y) {
        for (int x = static_cast<int>(64 + column * kCellWidth) + 1;
             x < static_cast<int>(64 + (column + 1) * kCellWidth); ++x) {
            if (test(image.pixelColor(x, y))) {
                return true;
            }
        }
    }
    return false;
}

TEST(ClosedCaptionPainterTest, DrawsEachLineInCellsOnABlackBoxAtItsGridPlace) {
    QImage picture(kWidthPx, kHeightPx, QImage::Format_RGBA8888);
    picture.fill(kGrey);
    zelcaptioning::Caption caption;
    // "AB" in red at column 4 of row 13; "HI" never placed, so centred on the bottom row.
    caption.AppendCaptionTextParagraph(Line(
        "AB", {zelcaptioning::Rational(4, 32), zelcaptioning::Rational(13, 15)}, {1, 0, 0, 1}));
    caption.AppendCaptionTextParagraph(
        Line("HI", zelcaptioning::kPosition_Uninitialized, zelcaptioning::kCaptioningColor_White));

    host::PaintClosedCaption(picture, caption, 32, 15);

    // The box: a padding cell each side of the text cells, nothing beyond.
    EXPECT_EQ(CellCentre(picture, 3, 13), QColor(Qt::black));
    EXPECT_EQ(CellCentre(picture, 6, 13), QColor(Qt::black));
    EXPECT_EQ(CellCentre(picture, 2, 13), kGrey);
    EXPECT_EQ(CellCentre(picture, 7, 13), kGrey);
    EXPECT_EQ(CellCentre(picture, 4, 12), kGrey);
    EXPECT_EQ(CellCentre(picture, 4, 14), kGrey);
    const auto red = [](const QColor& c) {
        return c.red() > 180 && c.green() < 80;
    };
    const auto white = [](const QColor& c) {
        return c.lightness() > 200;
    };
    EXPECT_TRUE(AnyPixelOfCell(picture, 4, 13, red));
    EXPECT_TRUE(AnyPixelOfCell(picture, 5, 13, red));
    EXPECT_FALSE(AnyPixelOfCell(picture, 3, 13, red));

    // (32 - 2) / 2: the text in columns 15 and 16, the box from 14 to 17.
    EXPECT_EQ(CellCentre(picture, 14, 14), QColor(Qt::black));
    EXPECT_EQ(CellCentre(picture, 17, 14), QColor(Qt::black));
    EXPECT_EQ(CellCentre(picture, 18, 14), kGrey);
    EXPECT_TRUE(AnyPixelOfCell(picture, 15, 14, white));
    EXPECT_TRUE(AnyPixelOfCell(picture, 16, 14, white));
    // The area's edge: nothing outside the middle 80%.
    EXPECT_EQ(picture.pixelColor(10, kHeightPx - 10), kGrey);
}

} // namespace

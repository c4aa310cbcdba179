#include "PlatformHost/HostAccess.h"
#include "UIF/Bitmap.h"
#include "UIF/DC.h"
#include "UIF/SubView.h"
#include "UIF/VideoFrameBlit.h"
#include "UIF/Workspace.h"
#include "UiTestSupport.h"
#include "VF/VideoFrame.h"
#include "drawing/DCImpl.h"
#include "zelui/drawbot/Drawbot.h"
#include "zelui/ui/UI_Events.h"

#include <QApplication>
#include <QImage>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace platform_ui_test {
namespace {

QColor ToQColor(const zelui::ui::UI_Color& c) {
    return QColor(c.red, c.green, c.blue, c.alpha);
}

// Paints a grey band, a label and the audio decal, counting its draws.
class PaintingPane : public UIF::SubView {
public:
    using UIF::SubView::SubView;
    int draws = 0;
    int labelWidth = 0;
    std::vector<float> wheelDeltas;
    std::vector<std::pair<float, float>> presses;

protected:
    void Draw(UIF::DC& dc, const UIF::Rect&) override {
        ++draws;
        dc.FillRect(GetClientRect(), UIF::kColor_WindowBackground);
        dc.FillRect(UIF::Rect::FromSize(0, 2, 300, 74), UIF::kColor_ReversibleGray);
        labelWidth = dc.GetStringWidth(u"$$$/Corvala/Test/In=In:", UIF::kFont_Normal);
        dc.DrawString(u"$$$/Corvala/Test/In=In:", UIF::Rect::FromSize(80, 6, 40, 17),
                      UIF::kFont_Normal, UIF::kColor_ReversibleBlack);
        dc.DrawImage(UIF::Bitmap::GetBitmap(UIF::kAudioLargeDecal), 4, 6);
    }
    bool MouseWheel(const zelui::ui::UI_MouseEvent& event) override {
        wheelDeltas.push_back(event.GetWheelDelta());
        return true;
    }
    bool MouseDown(const zelui::ui::UI_MouseEvent& event) override {
        presses.emplace_back(event.GetX(), event.GetY());
        return true;
    }
};

class DrawingTest : public testing::Test {
protected:
    DrawingTest() {
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"drawing", {});
        creator.view->AddSubView(pane);
        pane.SetBounds(UIF::Rect::FromSize(0, 52, 300, 150));
        ShowWorkspace();
    }
    QImage Grab() { return platform::ui::WidgetOf(pane)->grab().toImage(); }

    RecordingCreator creator{u"drawing"};
    PaintingPane pane{creator.view.get()};
};

TEST_F(DrawingTest, DrawHookPaintsThroughTheDC) {
    const QImage drawn = Grab();
    EXPECT_GT(pane.draws, 0);
    EXPECT_EQ(drawn.pixelColor(250, 40), ToQColor(UIF::GetColor(UIF::kColor_ReversibleGray)));
    EXPECT_EQ(drawn.pixelColor(250, 120), ToQColor(UIF::GetColor(UIF::kColor_WindowBackground)));
    EXPECT_GT(pane.labelWidth, 5);

    // Text is drawn in the ink colour (antialiased towards the background)
    // inside its box only.
    const QColor ink = ToQColor(UIF::GetColor(UIF::kColor_ReversibleBlack));
    const QColor paper = ToQColor(UIF::GetColor(UIF::kColor_ReversibleGray));
    auto nearInk = [&](QColor pixel) {
        auto distance = [&](const QColor& to) {
            return std::abs(pixel.red() - to.red()) + std::abs(pixel.green() - to.green()) +
                   std::abs(pixel.blue() - to.blue());
        };
        return distance(ink) < distance(paper);
    };
    int inkInBox = 0;
    int inkRightOfBox = 0;
    for (int y = 6; y < 23; ++y) {
        for (int x = 80; x < 120; ++x) {
            inkInBox += nearInk(drawn.pixelColor(x, y)) ? 1 : 0;
        }
        for (int x = 120; x < 300; ++x) {
            inkRightOfBox += nearInk(drawn.pixelColor(x, y)) ? 1 : 0;
        }
    }
    EXPECT_GT(inkInBox, 10);
    EXPECT_EQ(inkRightOfBox, 0);
}

TEST_F(DrawingTest, DoubleBufferedViewRedrawsOnlyAfterInvalidate) {
    pane.EnableDoubleBuffering(true, false);
    Grab();
    const int drawsAfterFirst = pane.draws;
    Grab();
    EXPECT_EQ(pane.draws, drawsAfterFirst) << "an exposure repaints from the buffer";
    pane.Invalidate();
    Grab();
    EXPECT_EQ(pane.draws, drawsAfterFirst + 1);

    pane.EnableDoubleBuffering(false, false);
    const int drawsUnbuffered = pane.draws;
    Grab();
    Grab();
    EXPECT_EQ(pane.draws, drawsUnbuffered + 2);
}

TEST_F(DrawingTest, WheelNotchesAndPressesArriveInViewCoordinates) {
    QWidget* widget = platform::ui::WidgetOf(pane);
    QWheelEvent wheel(QPointF(10, 10), widget->mapToGlobal(QPointF(10, 10)), QPoint(),
                      QPoint(0, -240), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
    EXPECT_EQ(pane.wheelDeltas, std::vector<float>{-2.0f});

    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(30, 100));
    EXPECT_EQ(pane.presses, (std::vector<std::pair<float, float>>{{30.0f, 100.0f}}));
}

TEST(VideoFrameBlitTest, FrameIsScaledIntoTheDestinationAndErrorsDrawNothing) {
    VF::VideoFrame frame(2, 1);
    const std::uint8_t red[] = {255, 0, 0, 255};
    const std::uint8_t blue[] = {0, 0, 255, 255};
    std::copy(std::begin(red), std::end(red), frame.GetRow(0));
    std::copy(std::begin(blue), std::end(blue), frame.GetRow(0) + 4);

    QImage target(100, 50, QImage::Format_ARGB32_Premultiplied);
    target.fill(Qt::white);
    {
        QPainter painter(&target);
        UIF::DC dc(std::make_unique<UIF::DC::Impl>(painter, target.rect()));
        UIF::VideoFrameBlit::BlitFrame(dc, frame, UIF::Rect::FromSize(10, 10, 40, 20));
        UIF::VideoFrameBlit::BlitFrame(dc, VF::VideoFrame::MakeError("clip.mov: no such file"),
                                       UIF::Rect::FromSize(60, 10, 30, 30));
    }
    EXPECT_EQ(target.pixelColor(12, 20), QColor(255, 0, 0));
    EXPECT_EQ(target.pixelColor(47, 20), QColor(0, 0, 255));
    EXPECT_EQ(target.pixelColor(5, 5), QColor(Qt::white));
    EXPECT_EQ(target.pixelColor(75, 25), QColor(Qt::white));
}

TEST(DecalTest, EveryNamedDecalIsDrawn) {
    const UIF::Bitmap audio = UIF::Bitmap::GetBitmap(UIF::kAudioLargeDecal);
    EXPECT_EQ(audio.GetWidth(), 64);
    EXPECT_EQ(audio.GetHeight(), 64);
    for (UIF::DecalID decal : {UIF::kCaptionJustifyLeftDecal, UIF::kCaptionJustifyCenterDecal,
                               UIF::kCaptionJustifyRightDecal, UIF::kCaptionBoldDecal,
                               UIF::kCaptionItalicizeDecal, UIF::kCaptionUnderlineDecal,
                               UIF::kCaptionMusicNoteDecal, UIF::kCaptionBackgroundColorDecal,
                               UIF::kCaptionTextColorDecal, UIF::kCaptionTextOutlineColorDecal}) {
        const UIF::Bitmap bitmap = UIF::Bitmap::GetBitmap(decal);
        ASSERT_FALSE(bitmap.IsNull()) << decal;
        EXPECT_EQ(bitmap.GetWidth(), 16) << decal;
    }
    EXPECT_TRUE(UIF::Bitmap::GetBitmap(static_cast<UIF::DecalID>(999)).IsNull());
}

TEST(DrawbotTest, MeasuresWithTheRealFontFaces) {
    auto drawbot = zelui::drawbot::Drawbot::CreateMeasuring();
    zelui::drawbot::FontSpec regular{u"DejaVu Sans", u"Book", 20.0f,
                                     zelui::drawbot::kFontStyle_Regular};
    zelui::drawbot::FontSpec bold = regular;
    bold.styleName = u"Bold";
    const auto plain = drawbot->MeasureString(u"Caption text", regular);
    const auto heavy = drawbot->MeasureString(u"Caption text", bold);
    const auto shorter = drawbot->MeasureString(u"Caption", regular);
    EXPECT_GT(plain.widthPixels, shorter.widthPixels);
    EXPECT_GT(heavy.widthPixels, plain.widthPixels);
    EXPECT_NEAR(plain.ascentPixels + plain.descentPixels, 20.0f * 1.16f, 3.0f);
    EXPECT_GE(plain.heightPixels, plain.ascentPixels + plain.descentPixels);

    zelui::drawbot::FontSpec doubled = regular;
    doubled.sizePixels = 40.0f;
    EXPECT_NEAR(drawbot->MeasureString(u"Caption text", doubled).widthPixels,
                2.0f * plain.widthPixels, 2.0f);
}

} // namespace
} // namespace platform_ui_test

// Thumbnails: the frame at each caption's begin, decoded by the media service,
// with open captions drawn over a copy of it.
#include "PanelTestSupport.h"

#include "KSL/StationUtils.h"
#include "ML/FrameService.h"
#include "ML/RenderFrameCompletionMessage.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Stations.h"
#include "VF/VideoFrameManipulators.h"

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using panel_test::PanelTest;

class ThumbnailTest : public PanelTest {
protected:
    bool FrameArrived(std::int32_t row) {
        return host_test::WaitUntil([&] {
            const auto& thumbnail = Rows().At(row)->GetThumbnail();
            return thumbnail.frame && thumbnail.requestID == 0;
        });
    }
};

TEST_F(ThumbnailTest, ARowShowsItsDecodedFrameOnceItArrives) {
    OpenDemoWithPanel();
    ASSERT_TRUE(FrameArrived(0));
    const VF::VideoFrameRef frame = Rows().At(0)->GetThumbnail().frame;
    EXPECT_FALSE(frame->IsError());
    EXPECT_EQ(frame->GetHeightPx(), 64);
    EXPECT_EQ(frame->GetWidthPx(), 114) << "16:9 at 64 pixels high";

    QApplication::processEvents();
    const QImage pane = PaneWidget().grab().toImage();
    // The generated source's first bar is a light grey; the placeholder is not.
    const QColor bar = pane.pixelColor(5 + 10, 6 + 20);
    EXPECT_NEAR(bar.red(), 191, 24);
    EXPECT_NEAR(bar.green(), 191, 24);
    EXPECT_NEAR(bar.blue(), 191, 24);

    // A completion the pane did not ask for changes nothing.
    const std::size_t before = ML::FrameService::GetStatistics().framesRendered;
    KSL::StationUtils::BroadcastMessage(
        ML::kStation_RenderFrameCompletion,
        ML::RenderFrameCompletionMessage(999999, VF::VideoFrameManipulators::CopyFrame(*frame),
                                         true));
    EXPECT_EQ(Rows().At(0)->GetThumbnail().frame, frame);
    // Painting again asks for nothing: the frame is kept by the row.
    PaneWidget().repaint();
    QApplication::processEvents();
    EXPECT_EQ(ML::FrameService::GetStatistics().framesRendered, before);
}

TEST_F(ThumbnailTest, OpenCaptionsAreDrawnOverACopyOfTheFrame) {
    OpenDemoWithPanel();
    const auto clip = Clip(host_test::kCaptionedClip);
    const auto open = clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions);
    KSL::StationUtils::BroadcastMessage(
        MZ::kStation_ClosedCaptionsActivation,
        MZ::CaptioningTrackItemOpenedMessage({clip, open, Sequence(host_test::kDemoSequence)}));
    ASSERT_EQ(Pane().GetStream(), open);
    EXPECT_TRUE(View().IsOpenCaptions());
    EXPECT_EQ(View().GetToolbarHeight(), 85);
    ASSERT_TRUE(FrameArrived(0));
    PaneWidget().repaint();
    QApplication::processEvents();

    const auto& thumbnail = Rows().At(0)->GetThumbnail();
    ASSERT_TRUE(thumbnail.composed);
    bool differs = false;
    for (int y = 0; y < thumbnail.frame->GetHeightPx() && !differs; ++y) {
        differs = std::memcmp(thumbnail.frame->GetRow(y), thumbnail.composed->GetRow(y),
                              static_cast<std::size_t>(thumbnail.frame->GetWidthPx()) * 4) != 0;
    }
    EXPECT_TRUE(differs) << "the caption is drawn on the copy";
}

} // namespace

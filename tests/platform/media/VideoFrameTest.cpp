#include "VF/VideoFrame.h"
#include "VF/VideoFrameManipulators.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(VideoFrameTest, NewFrameIsOpaqueBlackWithPaddedRows) {
    const VF::VideoFrame frame(33, 5);
    EXPECT_GE(frame.GetStrideBytes(), 33 * 4);
    EXPECT_EQ(frame.GetStrideBytes() % 64, 0);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 33; ++x) {
            const std::uint8_t* pixel = frame.GetRow(y) + 4 * x;
            ASSERT_EQ(pixel[0] | pixel[1] | pixel[2], 0);
            ASSERT_EQ(pixel[3], 255);
        }
    }
    EXPECT_THROW(VF::VideoFrame(-1, 5), std::invalid_argument);
    EXPECT_THROW(VF::VideoFrame(5, VF::VideoFrame::kMaxDimensionPx + 1), std::invalid_argument);
}

TEST(VideoFrameTest, CopyFrameIsDeepSoTheOriginalStaysAsItWas) {
    VF::VideoFrame original(8, 4);
    original.SetTime(zelmediatypes::TickTime(1234));
    original.SetAccuracy(VF::FrameAccuracy::kKeyframe);
    original.GetRow(2)[4 * 3] = 77;

    const VF::MutableVideoFrameRef copy = VF::VideoFrameManipulators::CopyFrame(original);
    copy->GetRow(2)[4 * 3] = 200;
    copy->GetRow(0)[0] = 9;

    EXPECT_EQ(original.GetRow(2)[4 * 3], 77);
    EXPECT_EQ(original.GetRow(0)[0], 0);
    EXPECT_NE(copy->GetPixels(), original.GetPixels());
    EXPECT_EQ(copy->GetTime(), original.GetTime());
    EXPECT_EQ(copy->GetAccuracy(), VF::FrameAccuracy::kKeyframe);
    EXPECT_EQ(copy->GetStrideBytes(), original.GetStrideBytes());

    const VF::VideoFrame error = VF::VideoFrame::MakeError("Media file 'x.mp4' cannot be opened");
    const VF::MutableVideoFrameRef errorCopy = VF::VideoFrameManipulators::CopyFrame(error);
    EXPECT_TRUE(errorCopy->IsError());
    EXPECT_TRUE(errorCopy->IsEmpty());
    EXPECT_EQ(errorCopy->GetErrorText(), error.GetErrorText());
}

} // namespace

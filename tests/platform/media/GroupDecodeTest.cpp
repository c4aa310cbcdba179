// Decoding backwards a group of pictures at a time: the frames of the times asked for, newest
// first, from one keyframe, within the count asked for; and the seek to the group of a frame,
// in files with and without B-frames (which store a keyframe before the frames shown ahead
// of it).
#include "MediaDecoder.h"
#include "MediaTestSupport.h"
#include "TestClipWriter.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace media_test {
namespace {

using platform::media::MediaDecoder;
using zelmediatypes::TickTime;

constexpr int kGroupClipFrames = 40;
constexpr int kGroupClipKeyframeInterval = 6; // keyframes at 0, 6, 12, 18, ...

// The middle of frame i, as the player asks for it.
TickTime Middle(int frameIndex) {
    return TickTime(frameIndex * kTicksPerFrame + kTicksPerFrame / 2);
}

std::vector<int> Indices(const std::vector<VF::VideoFrame>& frames) {
    std::vector<int> indices;
    for (const VF::VideoFrame& frame : frames) {
        const int index = ReadFrameIndex(frame);
        EXPECT_EQ(frame.GetTime(), TickTime(index * kTicksPerFrame)) << "frame " << index;
        indices.push_back(index);
    }
    return indices;
}

// The parameter is the clip's count of B-frames between reference pictures.
class GroupDecodeTest : public testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite() { folder_ = std::make_unique<TempFolder>(); }
    static void TearDownTestSuite() { folder_.reset(); }

    void SetUp() override {
        const std::string path = folder_->PathOf("groups-" + std::to_string(GetParam()) + ".mp4");
        ClipSpec spec;
        spec.frameCount = kGroupClipFrames;
        spec.keyframeIntervalFrames = kGroupClipKeyframeInterval;
        spec.maxBFrames = GetParam();
        WriteClip(path, spec, PaintFrameIndex);
        // Two threads, as playback decodes: the decoder reads pictures ahead.
        decoder = std::make_unique<MediaDecoder>(path, 2);
    }

    std::vector<int> Group(int lastFrame, int stepFrames, std::size_t maxFrames) {
        return Indices(decoder->DecodeGroupBackward(
            Middle(lastFrame), TickTime(stepFrames * kTicksPerFrame), maxFrames, {}, {}));
    }

    static inline std::unique_ptr<TempFolder> folder_;
    std::unique_ptr<MediaDecoder> decoder;
};

TEST_P(GroupDecodeTest, StepsBackOneGroupOfPicturesAtATime) {
    // From the middle of a group back to its keyframe, then whole groups.
    EXPECT_EQ(Group(20, 1, 100), (std::vector<int>{20, 19, 18}));
    EXPECT_EQ(Group(17, 1, 100), (std::vector<int>{17, 16, 15, 14, 13, 12}));
    EXPECT_EQ(Group(11, 1, 100), (std::vector<int>{11, 10, 9, 8, 7, 6}));
    EXPECT_EQ(Group(5, 1, 100), (std::vector<int>{5, 4, 3, 2, 1, 0}));
}

TEST_P(GroupDecodeTest, AFreshDecoderFindsTheGroupOfTheFrameJustBeforeAKeyframe) {
    // With B-frames the keyframe of 18 is stored before frame 17 is shown: seeking by
    // decoding time lands on it, and the decoder must look further back.
    EXPECT_EQ(Group(17, 1, 100), (std::vector<int>{17, 16, 15, 14, 13, 12}));
}

TEST_P(GroupDecodeTest, HoldsNoMoreThanTheCountAskedForAndStridesBySteps) {
    EXPECT_EQ(Group(17, 1, 4), (std::vector<int>{17, 16, 15, 14}));
    EXPECT_EQ(Group(13, 1, 4), (std::vector<int>{13, 12}));
    EXPECT_EQ(Group(23, 2, 100), (std::vector<int>{23, 21, 19}));
    EXPECT_EQ(Group(17, 2, 100), (std::vector<int>{17, 15, 13}));
    EXPECT_EQ(Group(11, 4, 100), (std::vector<int>{11, 7}));
    // A step longer than a group: one frame a group.
    EXPECT_EQ(Group(39, 8, 100), (std::vector<int>{39}));
    EXPECT_EQ(Group(31, 8, 100), (std::vector<int>{31}));
}

TEST_P(GroupDecodeTest, TheFirstFrameAndTheLastEndTheGroups) {
    EXPECT_EQ(Group(0, 1, 100), (std::vector<int>{0}));
    EXPECT_EQ(Group(kGroupClipFrames - 1, 1, 100), (std::vector<int>{39, 38, 37, 36}));
    // Frames sized on the way, as the player shows them.
    const std::vector<VF::VideoFrame> small =
        decoder->DecodeGroupBackward(Middle(8), TickTime(kTicksPerFrame), 100, {160, 90}, {});
    ASSERT_EQ(small.size(), 3U);
    EXPECT_EQ(small[0].GetWidthPx(), 160);
    EXPECT_EQ(ReadFrameIndex(small[2]), 6);
}

TEST_P(GroupDecodeTest, AFrameAskedForAloneIsFoundTheSameWay) {
    // Each from a fresh decoder, which seeks; the keyframe is previewed only when it is not
    // the frame asked for.
    for (const int index : {17, 11, 23, 18, 0}) {
        MediaDecoder fresh(decoder->GetPath());
        std::vector<int> previews;
        const VF::VideoFrame frame = fresh.DecodeFrame(
            Middle(index), {},
            [&](VF::VideoFrame preview) { previews.push_back(ReadFrameIndex(preview)); }, {});
        EXPECT_EQ(ReadFrameIndex(frame), index);
        const int keyframe = index / kGroupClipKeyframeInterval * kGroupClipKeyframeInterval;
        EXPECT_EQ(previews, keyframe == index ? std::vector<int>{} : std::vector<int>{keyframe})
            << "frame " << index;
    }
}

INSTANTIATE_TEST_SUITE_P(BFrames, GroupDecodeTest, testing::Values(0, 2),
                         [](const testing::TestParamInfo<int>& param) {
                             return std::to_string(param.param) + "BFrames";
                         });

} // namespace
} // namespace media_test

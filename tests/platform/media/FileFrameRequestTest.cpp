#include "KSL/StationUtils.h"
#include "ML/FrameService.h"
#include "ML/RenderFrameCompletionMessage.h"
#include "MediaTestSupport.h"
#include "TestClipWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace media_test {
namespace {

using zelmediatypes::TickTime;

constexpr int kClipWidthPx = 320;
constexpr int kClipHeightPx = 180;
constexpr int kRequestClipFrames = 75;           // 3 s at 25 fps
constexpr int kRequestClipKeyframeInterval = 12; // keyframes at 0, 12, 24, ...

TickTime FrameTime(int frameIndex) {
    return TickTime(frameIndex * kTicksPerFrame);
}

// A 3-second 25 fps clip whose frame i shows the stripe pattern of i, written once for all.
class FileFrameRequestTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = std::make_unique<TempFolder>();
        clipPath_ = folder_->PathOf("stripes.mp4");
        ClipSpec spec;
        spec.widthPx = kClipWidthPx;
        spec.heightPx = kClipHeightPx;
        spec.frameCount = kRequestClipFrames;
        spec.keyframeIntervalFrames = kRequestClipKeyframeInterval;
        WriteClip(clipPath_, spec, PaintFrameIndex);
    }
    static void TearDownTestSuite() { folder_.reset(); }

    void SetUp() override { ML::FrameService::Start({.workerThreadCount = 2}); }

    static BE::MasterClipSettings Clip(const std::string& path = clipPath_) {
        return FileClip(path, kClipWidthPx, kClipHeightPx, zelmediatypes::kFrameRate_25,
                        FrameTime(kRequestClipFrames));
    }

    // Asks for the frame at `time` and waits for its final message.
    VF::VideoFrameRef FrameAt(TickTime time, ML::FrameSize size = {},
                              const BE::MasterClipSettings& clip = Clip()) {
        const ML::RequestID id =
            ML::FrameService::RequestFrame(clip, time, size, ML::Refinement::kExactOnly);
        collector_.WaitFor({id});
        return collector_.FinalFrame(id);
    }

    std::string CopyOfClipWith(const std::string& name,
                               const std::function<void(std::vector<char>&)>& change) {
        std::ifstream in(clipPath_, std::ios::binary);
        std::vector<char> bytes((std::istreambuf_iterator<char>(in)), {});
        change(bytes);
        const std::string path = folder_->PathOf(name);
        std::ofstream(path, std::ios::binary).write(bytes.data(), std::ssize(bytes));
        return path;
    }

    static inline std::unique_ptr<TempFolder> folder_;
    static inline std::string clipPath_;
    CompletionCollector collector_;
};

TEST_F(FileFrameRequestTest, DeliversTheFrameWhoseIntervalHoldsTheTime) {
    // Forward, backward, within one group of pictures and across groups, as scrolling does.
    const std::vector<std::pair<TickTime, int>> timesAndFrames = {
        {FrameTime(30), 30},
        {FrameTime(0), 0},
        {FrameTime(13) + TickTime(kTicksPerFrame / 2), 13},
        {FrameTime(12) - TickTime(1), 11},
        {FrameTime(12), 12},
        {FrameTime(50), 50},
        {FrameTime(51), 51},
        {FrameTime(53), 53},
        {FrameTime(5), 5},
        {FrameTime(74), 74},
    };
    for (const auto& [time, expectedIndex] : timesAndFrames) {
        const VF::VideoFrameRef frame = FrameAt(time);
        ASSERT_TRUE(frame);
        EXPECT_FALSE(frame->IsError()) << frame->GetErrorText();
        EXPECT_EQ(ReadFrameIndex(*frame), expectedIndex) << "at " << time;
        EXPECT_EQ(frame->GetTime(), FrameTime(expectedIndex));
        EXPECT_EQ(frame->GetAccuracy(), VF::FrameAccuracy::kExact);
        EXPECT_EQ(frame->GetWidthPx(), kClipWidthPx);
        EXPECT_EQ(frame->GetHeightPx(), kClipHeightPx);
    }
}

TEST_F(FileFrameRequestTest, TimesOutsideTheClipGetItsFirstOrLastFrame) {
    EXPECT_EQ(ReadFrameIndex(*FrameAt(TickTime::FromSeconds(-5))), 0);
    EXPECT_EQ(ReadFrameIndex(*FrameAt(TickTime::FromSeconds(60))), kRequestClipFrames - 1);
}

TEST_F(FileFrameRequestTest, RandomTimesScaledToAThumbnail) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> anyFrame(0, kRequestClipFrames - 1);
    for (int i = 0; i < 12; ++i) {
        const int frameIndex = anyFrame(random);
        const VF::VideoFrameRef frame = FrameAt(FrameTime(frameIndex), {64, 36});
        ASSERT_EQ(frame->GetWidthPx(), 64);
        ASSERT_EQ(frame->GetHeightPx(), 36);
        EXPECT_EQ(ReadFrameIndex(*frame), frameIndex);
    }
}

TEST_F(FileFrameRequestTest, KeyframeFirstPreviewsTheKeyframeThenRefines) {
    const ML::RequestID midGroup = ML::FrameService::RequestFrame(Clip(), FrameTime(30), {80, 45},
                                                                  ML::Refinement::kKeyframeFirst);
    const std::vector<Completion> messages = collector_.WaitFor({midGroup});
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_FALSE(messages[0].isFinal);
    EXPECT_EQ(messages[0].frame->GetAccuracy(), VF::FrameAccuracy::kKeyframe);
    EXPECT_EQ(ReadFrameIndex(*messages[0].frame), 24);
    EXPECT_EQ(messages[0].frame->GetTime(), FrameTime(24));
    EXPECT_TRUE(messages[1].isFinal);
    EXPECT_EQ(messages[1].frame->GetAccuracy(), VF::FrameAccuracy::kExact);
    EXPECT_EQ(ReadFrameIndex(*messages[1].frame), 30);

    // A keyframe is itself exact; no preview comes first.
    const ML::RequestID atKeyframe = ML::FrameService::RequestFrame(Clip(), FrameTime(48), {80, 45},
                                                                    ML::Refinement::kKeyframeFirst);
    const std::vector<Completion> keyframeMessages = collector_.WaitFor({atKeyframe});
    ASSERT_EQ(keyframeMessages.size(), 1u);
    EXPECT_EQ(ReadFrameIndex(*keyframeMessages[0].frame), 48);

    // Just after the last frame decoded, decoding goes on from there: nothing to preview.
    const ML::RequestID decodeOn = ML::FrameService::RequestFrame(Clip(), FrameTime(52), {80, 45},
                                                                  ML::Refinement::kKeyframeFirst);
    const std::vector<Completion> decodeOnMessages = collector_.WaitFor({decodeOn});
    ASSERT_EQ(decodeOnMessages.size(), 1u);
    EXPECT_EQ(ReadFrameIndex(*decodeOnMessages[0].frame), 52);
}

TEST_F(FileFrameRequestTest, RepeatedRequestsAreAnsweredFromTheCache) {
    const VF::VideoFrameRef first = FrameAt(FrameTime(20), {80, 45});
    const ML::FrameServiceStatistics afterFirst = ML::FrameService::GetStatistics();
    EXPECT_EQ(afterFirst.framesRendered, 1u);
    EXPECT_EQ(afterFirst.cachedFrameCount, 1u);

    // The same frame again, and a later time inside the same frame: the very same picture.
    EXPECT_EQ(FrameAt(FrameTime(20), {80, 45}), first);
    EXPECT_EQ(FrameAt(FrameTime(20) + TickTime(kTicksPerFrame - 1), {80, 45}), first);
    const ML::FrameServiceStatistics afterRepeats = ML::FrameService::GetStatistics();
    EXPECT_EQ(afterRepeats.framesRendered, 1u);
    EXPECT_EQ(afterRepeats.cacheHits, afterFirst.cacheHits + 2);

    // Another size is another picture.
    const VF::VideoFrameRef larger = FrameAt(FrameTime(20), {160, 90});
    EXPECT_NE(larger, first);
    EXPECT_EQ(ReadFrameIndex(*larger), 20);
    EXPECT_EQ(ML::FrameService::GetStatistics().framesRendered, 2u);
}

TEST_F(FileFrameRequestTest, EachCompletionCarriesTheIdOfItsRequest) {
    const std::vector<int> frameIndices = {40, 3, 66, 25, 9, 58, 31, 17};
    std::vector<ML::RequestID> ids;
    for (int frameIndex : frameIndices) {
        ids.push_back(ML::FrameService::RequestFrame(Clip(), FrameTime(frameIndex), {64, 36},
                                                     ML::Refinement::kKeyframeFirst));
    }
    collector_.WaitFor(ids);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        EXPECT_NE(ids[i], 0u);
        EXPECT_EQ(std::count(ids.begin(), ids.end(), ids[i]), 1);
        EXPECT_EQ(ReadFrameIndex(*collector_.FinalFrame(ids[i])), frameIndices[i]);
    }
}

TEST_F(FileFrameRequestTest, CancelledRequestsAreNotDecodedOrDeliveredAfterTheCancel) {
    std::vector<ML::RequestID> cancelled;
    for (int frameIndex = 1; frameIndex < kRequestClipFrames; ++frameIndex) {
        cancelled.push_back(ML::FrameService::RequestFrame(Clip(), FrameTime(frameIndex), {},
                                                           ML::Refinement::kKeyframeFirst));
    }
    for (ML::RequestID id : cancelled) {
        ML::FrameService::CancelRequest(id);
    }
    // Posted events arrive in order: whatever a worker posts after the cancels comes later.
    KSL::StationUtils::PostMessageToUIThread(ML::kStation_RenderFrameCompletion,
                                             std::make_shared<MarkerMessage>(), false);
    const ML::RequestID kept =
        ML::FrameService::RequestFrame(Clip(), FrameTime(70), {64, 36}, ML::Refinement::kExactOnly);
    collector_.WaitFor({kept});
    EXPECT_EQ(ReadFrameIndex(*collector_.FinalFrame(kept)), 70);

    ASSERT_TRUE(collector_.markerIndex.has_value());
    for (std::size_t i = *collector_.markerIndex; i < collector_.received.size(); ++i) {
        EXPECT_EQ(std::count(cancelled.begin(), cancelled.end(), collector_.received[i].requestID),
                  0)
            << "request " << collector_.received[i].requestID << " delivered after its cancel";
    }
    EXPECT_LT(ML::FrameService::GetStatistics().framesRendered, cancelled.size() / 2);
}

TEST_F(FileFrameRequestTest, MissingFileGivesAnErrorFrameNamingTheFile) {
    const std::string missing = folder_->PathOf("no-such-clip.mp4");
    const VF::VideoFrameRef frame = FrameAt(FrameTime(3), {64, 36}, Clip(missing));
    ASSERT_TRUE(frame->IsError());
    EXPECT_TRUE(frame->IsEmpty());
    EXPECT_NE(frame->GetErrorText().find(missing), std::string::npos) << frame->GetErrorText();
    EXPECT_NE(frame->GetErrorText().find("No such file"), std::string::npos)
        << frame->GetErrorText();
}

TEST_F(FileFrameRequestTest, UnreadableFilesGiveErrorFramesAndTheServiceGoesOn) {
    const std::string garbage = CopyOfClipWith("garbage.mp4", [](std::vector<char>& bytes) {
        std::mt19937 random(3);
        for (char& byte : bytes) {
            byte = static_cast<char>(random());
        }
    });
    const std::string truncated = CopyOfClipWith(
        "truncated.mp4", [](std::vector<char>& bytes) { bytes.resize(bytes.size() / 2); });
    const std::string empty =
        CopyOfClipWith("empty.mp4", [](std::vector<char>& bytes) { bytes.clear(); });
    for (const std::string& path : {garbage, truncated, empty}) {
        const VF::VideoFrameRef frame = FrameAt(FrameTime(10), {64, 36}, Clip(path));
        ASSERT_TRUE(frame->IsError()) << path;
        EXPECT_NE(frame->GetErrorText().find(path), std::string::npos) << frame->GetErrorText();
    }
    EXPECT_EQ(ReadFrameIndex(*FrameAt(FrameTime(10), {64, 36})), 10);
}

TEST_F(FileFrameRequestTest, DamagedPicturesDoNotStopDecoding) {
    // Garbage over the middle of the file hits picture data, not the index at its end.
    const std::string damaged = CopyOfClipWith("damaged.mp4", [](std::vector<char>& bytes) {
        std::mt19937 random(5);
        for (std::size_t i = bytes.size() * 2 / 5; i < bytes.size() * 3 / 5; ++i) {
            bytes[i] = static_cast<char>(random());
        }
    });
    std::vector<ML::RequestID> ids;
    for (int frameIndex = 0; frameIndex < kRequestClipFrames; frameIndex += 7) {
        ids.push_back(ML::FrameService::RequestFrame(Clip(damaged), FrameTime(frameIndex), {64, 36},
                                                     ML::Refinement::kKeyframeFirst));
    }
    collector_.WaitFor(ids);
    // The first group of pictures lies before the damage.
    EXPECT_EQ(ReadFrameIndex(*collector_.FinalFrame(ids.front())), 0);
}

} // namespace
} // namespace media_test

// Real-time playback: frames shown against the audio clock, sound lined up with the pictures,
// late frames dropped, and the system clock at other speeds.
#include "ML/MediaPlayer.h"
#include "CapturingAudioOutput.h"
#include "KSL/Exception.h"
#include "MediaTestSupport.h"
#include "TestClipWriter.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace media_test {
namespace {

using zelmediatypes::TickTime;

constexpr int kPlayerClipFrames = 50; // 2 s at 25 fps
constexpr int kSampleRateHz = 48000;
constexpr std::int64_t kSamplesPerFrame = kSampleRateHz / 25;
const std::vector<int> kBeepFrames = {10, 31, 44};

// Polls the player like the UI does until `accept` takes a frame (5 s at most); returns it.
VF::VideoFrameRef TakeFrameWhere(ML::MediaPlayer& player,
                                 const std::function<bool(const VF::VideoFrame&)>& accept) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (std::chrono::steady_clock::now() < deadline) {
        if (VF::VideoFrameRef frame = player.TakeDueFrame(); frame && accept(*frame)) {
            return frame;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return nullptr;
}

bool WaitForWritten(const CapturingAudioOutput& output, std::int64_t frameCount) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (output.GetWrittenFrameCount() < frameCount) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

// A 25 fps clip whose frame i shows the stripe pattern of i, with beeps on known frames.
class MediaPlayerTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = std::make_unique<TempFolder>();
        path_ = folder_->PathOf("beeps.mov");
        ClipSpec spec;
        spec.frameCount = kPlayerClipFrames;
        spec.audioSampleRateHz = kSampleRateHz;
        spec.beepFrames = kBeepFrames;
        WriteClip(path_, spec, PaintFrameIndex);
    }
    static void TearDownTestSuite() { folder_.reset(); }

    BE::MasterClipSettings Clip() const {
        return FileClip(path_, 320, 180, zelmediatypes::kFrameRate_25,
                        TickTime(kPlayerClipFrames * kTicksPerFrame));
    }

    CapturingAudioOutput* output = new CapturingAudioOutput;
    ML::MediaPlayer player{std::unique_ptr<ML::AudioOutput>(output)};

    static std::unique_ptr<TempFolder> folder_;
    static std::string path_;
};

std::unique_ptr<TempFolder> MediaPlayerTest::folder_;
std::string MediaPlayerTest::path_;

TEST_F(MediaPlayerTest, ShowsTheFrameOfTheAudioClockAndTheBeepsSoundOnTheirFrames) {
    player.Play(Clip(), TickTime(), 1, {});
    // The clock waits for the first frame, which is due at once.
    const VF::VideoFrameRef first = TakeFrameWhere(player, [](auto&) { return true; });
    ASSERT_TRUE(first);
    EXPECT_EQ(ReadFrameIndex(*first), 0);
    EXPECT_EQ(player.GetClockTime(), TickTime());

    // The device plays on in steps of 3/4 of a frame; each step shows the clock's frame.
    for (std::int64_t heard = 0; heard < 46 * kSamplesPerFrame;) {
        const std::int64_t step = output->Hear(kSamplesPerFrame * 3 / 4);
        if (step == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // the writer catches up
            continue;
        }
        const int previousFrame = static_cast<int>(heard / kSamplesPerFrame);
        heard += step;
        const int frameNow = static_cast<int>(heard / kSamplesPerFrame);
        ASSERT_EQ(player.GetClockTime(),
                  TickTime(heard * zelmediatypes::kTicksPerSecond / kSampleRateHz));
        if (frameNow != previousFrame) {
            const VF::VideoFrameRef shown = TakeFrameWhere(player, [](auto&) { return true; });
            ASSERT_TRUE(shown) << "no frame at sample " << heard;
            EXPECT_EQ(ReadFrameIndex(*shown), frameNow) << "at sample " << heard;
            EXPECT_EQ(shown->GetTime(), TickTime(frameNow * kTicksPerFrame));
        }
    }
    EXPECT_EQ(player.GetStatistics().framesDropped, 0U);

    // The sound written is the file's, from the start: each beep begins on its frame's first
    // sample (the 1 kHz tone is resampled, so within a tenth of a millisecond).
    ASSERT_EQ(output->GetFormat(), ML::AudioFormat());
    const std::vector<std::size_t> onsets =
        FindSoundOnsets(output->GetSamples(), output->GetFormat().channelCount, 480);
    ASSERT_EQ(onsets.size(), kBeepFrames.size());
    for (std::size_t i = 0; i < onsets.size(); ++i) {
        const auto expected = static_cast<double>(kBeepFrames[i] * kSamplesPerFrame);
        EXPECT_NEAR(static_cast<double>(onsets[i]), expected, 5) << "beep " << i;
    }
}

TEST_F(MediaPlayerTest, StartsMidClipWithTheSoundOfThatTimeAndDropsFramesThatCameLate) {
    player.Play(Clip(), TickTime(30 * kTicksPerFrame), 1, {});
    const VF::VideoFrameRef first = TakeFrameWhere(player, [](auto&) { return true; });
    ASSERT_TRUE(first);
    EXPECT_EQ(ReadFrameIndex(*first), 30);
    // The beep of frame 31 is one frame into the sound.
    ASSERT_TRUE(WaitForWritten(*output, 2 * kSamplesPerFrame));
    const std::vector<std::size_t> onsets =
        FindSoundOnsets(output->GetSamples(), output->GetFormat().channelCount, 480);
    ASSERT_FALSE(onsets.empty());
    EXPECT_NEAR(static_cast<double>(onsets[0]), static_cast<double>(kSamplesPerFrame), 5);

    // The device races ahead by four frames at once, once the decoder has filled its queue:
    // the frames in between are dropped.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    for (std::int64_t heard = 0; heard < 4 * kSamplesPerFrame;) {
        heard += output->Hear(4 * kSamplesPerFrame - heard);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    const VF::VideoFrameRef late = TakeFrameWhere(
        player, [](const VF::VideoFrame& frame) { return ReadFrameIndex(frame) == 34; });
    ASSERT_TRUE(late);
    EXPECT_EQ(player.GetStatistics().framesShown, 2U);
    EXPECT_EQ(player.GetStatistics().framesDropped, 3U);
}

TEST_F(MediaPlayerTest, OtherSpeedsRunSilentlyByTheSystemClockBothWays) {
    player.Play(Clip(), TickTime(40 * kTicksPerFrame), -2, {});
    std::vector<int> shown;
    while (shown.size() < 4) {
        const VF::VideoFrameRef frame = TakeFrameWhere(player, [](auto&) { return true; });
        ASSERT_TRUE(frame);
        shown.push_back(ReadFrameIndex(*frame));
    }
    EXPECT_EQ(shown.front(), 40);
    for (std::size_t i = 1; i < shown.size(); ++i) {
        EXPECT_LT(shown[i], shown[i - 1]); // backwards, two frames a step or more when late
        EXPECT_EQ((shown[i - 1] - shown[i]) % 2, 0);
    }
    EXPECT_LT(player.GetClockTime(), TickTime(40 * kTicksPerFrame));
    EXPECT_EQ(output->GetOpenCount(), 0);

    player.Play(Clip(), TickTime(46 * kTicksPerFrame), 4, {});
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!player.HasReachedEnd() && std::chrono::steady_clock::now() < deadline) {
        player.TakeDueFrame();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_TRUE(player.HasReachedEnd());
    player.Stop();
    EXPECT_FALSE(player.IsPlaying());
    EXPECT_EQ(player.GetSpeed(), 0);
}

TEST_F(MediaPlayerTest, PlaysAFileBackwardsFrameByFrameAcrossGroupsOfPictures) {
    // Keyframes every 6 frames, stored ahead of the B-frames shown before them.
    const std::string path = folder_->PathOf("short-groups.mp4");
    ClipSpec spec;
    spec.frameCount = 30;
    spec.keyframeIntervalFrames = 6;
    spec.maxBFrames = 2;
    WriteClip(path, spec, PaintFrameIndex);
    const BE::MasterClipSettings clip =
        FileClip(path, 320, 180, zelmediatypes::kFrameRate_25, TickTime(30 * kTicksPerFrame));

    // From the middle of a group, through three keyframes, to the first frame.
    player.Play(clip, TickTime(20 * kTicksPerFrame), -1, {160, 90});
    std::vector<int> shown;
    while (shown.empty() || shown.back() > 0) {
        const VF::VideoFrameRef frame = TakeFrameWhere(player, [](auto&) { return true; });
        ASSERT_TRUE(frame) << "after frame " << (shown.empty() ? -1 : shown.back());
        const int index = ReadFrameIndex(*frame);
        EXPECT_EQ(frame->GetTime(), TickTime(index * kTicksPerFrame));
        EXPECT_EQ(frame->GetWidthPx(), 160);
        if (!shown.empty()) {
            EXPECT_LT(index, shown.back());
        }
        shown.push_back(index);
    }
    EXPECT_EQ(shown.front(), 20);
    // Every frame was decoded and queued in its turn: shown, or dropped when it came late.
    const ML::PlaybackStatistics statistics = player.GetStatistics();
    EXPECT_EQ(statistics.framesShown, shown.size());
    EXPECT_EQ(statistics.framesShown + statistics.framesDropped, 21U);
    EXPECT_EQ(output->GetOpenCount(), 0);
}

TEST_F(MediaPlayerTest, AGeneratedSourcePlaysSilenceAtItsFrameRate) {
    const BE::MasterClipSettings clip =
        GeneratedClip(160, 90, zelmediatypes::kFrameRate_25, TickTime::FromSeconds(10));
    player.Play(clip, TickTime(), 1, {});
    ASSERT_TRUE(TakeFrameWhere(player, [](auto&) { return true; }));
    for (std::int64_t heard = 0; heard < kSampleRateHz;) {
        heard += output->Hear(kSampleRateHz - heard);
        std::this_thread::yield();
    }
    // The frames queued before the jump are dropped on the way to the one of that second.
    const VF::VideoFrameRef second = TakeFrameWhere(player, [](const VF::VideoFrame& frame) {
        return frame.GetTime() >= TickTime::FromSeconds(1);
    });
    ASSERT_TRUE(second);
    EXPECT_EQ(second->GetTime(), TickTime::FromSeconds(1));
    EXPECT_EQ(second->GetWidthPx(), 160);
    const std::vector<float> samples = output->GetSamples();
    EXPECT_GE(samples.size(), static_cast<std::size_t>(2 * kSampleRateHz));
    EXPECT_TRUE(FindSoundOnsets(samples, 2, 1).empty());
}

TEST_F(MediaPlayerTest, AnUnreadableFileGivesAnErrorFrameAndBadArgumentsAreRefused) {
    BE::MasterClipSettings clip = Clip();
    clip.media.filePathUtf8 = folder_->PathOf("missing.mov");
    player.Play(clip, TickTime(), 1, {});
    const VF::VideoFrameRef frame = TakeFrameWhere(player, [](auto&) { return true; });
    ASSERT_TRUE(frame);
    EXPECT_TRUE(frame->IsError());
    EXPECT_NE(frame->GetErrorText().find("missing.mov"), std::string::npos);

    EXPECT_THROW(player.Play(Clip(), TickTime(), 0, {}), KSL::Exception);
    EXPECT_THROW(player.Play(Clip(), TickTime(), 1, {320, 0}), KSL::Exception);
}

} // namespace
} // namespace media_test

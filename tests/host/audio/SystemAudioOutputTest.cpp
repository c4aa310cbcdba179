// The host's sound output played into a PulseAudio null sink, which consumes sound at the pace
// of real time: the played count it reports is the clock of playback, so that clock must run
// at real speed, stop where the sound stops, start again from where playback resumes, and
// keep the frame shown within a frame of the sound heard.
#include "ML/MediaPlayer.h"
#include "NullSinkServer.h"
#include "QtAudioOutput.h"
#include "TestClipWriter.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using zelmediatypes::TickTime;

constexpr int kFramesPerSecond = 25;
constexpr int kFrameCount = 4 * kFramesPerSecond;
constexpr std::int64_t kTicksPerFrame = zelmediatypes::kTicksPerSecond / kFramesPerSecond;
// How far the clock may stray from the wall clock over a stretch of playback: the sink's
// buffer is a tenth of a second, and the count of what it holds is read between its periods.
constexpr double kClockToleranceSeconds = 0.05;

double Seconds(TickTime time) {
    return static_cast<double>(time.GetTicks()) / zelmediatypes::kTicksPerSecond;
}

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Runs the event loop, which feeds the sink, for `seconds`, calling `each` every 2 ms.
void PumpFor(double seconds, const std::function<void()>& each = {}) {
    const Clock::time_point start = Clock::now();
    while (SecondsSince(start) < seconds) {
        QCoreApplication::processEvents();
        if (each) {
            each();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

// The host's output, remembering whether it opened.
class WatchedOutput : public ML::AudioOutput {
public:
    bool Open(const ML::AudioFormat& format) override {
        opened = output_->Open(format);
        return opened;
    }
    std::size_t Write(const float* samples, std::size_t frameCount) override {
        return output_->Write(samples, frameCount);
    }
    std::int64_t GetPlayedFrameCount() const override { return output_->GetPlayedFrameCount(); }
    void Close() override { output_->Close(); }

    bool opened = false;

private:
    std::unique_ptr<ML::AudioOutput> output_ = host::MakeSystemAudioOutput();
};

class SystemAudioOutputTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        server_ = std::make_unique<host_audio_test::NullSinkServer>();
        folder_ = std::make_unique<QTemporaryDir>();
        media_test::ClipSpec spec;
        spec.frameCount = kFrameCount;
        spec.audioSampleRateHz = 48000;
        spec.beepFrames = {10, 40, 70};
        media_test::WriteClip(ClipPath(), spec, media_test::PaintFrameIndex);
    }
    static void TearDownTestSuite() {
        folder_.reset();
        server_.reset();
    }

    void SetUp() override {
        if (!server_->IsRunning()) {
            GTEST_SKIP() << "No PulseAudio null sink to play into (" << server_->Problem()
                         << "); the bootstrap script installs pulseaudio";
        }
    }

    static std::string ClipPath() { return folder_->filePath("beeps.mov").toStdString(); }

    static BE::MasterClipSettings Clip() {
        return {.name = {},
                .kind = BE::MasterClipKind::kSingle,
                .media = {BE::MediaSource::Kind::kFile, ClipPath()},
                .frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, 320, 180),
                .frameRate = zelmediatypes::kFrameRate_25,
                .pixelAspectRatio = {1, 1},
                .duration = TickTime(kFrameCount * kTicksPerFrame)};
    }

    // Plays from `from` until the first frame is shown; false when none came within 5 s.
    bool StartAt(TickTime from) {
        player.Play(Clip(), from, 1, {160, 90});
        const Clock::time_point start = Clock::now();
        while (SecondsSince(start) < 5) {
            QCoreApplication::processEvents();
            if (VF::VideoFrameRef frame = player.TakeDueFrame()) {
                EXPECT_EQ(frame->GetTime(), from);
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }

    // Plays on for `seconds`, checking that every frame shown is within a frame of the sound
    // the sink reports heard; returns the wall time passed and the time the clock covered.
    std::pair<double, double> PlayOnFor(double seconds) {
        const TickTime clockBefore = player.GetClockTime();
        const Clock::time_point start = Clock::now();
        PumpFor(seconds, [&] {
            // The clock moves on while the frame is taken: it is read on both sides.
            const TickTime clockBeforeTaking = player.GetClockTime();
            if (VF::VideoFrameRef frame = player.TakeDueFrame()) {
                const TickTime frameTime = frame->GetTime();
                EXPECT_LE(frameTime, player.GetClockTime()) << "frame at " << Seconds(frameTime);
                EXPECT_LT(clockBeforeTaking - frameTime, TickTime(kTicksPerFrame))
                    << "frame at " << Seconds(frameTime);
            }
        });
        return {SecondsSince(start), Seconds(player.GetClockTime() - clockBefore)};
    }

    WatchedOutput* output = new WatchedOutput;
    ML::MediaPlayer player{std::unique_ptr<ML::AudioOutput>(output)};

    static inline std::unique_ptr<host_audio_test::NullSinkServer> server_;
    static inline std::unique_ptr<QTemporaryDir> folder_;
};

TEST_F(SystemAudioOutputTest, TheClockRunsAtRealSpeedWithEachFrameShownOnItsSound) {
    ASSERT_TRUE(StartAt(TickTime()));
    ASSERT_TRUE(output->opened) << "the null sink refused 48 kHz stereo float sound";
    const auto [wallSeconds, clockSeconds] = PlayOnFor(1.0);
    EXPECT_NEAR(clockSeconds, wallSeconds, kClockToleranceSeconds);
    EXPECT_LE(player.GetStatistics().framesDropped, 1U);
}

TEST_F(SystemAudioOutputTest, PausingStopsTheClockAndPlayingOnStartsItWherePaused) {
    ASSERT_TRUE(StartAt(TickTime()));
    PlayOnFor(0.5);
    const TickTime paused = player.GetClockTime().AlignToFrame(zelmediatypes::kFrameRate_25);
    player.Stop();
    EXPECT_EQ(output->GetPlayedFrameCount(), 0);
    PumpFor(0.3);
    EXPECT_EQ(output->GetPlayedFrameCount(), 0);

    // Nothing of the first run is left in the sink: the clock starts at the paused frame.
    ASSERT_TRUE(StartAt(paused));
    EXPECT_LT(Seconds(player.GetClockTime() - paused), kClockToleranceSeconds);
    const auto [wallSeconds, clockSeconds] = PlayOnFor(0.6);
    EXPECT_NEAR(clockSeconds, wallSeconds, kClockToleranceSeconds);
}

TEST_F(SystemAudioOutputTest, AStarvedSinkStopsItsClockAtTheSoundWritten) {
    std::unique_ptr<ML::AudioOutput> sink = host::MakeSystemAudioOutput();
    ASSERT_TRUE(sink->Open(ML::AudioFormat()));
    // A quarter of a second, more than the output queues at once.
    constexpr std::size_t kFrames = 12000;
    const std::vector<float> silence(2 * kFrames, 0.F);
    std::size_t written = 0;
    const Clock::time_point start = Clock::now();
    PumpFor(0.6, [&] {
        written += sink->Write(silence.data() + 2 * written, kFrames - written);
        EXPECT_LE(sink->GetPlayedFrameCount(), static_cast<std::int64_t>(written));
    });
    EXPECT_EQ(written, kFrames);
    EXPECT_GT(SecondsSince(start), 0.25 + kClockToleranceSeconds);
    const std::int64_t played = sink->GetPlayedFrameCount();
    EXPECT_EQ(played, static_cast<std::int64_t>(kFrames));
    PumpFor(0.2);
    EXPECT_EQ(sink->GetPlayedFrameCount(), played);

    sink->Close();
    EXPECT_EQ(sink->GetPlayedFrameCount(), 0);
    ASSERT_TRUE(sink->Open(ML::AudioFormat()));
    PumpFor(0.1);
    EXPECT_EQ(sink->GetPlayedFrameCount(), 0);
    sink->Close();
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

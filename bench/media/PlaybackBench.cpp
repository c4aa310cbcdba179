// Real-time playback of a 60-second 1080p 29.97 fps H.264 clip with AAC sound that beeps on the
// first frame of every second (frames 0, 30, 60, ...), made with the ffmpeg command in the
// setup. The sound goes to a device-less output paced by the system clock, which keeps what
// was written, so that each beep's place on the audio clock can be compared with the moment
// its frame was shown. The player is polled every 4 ms, as the host's monitor polls it.

#include "ML/AudioOutput.h"
#include "ML/MediaPlayer.h"
#include "TestClipWriter.h"
#include "zelmediatypes/FrameRate.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using zelmediatypes::TickTime;

constexpr int kClipSeconds = 60;
constexpr auto kPollInterval = std::chrono::milliseconds(4);

std::string BenchClipPath() {
    static const std::string path = [] {
        const std::string file =
            (std::filesystem::temp_directory_path() / "corvala-playback-1080p2997.mp4").string();
        // Beeps on frame 30n: a 1 kHz tone for the first frame's duration of every 1.001 s.
        const std::string command =
            "ffmpeg -v error -y -f lavfi -i testsrc2=size=1920x1080:rate=30000/1001 "
            "-f lavfi -i \"aevalsrc=exprs='0.5*lt(mod(t\\,1.001)\\,1001/30000)*cos(2*PI*1000*t)'"
            ":s=48000\" -t " +
            std::to_string(kClipSeconds) +
            " -c:v libx264 -preset veryfast -g 30 -pix_fmt yuv420p -c:a aac -b:a 128k '" + file +
            "'";
        if (!std::filesystem::exists(file) && std::system(command.c_str()) != 0) {
            throw std::runtime_error("the benchmark clip could not be made: " + command);
        }
        return file;
    }();
    return path;
}

BE::MasterClipSettings BenchClip() {
    return {.name = {},
            .kind = BE::MasterClipKind::kSingle,
            .media = {BE::MediaSource::Kind::kFile, BenchClipPath()},
            .frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, 1920, 1080),
            .frameRate = zelmediatypes::kFrameRate_2997,
            .pixelAspectRatio = {1, 1},
            .duration = TickTime::FromSeconds(kClipSeconds)};
}

// The system-clock output, keeping the first channel of what was written.
class RecordingOutput : public ML::AudioOutput {
public:
    bool Open(const ML::AudioFormat& format) override {
        format_ = format;
        std::lock_guard lock(mutex_);
        samples_.clear();
        return clocked_->Open(format);
    }
    std::size_t Write(const float* samples, std::size_t frameCount) override {
        const std::size_t taken = clocked_->Write(samples, frameCount);
        std::lock_guard lock(mutex_);
        for (std::size_t i = 0; i < taken; ++i) {
            samples_.push_back(samples[i * format_.channelCount]);
        }
        return taken;
    }
    std::int64_t GetPlayedFrameCount() const override { return clocked_->GetPlayedFrameCount(); }
    void Close() override { clocked_->Close(); }

    std::vector<float> GetSamples() const {
        std::lock_guard lock(mutex_);
        return samples_;
    }

private:
    std::unique_ptr<ML::AudioOutput> clocked_ = ML::MakeClockedAudioOutput();
    ML::AudioFormat format_;
    mutable std::mutex mutex_;
    std::vector<float> samples_;
};

// From Play to the first frame taken, starting at a time 20 frames past a keyframe. Warm: one
// player plays the clip again and again, as a person pausing and playing does; cold: a new
// player each time, which opens the file first.
void StartToFirstFrame(benchmark::State& state, bool cold) {
    const BE::MasterClipSettings clip = BenchClip();
    auto player = std::make_unique<ML::MediaPlayer>(ML::MakeClockedAudioOutput());
    const ML::FrameSize size{static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
    int round = 0;
    for (auto _ : state) {
        if (cold) {
            player = std::make_unique<ML::MediaPlayer>(ML::MakeClockedAudioOutput());
        }
        const TickTime from = clip.frameRate.FrameDuration() * (30 * (3 + round++ % 50) + 20);
        const auto start = std::chrono::steady_clock::now();
        player->Play(clip, from, 1, size);
        while (!player->TakeDueFrame()) {
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        player->Stop();
    }
}

void BM_StartToFirstFrameWarm(benchmark::State& state) {
    StartToFirstFrame(state, false);
}

void BM_StartToFirstFrameCold(benchmark::State& state) {
    StartToFirstFrame(state, true);
}

// The whole clip at normal speed: frames shown and dropped, how late frames were shown, and the
// offset of each beep's frame from the beep on the audio clock.
void BM_SustainedPlayback(benchmark::State& state) {
    const BE::MasterClipSettings clip = BenchClip();
    auto* output = new RecordingOutput;
    ML::MediaPlayer player{std::unique_ptr<ML::AudioOutput>(output)};
    const ML::FrameSize size{static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
    const std::int64_t frameTicks = clip.frameRate.FrameDuration().GetTicks();
    std::map<std::int64_t, TickTime> shownAt; // frame index -> clock when taken
    double latestMs = 0;
    for (auto _ : state) {
        player.Play(clip, TickTime(), 1, size);
        while (!player.HasReachedEnd()) {
            if (VF::VideoFrameRef frame = player.TakeDueFrame()) {
                const TickTime clock = player.GetClockTime();
                const std::int64_t index =
                    (frame->GetTime().GetTicks() + frameTicks / 2) / frameTicks;
                shownAt[index] = clock;
                latestMs = std::max(latestMs, 1000.0 * (clock - frame->GetTime()).GetTicks() /
                                                  zelmediatypes::kTicksPerSecond);
            }
            std::this_thread::sleep_for(kPollInterval);
        }
        player.Stop();
    }
    const std::vector<std::size_t> onsets =
        media_test::FindSoundOnsets(output->GetSamples(), 1, 4800);
    double worstOffsetMs = 0;
    for (const std::size_t onset : onsets) {
        const double beepSeconds = static_cast<double>(onset) / 48000;
        const auto frame = static_cast<std::int64_t>(std::llround(beepSeconds * 30000 / 1001));
        const auto shown = shownAt.find(frame);
        if (shown == shownAt.end()) {
            state.SkipWithError("a beep's frame was never shown");
            return;
        }
        const double shownSeconds =
            static_cast<double>(shown->second.GetTicks()) / zelmediatypes::kTicksPerSecond;
        worstOffsetMs = std::max(worstOffsetMs, std::abs(shownSeconds - beepSeconds) * 1000);
    }
    const ML::PlaybackStatistics statistics = player.GetStatistics();
    state.counters["framesShown"] = static_cast<double>(statistics.framesShown);
    state.counters["framesDropped"] = static_cast<double>(statistics.framesDropped);
    state.counters["latestShownMs"] = latestMs;
    state.counters["beeps"] = static_cast<double>(onsets.size());
    state.counters["worstBeepOffsetMs"] = worstOffsetMs;
}

// Backwards at normal speed from the middle of the clip for a fixed stretch of wall time: frames
// shown and dropped, the frames the clock passed that were never decoded at all, and how far
// the last frame shown trails the clock at the end (a smooth playback shows about 29.97 frames
// a second and trails by less than a frame).
void BM_ReversePlayback(benchmark::State& state) {
    const BE::MasterClipSettings clip = BenchClip();
    ML::MediaPlayer player{ML::MakeClockedAudioOutput()};
    const ML::FrameSize size{static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
    const auto stretch = std::chrono::seconds(state.range(2));
    const TickTime from = TickTime::FromSeconds(kClipSeconds / 2);
    TickTime lastShown = from;
    TickTime clockAtEnd = from;
    for (auto _ : state) {
        player.Play(clip, from, -1, size);
        while (!player.TakeDueFrame()) {
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        const auto end = std::chrono::steady_clock::now() + stretch;
        while (std::chrono::steady_clock::now() < end) {
            if (VF::VideoFrameRef frame = player.TakeDueFrame()) {
                lastShown = frame->GetTime();
            }
            std::this_thread::sleep_for(kPollInterval);
        }
        clockAtEnd = player.GetClockTime();
        player.Stop();
    }
    const ML::PlaybackStatistics statistics = player.GetStatistics();
    const auto frameTicks = static_cast<double>(clip.frameRate.FrameDuration().GetTicks());
    const double framesPassed = static_cast<double>((from - clockAtEnd).GetTicks()) / frameTicks;
    state.counters["framesShown"] = static_cast<double>(statistics.framesShown);
    state.counters["framesDropped"] = static_cast<double>(statistics.framesDropped);
    state.counters["framesNeverDecoded"] = std::max(
        0.0, framesPassed - static_cast<double>(statistics.framesShown + statistics.framesDropped));
    state.counters["trailingMs"] = 1000.0 *
                                   static_cast<double>((lastShown - clockAtEnd).GetTicks()) /
                                   zelmediatypes::kTicksPerSecond;
}

} // namespace

BENCHMARK(BM_StartToFirstFrameWarm)
    ->Args({960, 540})
    ->Args({0, 0})
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StartToFirstFrameCold)
    ->Args({960, 540})
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SustainedPlayback)->Args({960, 540})->Iterations(1)->Unit(benchmark::kSecond);
// Display size and full size, 10 s of wall time each.
BENCHMARK(BM_ReversePlayback)
    ->Args({960, 540, 10})
    ->Args({0, 0, 10})
    ->Iterations(1)
    ->Unit(benchmark::kSecond);

BENCHMARK_MAIN();

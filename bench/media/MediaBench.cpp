// Thumbnails and full frames at random times of a 4-second 1080p 29.97 fps MPEG-4 Part 2 clip
// with a keyframe every 30 frames, decoded, from the cache, and drawn by the generated test
// source. Times are wall-clock from the request to the message's arrival on the UI thread.

#include "KSL/Listener.h"
#include "KSL/StationUtils.h"
#include "ML/FrameService.h"
#include "ML/RenderFrameCompletionMessage.h"
#include "TestClipWriter.h"

extern "C" {
#include <libavutil/log.h>
}

#include <QCoreApplication>
#include <QEventLoop>
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using zelmediatypes::TickTime;

constexpr int kClipFrameCount = 120;
const ML::FrameSize kThumbnail{114, 64};

// Smooth moving waves with a fine grain, so that the decoder has real detail to work through.
void PaintTexture(int frameIndex, VF::VideoFrame& canvas) {
    for (int y = 0; y < canvas.GetHeightPx(); ++y) {
        std::uint8_t* pixel = canvas.GetRow(y);
        for (int x = 0; x < canvas.GetWidthPx(); ++x, pixel += 4) {
            const double wave = std::sin((x + 6.0 * frameIndex) / 37.0) * std::cos(y / 23.0);
            const unsigned grain =
                (static_cast<unsigned>(x) * 2654435761u ^ static_cast<unsigned>(y) * 40503u) >> 27;
            pixel[0] = static_cast<std::uint8_t>(128 + 90 * wave + grain);
            pixel[1] = static_cast<std::uint8_t>(x * 255 / canvas.GetWidthPx());
            pixel[2] = static_cast<std::uint8_t>((y + 3 * frameIndex) % 256);
        }
    }
}

class BenchClip {
public:
    BenchClip()
        : path_((std::filesystem::temp_directory_path() / "corvala-bench-1080p.mp4").string()) {
        media_test::ClipSpec spec;
        spec.widthPx = 1920;
        spec.heightPx = 1080;
        spec.frameRateNumerator = 30000;
        spec.frameRateDenominator = 1001;
        spec.frameCount = kClipFrameCount;
        spec.keyframeIntervalFrames = 30;
        spec.quantiser = 5;
        media_test::WriteClip(path_, spec, PaintTexture);
    }
    ~BenchClip() { std::filesystem::remove(path_); }

    BE::MasterClipSettings Settings(BE::MediaSource::Kind kind) const {
        return {.name = {},
                .kind = BE::MasterClipKind::kSingle,
                .media = {kind, kind == BE::MediaSource::Kind::kFile ? path_ : std::string()},
                .frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, 1920, 1080),
                .frameRate = zelmediatypes::kFrameRate_2997,
                .pixelAspectRatio = {1, 1},
                .duration =
                    TickTime(kClipFrameCount * zelmediatypes::kFrameRate_2997.TicksPerFrame())};
    }

private:
    std::string path_;
};

const BenchClip& Clip() {
    static const BenchClip clip;
    return clip;
}

// Counts the messages of the request in flight as they arrive.
class ArrivalWatcher : public KSL::Listener {
public:
    ArrivalWatcher() { KSL::StationUtils::AddListener(ML::kStation_RenderFrameCompletion, this); }

    // Requests and runs the event loop until the final message; returns the seconds until the
    // first message and until the final one.
    std::pair<double, double> Await(const BE::MasterClipSettings& clip, TickTime time,
                                    ML::FrameSize size, ML::Refinement refinement) {
        const auto start = std::chrono::steady_clock::now();
        requestID_ = ML::FrameService::RequestFrame(clip, time, size, refinement);
        firstArrival_.reset();
        finalArrived_ = false;
        while (!finalArrived_) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        const auto end = std::chrono::steady_clock::now();
        return {std::chrono::duration<double>(*firstArrival_ - start).count(),
                std::chrono::duration<double>(end - start).count()};
    }

protected:
    bool HandleMessage(const KSL::Message& message) override {
        const auto* completion = message.As<ML::RenderFrameCompletionMessage>();
        if (!completion || completion->GetRequestID() != requestID_) {
            return false;
        }
        if (!firstArrival_) {
            firstArrival_ = std::chrono::steady_clock::now();
        }
        finalArrived_ = completion->IsFinal();
        return true;
    }

private:
    ML::RequestID requestID_ = 0;
    std::optional<std::chrono::steady_clock::time_point> firstArrival_;
    bool finalArrived_ = false;
};

TickTime RandomTime(std::mt19937& random) {
    std::uniform_int_distribution<int> frame(0, kClipFrameCount - 1);
    return TickTime(frame(random) * zelmediatypes::kFrameRate_2997.TicksPerFrame());
}

enum class Measure { kFirstMessage, kFinalMessage };

// Nothing is cached, so every request decodes; the file stays open between requests.
void RunUncached(benchmark::State& state, BE::MediaSource::Kind kind, ML::FrameSize size,
                 ML::Refinement refinement, Measure measure) {
    const BE::MasterClipSettings clip = Clip().Settings(kind);
    ML::FrameService::Start({.workerThreadCount = 2, .cacheBudgetBytes = 0});
    ArrivalWatcher watcher;
    std::mt19937 random(11);
    watcher.Await(clip, RandomTime(random), size, refinement); // opens the file
    for (auto _ : state) {
        const auto [firstSeconds, finalSeconds] =
            watcher.Await(clip, RandomTime(random), size, refinement);
        state.SetIterationTime(measure == Measure::kFirstMessage ? firstSeconds : finalSeconds);
    }
    ML::FrameService::Shutdown();
}

void BM_ThumbnailKeyframePreview(benchmark::State& state) {
    RunUncached(state, BE::MediaSource::Kind::kFile, kThumbnail, ML::Refinement::kKeyframeFirst,
                Measure::kFirstMessage);
}
void BM_ThumbnailExact(benchmark::State& state) {
    RunUncached(state, BE::MediaSource::Kind::kFile, kThumbnail, ML::Refinement::kExactOnly,
                Measure::kFinalMessage);
}
void BM_ThumbnailExactAfterPreview(benchmark::State& state) {
    RunUncached(state, BE::MediaSource::Kind::kFile, kThumbnail, ML::Refinement::kKeyframeFirst,
                Measure::kFinalMessage);
}
void BM_FullFrameExact(benchmark::State& state) {
    RunUncached(state, BE::MediaSource::Kind::kFile, {}, ML::Refinement::kExactOnly,
                Measure::kFinalMessage);
}
void BM_GeneratedThumbnail(benchmark::State& state) {
    RunUncached(state, BE::MediaSource::Kind::kGeneratedTestSource, kThumbnail,
                ML::Refinement::kExactOnly, Measure::kFinalMessage);
}

void BM_ThumbnailFromCache(benchmark::State& state) {
    const BE::MasterClipSettings clip = Clip().Settings(BE::MediaSource::Kind::kFile);
    ML::FrameService::Start();
    ArrivalWatcher watcher;
    std::vector<TickTime> times;
    std::mt19937 random(13);
    for (int i = 0; i < 16; ++i) {
        times.push_back(RandomTime(random));
        watcher.Await(clip, times.back(), kThumbnail, ML::Refinement::kExactOnly);
    }
    std::size_t next = 0;
    for (auto _ : state) {
        state.SetIterationTime(
            watcher
                .Await(clip, times[next++ % times.size()], kThumbnail, ML::Refinement::kExactOnly)
                .second);
    }
    ML::FrameService::Shutdown();
}

BENCHMARK(BM_ThumbnailKeyframePreview)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ThumbnailExact)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ThumbnailExactAfterPreview)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FullFrameExact)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GeneratedThumbnail)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ThumbnailFromCache)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    av_log_set_level(AV_LOG_ERROR);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

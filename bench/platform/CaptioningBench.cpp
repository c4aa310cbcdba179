// The caption stream's hot paths against its size: lookup by time, replacing
// one caption with its change message delivered, and listing every block time.

#include "BenchProject.h"
#include "KSL/IStation.h"
#include "KSL/Listener.h"
#include "KSL/StationUtils.h"
#include "MZ/Captioning.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

using zelmediatypes::TickTime;

// Receives the stream's change messages, as a panel showing it would.
class CountingListener : public KSL::Listener {
public:
    std::size_t received = 0;

protected:
    bool HandleMessage(const KSL::Message&) override {
        ++received;
        return true;
    }
};

void BM_GetCaptionBlock(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const platform_bench::StreamProject bench = platform_bench::MakeStreamProject(count);
    const MZ::Captioning captioning(bench.stream);
    std::mt19937 random(7);
    std::vector<TickTime> times(4096);
    for (TickTime& time : times) {
        time = TickTime(std::uniform_int_distribution<std::int64_t>(
            0, static_cast<std::int64_t>(count) * zelmediatypes::kTicksPerSecond)(random));
    }
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(captioning.GetCaptionBlock(times[next++ % times.size()]));
    }
}
BENCHMARK(BM_GetCaptionBlock)->Arg(1000)->Arg(100000);

// A live update of the caption in the middle, as the panel sends while typing.
void ReplaceCaption(benchmark::State& state, bool undoable) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const platform_bench::StreamProject bench = platform_bench::MakeStreamProject(count);
    CountingListener listener;
    KSL::StationUtils::AddListener(KSL::StationOf(bench.stream), &listener);
    MZ::Captioning captioning(bench.stream);
    const zelcaptioning::CaptionPtr target = bench.stream->GetCaption(count / 2);
    zelcaptioning::CaptionPtr edits[2] = {new zelcaptioning::Caption(*target),
                                          new zelcaptioning::Caption(*target)};
    edits[1]->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0)->SetCaptionText(
        zelcore::ToUTF16("Edited text"));
    const zelcore::UTF16String name = zelcore::ToUTF16("$$$/Bench/Edit=Edit");
    std::size_t iteration = 0;
    for (auto _ : state) {
        captioning.ReplaceCaption(target, edits[iteration++ % 2], undoable, name);
        if (undoable && iteration % 4096 == 0) {
            state.PauseTiming();
            bench.project->GetUndoHistory().Clear();
            state.ResumeTiming();
        }
    }
    if (listener.received != iteration) {
        state.SkipWithError("a change message went missing");
    }
    KSL::StationUtils::RemoveListener(KSL::StationOf(bench.stream), &listener);
}
void BM_ReplaceCaptionLive(benchmark::State& state) {
    ReplaceCaption(state, false);
}
void BM_ReplaceCaptionAsUndoStep(benchmark::State& state) {
    ReplaceCaption(state, true);
}
BENCHMARK(BM_ReplaceCaptionLive)->Arg(1000)->Arg(100000);
BENCHMARK(BM_ReplaceCaptionAsUndoStep)->Arg(1000)->Arg(100000);

void BM_GetCaptionBlockTimes(benchmark::State& state) {
    const platform_bench::StreamProject bench =
        platform_bench::MakeStreamProject(static_cast<std::size_t>(state.range(0)));
    const MZ::Captioning captioning(bench.stream);
    std::vector<MZ::Captioning::CaptionBlockTimes> times;
    for (auto _ : state) {
        captioning.GetCaptionBlockTimes(times);
        benchmark::DoNotOptimize(times.data());
    }
}
BENCHMARK(BM_GetCaptionBlockTimes)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

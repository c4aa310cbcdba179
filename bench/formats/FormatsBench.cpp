// Reading and writing 10,000-caption files of each format, and a 100,000-cue
// SubRip read, far beyond any programme's length, to show that reading scales.
#include "TypicalFiles.h"

#include "captionformats/CaptionFileFormat.h"
#include "captionformats/DirectConversion.h"

#include <benchmark/benchmark.h>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using bench_formats::FileOf;
using bench_formats::TypicalCaptions;

void Read(benchmark::State& state, CaptionFileFormat format, int count) {
    const std::string& bytes = FileOf(format, count);
    const auto reader = MakeReader(format);
    for (auto _ : state) {
        ReadResult result = reader->Read(bytes, {});
        if (result.captions.size() != static_cast<std::size_t>(count)) {
            state.SkipWithError("captions lost");
        }
        benchmark::DoNotOptimize(result.captions.data());
        // Freeing the captions is the caller's business, not reading.
        state.PauseTiming();
        result = ReadResult();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

void Write(benchmark::State& state, CaptionFileFormat format, int count) {
    const auto captions = TypicalCaptions(format, count);
    const auto writer = MakeWriter(format);
    for (auto _ : state) {
        const WriteResult result = writer->Write(captions, {});
        benchmark::DoNotOptimize(result.bytes.data());
    }
}

// A direct conversion in the process, without its start and its file
// handling: what bench_convert's whole-process figure spends on the bytes.
void Convert(benchmark::State& state, CaptionFileFormat from, CaptionFileFormat to, int count) {
    const std::string& bytes = FileOf(from, count);
    for (auto _ : state) {
        const std::optional<Conversion> conversion = ConvertDirectly(from, to, bytes, {}, {});
        if (!conversion || conversion->captionCount != static_cast<std::size_t>(count)) {
            state.SkipWithError("no direct conversion");
        }
        benchmark::DoNotOptimize(conversion->written.bytes.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

constexpr int kCaptions = 10'000;

} // namespace

BENCHMARK_CAPTURE(Read, Srt, CaptionFileFormat::kSrt, kCaptions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read, WebVtt, CaptionFileFormat::kWebVtt, kCaptions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read, Scc, CaptionFileFormat::kScc, kCaptions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read, Ttml, CaptionFileFormat::kTtml, kCaptions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read, EbuStl, CaptionFileFormat::kEbuStl, kCaptions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read, Srt100k, CaptionFileFormat::kSrt, 100'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Write, Srt, CaptionFileFormat::kSrt, kCaptions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Write, WebVtt, CaptionFileFormat::kWebVtt, kCaptions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Write, Scc, CaptionFileFormat::kScc, kCaptions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Write, Ttml, CaptionFileFormat::kTtml, kCaptions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Write, EbuStl, CaptionFileFormat::kEbuStl, kCaptions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Convert, SrtToWebVtt, CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt,
                  kCaptions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Convert, SccToSrt, CaptionFileFormat::kScc, CaptionFileFormat::kSrt, kCaptions)
    ->Unit(benchmark::kMillisecond);

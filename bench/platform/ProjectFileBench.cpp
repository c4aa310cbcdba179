// Opening and saving a project file whose stream holds 100,000 captions.

#include "BE/ProjectFile.h"
#include "BenchProject.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace {

void BM_OpenProjectFile(benchmark::State& state) {
    const platform_bench::StreamProject bench =
        platform_bench::MakeStreamProject(static_cast<std::size_t>(state.range(0)));
    const std::string path =
        "/tmp/corvala-bench-project-" + std::to_string(state.range(0)) + ".json";
    if (const auto error = BE::WriteProjectFile(bench.project, path)) {
        state.SkipWithError(error->ToString().c_str());
        return;
    }
    for (auto _ : state) {
        const BE::OpenProjectResult opened = BE::ReadProjectFile(path);
        if (!opened.project) {
            state.SkipWithError(opened.error->ToString().c_str());
        }
        benchmark::DoNotOptimize(opened.project.Get());
    }
    std::remove(path.c_str());
}
BENCHMARK(BM_OpenProjectFile)->Arg(100000)->Unit(benchmark::kMillisecond);

// A save: the file's text written out and the file replaced atomically.
void BM_SaveProjectFile(benchmark::State& state) {
    const platform_bench::StreamProject bench =
        platform_bench::MakeStreamProject(static_cast<std::size_t>(state.range(0)));
    const std::string path = "/tmp/corvala-bench-save-" + std::to_string(state.range(0)) + ".json";
    for (auto _ : state) {
        if (const auto error = BE::WriteProjectFile(bench.project, path)) {
            state.SkipWithError(error->ToString().c_str());
        }
    }
    std::remove(path.c_str());
}
BENCHMARK(BM_SaveProjectFile)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

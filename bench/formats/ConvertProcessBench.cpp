// Whole processes side by side: corvala-captions convert against the ffmpeg
// command line on the same 10,000-cue files, SubRip to WebVTT and SCC to
// SubRip. Each iteration starts the program, converts and waits for it.
#include "TypicalFiles.h"

#include <benchmark/benchmark.h>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

extern char** environ;

namespace {

using captionformats::CaptionFileFormat;

constexpr int kCues = 10'000;

// The run's files, in a folder of the system's temporary folder that goes
// when the run ends.
class RunFolder {
public:
    RunFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("corvala-convert-bench-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(path_);
    }
    ~RunFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

std::filesystem::path WorkFolder() {
    static const RunFolder folder;
    return folder.Path();
}

std::string InputFile(CaptionFileFormat format) {
    const std::filesystem::path path =
        WorkFolder() / ("input." + std::string(captionformats::FormatExtension(format)));
    if (!std::filesystem::exists(path)) {
        std::ofstream(path, std::ios::binary) << bench_formats::FileOf(format, kCues);
    }
    return path.string();
}

// Runs the program with the arguments; the exit status, or -1 when it could
// not be started.
int Run(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawnp(&child, argv[0], nullptr, nullptr, argv.data(), environ) != 0) {
        return -1;
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void Convert(benchmark::State& state, bool ours, CaptionFileFormat from, CaptionFileFormat to) {
    const std::string input = InputFile(from);
    const std::string output = (WorkFolder() / ((ours ? "ours." : "ffmpeg.") +
                                                std::string(captionformats::FormatExtension(to))))
                                   .string();
    const std::vector<std::string> command =
        ours ? std::vector<std::string>{CORVALA_CAPTIONS_EXECUTABLE, "convert", input, output}
             : std::vector<std::string>{"ffmpeg", "-nostdin", "-loglevel", "error",
                                        "-y",     "-i",       input,       output};
    if (Run(command) != 0) {
        state.SkipWithError(ours ? "corvala-captions failed" : "ffmpeg is missing or failed");
        return;
    }
    for (auto _ : state) {
        Run(command);
    }
    state.counters["outputBytes"] = static_cast<double>(std::filesystem::file_size(output));
}

BENCHMARK_CAPTURE(Convert, SrtToWebVtt_Ours, true, CaptionFileFormat::kSrt,
                  CaptionFileFormat::kWebVtt)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Convert, SrtToWebVtt_Ffmpeg, false, CaptionFileFormat::kSrt,
                  CaptionFileFormat::kWebVtt)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Convert, SccToSrt_Ours, true, CaptionFileFormat::kScc, CaptionFileFormat::kSrt)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Convert, SccToSrt_Ffmpeg, false, CaptionFileFormat::kScc, CaptionFileFormat::kSrt)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

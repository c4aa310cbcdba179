// One keystroke's live update (a caption replaced without an undo step) in a
// stream of 100,000 captions, with and without the edit journal recording it.
// The journal's cost is the difference: describing the change, its checksum
// and one write(2); the flush to the disk runs later on a timer and is
// measured on its own.

#include "BE/EditJournal.h"
#include "BenchProject.h"
#include "MZ/Captioning.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

// The journal's flush timer needs an application object on this thread.
void EnsureApplication() {
    static int argc = 1;
    static char name[] = "bench_platform_core";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
}

zelcaptioning::CaptionPtr Typed(const zelcaptioning::Caption& caption, char16_t letter) {
    zelcaptioning::CaptionPtr typed(new zelcaptioning::Caption(caption));
    const auto span = typed->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0);
    zelcore::UTF16String text = span->GetCaptionText();
    text.back() = letter;
    span->SetCaptionText(text);
    return typed;
}

void BM_LiveUpdate(benchmark::State& state) {
    EnsureApplication();
    const platform_bench::StreamProject bench = platform_bench::MakeStreamProject(100000);
    const std::string path = "/tmp/corvala-bench-journal.journal";
    std::unique_ptr<BE::EditJournal> journal;
    if (state.range(0) != 0) {
        std::string error;
        journal = BE::EditJournal::Start(bench.project, path, "", error);
        if (!journal) {
            state.SkipWithError(error.c_str());
            return;
        }
    }
    MZ::Captioning captioning(bench.stream);
    const auto caption = bench.stream->GetCaption(50000);
    char16_t letter = u'a';
    for (auto _ : state) {
        captioning.ReplaceCaption(caption, Typed(*caption, letter), false, u"");
        letter = letter == u'z' ? u'a' : static_cast<char16_t>(letter + 1);
    }
    if (journal) {
        journal->Remove();
    }
}
BENCHMARK(BM_LiveUpdate)->ArgName("journal")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// The flush that follows a burst of keystrokes: one record written, then fsync.
void BM_JournalFlush(benchmark::State& state) {
    EnsureApplication();
    const platform_bench::StreamProject bench = platform_bench::MakeStreamProject(10);
    const std::string path = "/tmp/corvala-bench-journal-flush.journal";
    std::string error;
    auto journal = BE::EditJournal::Start(bench.project, path, "", error);
    if (!journal) {
        state.SkipWithError(error.c_str());
        return;
    }
    MZ::Captioning captioning(bench.stream);
    const auto caption = bench.stream->GetCaption(5);
    char16_t letter = u'a';
    for (auto _ : state) {
        captioning.ReplaceCaption(caption, Typed(*caption, letter), false, u"");
        letter = letter == u'z' ? u'a' : static_cast<char16_t>(letter + 1);
        journal->Flush();
    }
    journal->Remove();
}
BENCHMARK(BM_JournalFlush)->Unit(benchmark::kMicrosecond);

} // namespace

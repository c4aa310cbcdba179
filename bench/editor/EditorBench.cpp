// Single editing operations on a typical caption: three lines of two spans.
#include "caption_editor/CaptionTextEditor.h"

#include <benchmark/benchmark.h>

namespace {

using namespace zelcaptioning;

CaptionPtr TypicalCaption() {
    static constexpr const char16_t* kLines[3][2] = {
        {u"[door slams] ", u"Who's there?"},
        {u"It's only me, ", u"the neighbour from upstairs."},
        {u"\u266A ", u"and the music plays on \u266A"}};
    CaptionPtr caption(new Caption);
    for (int line = 0; line < 3; ++line) {
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        TextSpanAttributes italic;
        italic.SetItalicized(true);
        paragraph->AppendCaptionTextSpan(new CaptionTextSpan(kLines[line][0], italic));
        paragraph->AppendCaptionTextSpan(new CaptionTextSpan(kLines[line][1], {}));
        paragraph->SetCaptionPosition(Position(Rational(4, 32), Rational(12 + line, 15)));
        caption->AppendCaptionTextParagraph(paragraph);
    }
    caption->SetCaptionType(kCaptionType_PopOn);
    return caption;
}

// Runs `operation` with the editor reset to the typical caption every 256
// iterations, so the caption stays near its typical size.
template <typename Operation> void RunWithResets(benchmark::State& state, Operation operation) {
    const CaptionPtr caption = TypicalCaption();
    caption_editor::CaptionTextEditor editor;
    editor.SetCaption(caption, 32, 15, 0, 0);
    int sinceReset = 0;
    for (auto _ : state) {
        operation(editor);
        if (++sinceReset == 256) {
            state.PauseTiming();
            editor.SetCaption(nullptr, 32, 15, 0, 0);
            editor.SetCaption(caption, 32, 15, 0, 0);
            sinceReset = 0;
            state.ResumeTiming();
        }
    }
}

void BM_InsertKeystroke(benchmark::State& state) {
    RunWithResets(state, [](caption_editor::CaptionTextEditor& e) { e.InsertText(u"x", 30); });
}
BENCHMARK(BM_InsertKeystroke);

void BM_DeleteKeystroke(benchmark::State& state) {
    RunWithResets(state, [](caption_editor::CaptionTextEditor& e) { e.DeleteText(u"x", 14); });
}
BENCHMARK(BM_DeleteKeystroke);

void BM_BoldOverRange(benchmark::State& state) {
    bool bold = true;
    RunWithResets(state, [&](caption_editor::CaptionTextEditor& e) {
        e.SetBold(bold, 5, 40);
        bold = !bold;
    });
}
BENCHMARK(BM_BoldOverRange);

void BM_StyleSummary(benchmark::State& state) {
    const CaptionPtr caption = TypicalCaption();
    caption_editor::CaptionTextEditor editor;
    editor.SetCaption(caption, 32, 15, 0, 0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(editor.GetStyleSummary(0, 100));
    }
}
BENCHMARK(BM_StyleSummary);

void BM_SetCaption(benchmark::State& state) {
    const CaptionPtr caption = TypicalCaption();
    caption_editor::CaptionTextEditor editor;
    for (auto _ : state) {
        editor.SetCaption(caption, 32, 15, 0, 0);
        benchmark::DoNotOptimize(editor.GetCaption());
    }
}
BENCHMARK(BM_SetCaption);

} // namespace

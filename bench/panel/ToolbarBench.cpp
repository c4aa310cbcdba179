// The style toolbar, in its open-caption family, over a stream of three-line
// captions: a selection
// change to a fully synchronised toolbar, the enabling pass alone, and a style
// change to its committed, named undo step.
#include "PanelHost.h"

#include "CaptionCommandIds.h"
#include "UIF/CommandRouting.h"
#include "zelcore/UTF16String.h"

#include <QApplication>
#include <benchmark/benchmark.h>

namespace {

using HandlerCaptions::CaptionsPane;
using panel_bench::PanelHost;
using panel_bench::Teardown;

constexpr std::size_t kCaptions = 10'000;
constexpr std::int32_t kLines = 3;

// The clip listed, row 1 made italic so that moving between rows 0 and 1
// changes pressed buttons, and row 0 selected with everything painted.
void PrepareTwoStyles(PanelHost& host) {
    host.Select(host.Clip());
    QApplication::processEvents();
    host.Pane().SelectRow(1, CaptionsPane::kSelectNotify_Mouse);
    UIF::SendCommand(HandlerCaptions::kCommand_Italicize, &host.View());
    host.Pane().SelectRow(0, CaptionsPane::kSelectNotify_Mouse);
    QApplication::processEvents();
}

// Attributes in, enabling pass, and the repaint of the toolbar controls that
// changed. The list repaints its two rows as well; that is the list's cost,
// measured by the scrolling and painting benchmarks, so it is held back here.
void BM_SelectionToSyncedToolbar(benchmark::State& state) {
    {
        PanelHost host(kCaptions, kLines, zelcaptioning::kStreamFormat_OpenCaptions);
        PrepareTwoStyles(host);
        host.PaneWidget().setUpdatesEnabled(false);
        std::int32_t row = 0;
        for (auto _ : state) {
            row = 1 - row;
            host.Pane().SelectRow(row, CaptionsPane::kSelectNotify_Mouse);
            host.PaintPending();
        }
    }
    Teardown();
}
BENCHMARK(BM_SelectionToSyncedToolbar)->Unit(benchmark::kMicrosecond);

void BM_EnablingPass(benchmark::State& state) {
    {
        PanelHost host(kCaptions, kLines, zelcaptioning::kStreamFormat_OpenCaptions);
        PrepareTwoStyles(host);
        for (auto _ : state) {
            host.View().UpdateEnabling();
        }
        QApplication::processEvents();
    }
    Teardown();
}
BENCHMARK(BM_EnablingPass)->Unit(benchmark::kMicrosecond);

// Bold on and off in turn over the selected three-line caption, each a named
// step of the undo history.
void BM_BoldToUndoStep(benchmark::State& state) {
    {
        PanelHost host(kCaptions, kLines, zelcaptioning::kStreamFormat_OpenCaptions);
        PrepareTwoStyles(host);
        UIF::SendCommand(HandlerCaptions::kCommand_Bold, &host.View());
        if (zelcore::ToUTF8(host.UndoHistory().GetUndoStepName()) != "Bold Caption Text") {
            state.SkipWithError("bold did not make its named undo step");
        }
        for (auto _ : state) {
            UIF::SendCommand(HandlerCaptions::kCommand_Bold, &host.View());
        }
        QApplication::processEvents();
    }
    Teardown();
}
BENCHMARK(BM_BoldToUndoStep)->Unit(benchmark::kMicrosecond);

} // namespace

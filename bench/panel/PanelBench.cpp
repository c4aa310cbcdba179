// The Captions panel of the real host window, offscreen, over a clip with a
// long CEA-608 stream: listing it, one keystroke reaching the stream, a page
// of scrolling and a full repaint.
#include "PanelHost.h"

#include "CaptionEdit.h"
#include "PlatformHost/HostAccess.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QTest>
#include <benchmark/benchmark.h>

#include <chrono>

namespace {

using HandlerCaptions::CaptionsPane;
using panel_bench::HeapMegabytesInUse;
using panel_bench::PanelHost;
using panel_bench::Teardown;

// RebuildRows with the first paint: selecting the clip lists every caption.
void BM_ListStream(benchmark::State& state) {
    {
        PanelHost host(static_cast<std::size_t>(state.range(0)));
        // Memory the listing adds to the heap.
        const double before = HeapMegabytesInUse();
        host.Select(host.Clip());
        host.Paint();
        const double addedMegabytes = HeapMegabytesInUse() - before;
        for (auto _ : state) {
            state.PauseTiming();
            host.Select({});
            QApplication::processEvents();
            state.ResumeTiming();
            host.Select(host.Clip());
            host.Paint();
        }
        state.counters["rows"] = host.Pane().GetItemList().GetCount();
        state.counters["addedMB"] = addedMegabytes;
    }
    Teardown();
}
BENCHMARK(BM_ListStream)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

// One character typed into the focused row, through the change notification,
// the live commit and the change message back into the pane.
void BM_KeystrokeToStream(benchmark::State& state) {
    {
        PanelHost host(static_cast<std::size_t>(state.range(0)));
        host.Select(host.Clip());
        QApplication::processEvents();
        QWidget* text = platform::ui::WidgetOf(*host.Pane().GetItemList().At(0)->GetTextControl());
        QWidget* viewport = qobject_cast<QAbstractScrollArea*>(text)->viewport();
        QTest::mouseClick(viewport, Qt::LeftButton, {}, QPoint(5, 5));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End, Qt::ControlModifier);
        bool typeLetter = true;
        for (auto _ : state) {
            // Typing and erasing in turn keeps the caption's length steady.
            if (typeLetter) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_A);
            } else {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
            }
            typeLetter = !typeLetter;
        }
    }
    Teardown();
}
BENCHMARK(BM_KeystrokeToStream)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

// One page down the list, laid out and painted.
void BM_ScrollOnePage(benchmark::State& state) {
    {
        PanelHost host(100'000);
        host.Select(host.Clip());
        QApplication::processEvents();
        const auto page = static_cast<std::uint32_t>(host.PaneWidget().height()) /
                          CaptionsPane::kRowPitchPx * CaptionsPane::kRowPitchPx;
        std::uint32_t offset = 0;
        std::chrono::duration<double, std::milli> layout{};
        for (auto _ : state) {
            offset = (offset + page) % (90'000u * CaptionsPane::kRowPitchPx);
            const auto start = std::chrono::steady_clock::now();
            host.Pane().SetScrollOffset(offset);
            layout += std::chrono::steady_clock::now() - start;
            host.Paint();
        }
        // How much of a page is laying the rows out; the rest is painting.
        state.counters["layoutMs"] =
            benchmark::Counter(layout.count(), benchmark::Counter::kAvgIterations);
    }
    Teardown();
}
BENCHMARK(BM_ScrollOnePage)->Unit(benchmark::kMillisecond);

// A full repaint of the pane once every visible row's frame is at hand.
void BM_PaintWithCachedFrames(benchmark::State& state) {
    {
        PanelHost host(100'000);
        host.Select(host.Clip());
        host.Paint();
        host.WaitForThumbnails();
        state.counters["rowsShown"] =
            host.Pane().GetLastVisibleIndex() - host.Pane().GetFirstVisibleIndex() + 1;
        for (auto _ : state) {
            host.Paint();
        }
    }
    Teardown();
}
BENCHMARK(BM_PaintWithCachedFrames)->Unit(benchmark::kMillisecond);

} // namespace

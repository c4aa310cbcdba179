// The Captions panel of the real host window, offscreen, over a clip with a
// long CEA-608 stream: listing it, one keystroke reaching the stream, a page
// of scrolling and a full repaint.
#include "BenchProject.h"
#include "CaptionEdit.h"
#include "CaptionsHandler.h"
#include "CaptionsPane.h"
#include "CaptionsView.h"
#include "FileChooser.h"
#include "HSL/Ids.h"
#include "HSL/Module.h"
#include "HostWindow.h"
#include "KSL/StationUtils.h"
#include "ML/FrameService.h"
#include "MZ/ActivationMessages.h"
#include "MZ/Stations.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/Workspace.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QDockWidget>
#include <QTest>
#include <benchmark/benchmark.h>

#include <chrono>
#include <malloc.h>
#include <memory>

namespace {

using HandlerCaptions::CaptionsPane;

class NoFiles : public host::FileChooser {
public:
    std::string ChooseProjectToOpen(QWidget*) override { return {}; }
    std::string ChooseProjectSavePath(QWidget*, const std::string&) override { return {}; }
    std::string ChooseMediaToImport(QWidget*) override { return {}; }
};

// The host window with the panel open, 1080 pixels of list, and a clip of
// `captionCount` captions selected.
class PanelHost {
public:
    explicit PanelHost(std::size_t captionCount)
        : window_(chooser_, [](const std::string&) {}) {
        window_.GetMainWindow().resize(1920, 1400);
        window_.GetMainWindow().show();
        stream_ =
            platform_bench::AddCaptionedClip(window_.GetDocument().GetProject(), captionCount);
        UIF::Workspace::Instance()->CreateOrReanimateTabView(HSL::kCaptionsHandlerID, {});
        for (const auto& handler : window_.GetHandlers().GetHandlers()) {
            if (handler->GetName() == HSL::kCaptionsHandlerID) {
                view_ = static_cast<HandlerCaptions::CaptionsHandler*>(handler.get())->GetView();
            }
        }
        for (QDockWidget* dock : window_.GetMainWindow().findChildren<QDockWidget*>()) {
            if (dock->windowTitle() == QStringLiteral("Captions")) {
                window_.GetMainWindow().resizeDocks({dock}, {1180}, Qt::Vertical);
            }
        }
        QApplication::processEvents();
    }

    CaptionsPane& Pane() { return *view_->GetPane(); }
    QWidget& PaneWidget() {
        return *platform::ui::WidgetOf(static_cast<const UIF::ViewBase&>(Pane()));
    }
    KSL::InterfaceRef<BE::IMasterClip> Clip() const { return stream_->GetMasterClip(); }

    void Select(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
        KSL::StationUtils::BroadcastMessage(MZ::kStation_MasterClipActivation,
                                            MZ::MasterClipSelectedMessage(clip));
    }
    // Paints the pane now, as the window system would ask.
    void Paint() { PaneWidget().repaint(); }
    void WaitForThumbnails() {
        for (int turn = 0; turn < 500; ++turn) {
            bool all = true;
            for (std::int32_t i = Pane().GetFirstVisibleIndex(); i <= Pane().GetLastVisibleIndex();
                 ++i) {
                all &= Pane().GetItemList().At(i)->GetThumbnail().requestID == 0 &&
                       Pane().GetItemList().At(i)->GetThumbnail().frame != nullptr;
            }
            if (all) {
                return;
            }
            QTest::qWait(10);
        }
    }

private:
    NoFiles chooser_;
    host::HostWindow window_;
    KSL::InterfaceRef<BE::ICaptioningStream> stream_;
    HandlerCaptions::CaptionsView* view_ = nullptr;
};

// Heap in use: what the allocator handed out and was not given back.
double HeapMegabytesInUse() {
    return static_cast<double>(mallinfo2().uordblks) / 1e6;
}

void Teardown() {
    platform::ui::ResetUIState();
    KSL::ResetMessaging();
}

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

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    ML::FrameService::Start();
    const std::unique_ptr<HSL::Module> module(
        HSL::Module::FindFactory(HSL::kCaptionsModuleID)(u"libHandlerCaptions (linked)"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    ML::FrameService::Shutdown();
    return 0;
}

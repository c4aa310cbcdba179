#include "PanelHost.h"

#include "BenchProject.h"
#include "CaptionsHandler.h"
#include "HSL/Ids.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/Stations.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/Workspace.h"

#include <QApplication>
#include <QDockWidget>
#include <QTest>

#include <malloc.h>

namespace panel_bench {

PanelHost::PanelHost(std::size_t captionCount, std::int32_t linesPerCaption,
                     zelcaptioning::StreamFormat format)
    : window_(chooser_, [](const std::string&) {}) {
    window_.GetMainWindow().resize(1920, 1400);
    window_.GetMainWindow().show();
    stream_ = platform_bench::AddCaptionedClip(window_.GetDocument().GetProject(), captionCount,
                                               linesPerCaption, format);
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

QWidget& PanelHost::PaneWidget() {
    return *platform::ui::WidgetOf(static_cast<const UIF::ViewBase&>(Pane()));
}

QWidget& PanelHost::ViewWidget() {
    return *platform::ui::WidgetOf(static_cast<const UIF::ViewBase&>(View()));
}

BE::IUndoHistory& PanelHost::UndoHistory() {
    return window_.GetDocument().GetProject()->GetUndoHistory();
}

void PanelHost::Select(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    KSL::StationUtils::BroadcastMessage(MZ::kStation_MasterClipActivation,
                                        MZ::MasterClipSelectedMessage(clip));
}

void PanelHost::PaintPending() {
    QApplication::sendPostedEvents(window_.GetMainWindow().window(), QEvent::UpdateRequest);
}

void PanelHost::WaitForThumbnails() {
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

double HeapMegabytesInUse() {
    return static_cast<double>(mallinfo2().uordblks) / 1e6;
}

void Teardown() {
    platform::ui::ResetUIState();
    KSL::ResetMessaging();
}

} // namespace panel_bench

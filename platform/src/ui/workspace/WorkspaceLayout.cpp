#include "PlatformHost/HostAccess.h"

#include "UIF/Workspace.h"
#include "workspace/WorkspaceImpl.h"

namespace platform::ui {
namespace {

void MarkFramesPlaced(UIF::Workspace& workspace) {
    for (UIF::WorkspaceFrame* frame : workspace.GetFrames()) {
        if (FrameDock* dock = frame->GetImpl().dock) {
            dock->MarkPlaced();
        }
    }
}

} // namespace

QByteArray SaveWorkspaceLayout() {
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    return workspace ? workspace->GetImpl().MainWindow().saveState() : QByteArray();
}

bool RestoreWorkspaceLayout(const QByteArray& layout) {
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    if (!workspace || layout.isEmpty() || !workspace->GetImpl().MainWindow().restoreState(layout)) {
        return false;
    }
    MarkFramesPlaced(*workspace);
    return true;
}

void ResetPanelDocks() {
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    if (!workspace) {
        return;
    }
    QMainWindow& window = workspace->GetImpl().MainWindow();
    QList<QDockWidget*> docks;
    QList<int> extents;
    for (UIF::WorkspaceFrame* frame : workspace->GetFrames()) {
        if (QDockWidget* dock = frame->GetImpl().dock) {
            dock->setFloating(false);
            window.addDockWidget(Qt::BottomDockWidgetArea, dock, Qt::Horizontal);
            docks.append(dock);
            extents.append(kFirstPanelExtentPx);
        }
    }
    window.resizeDocks(docks, extents, Qt::Vertical);
}

} // namespace platform::ui

#include "WorkspaceMemory.h"

#include "PlatformHost/HostAccess.h"
#include "UIF/WindowClasses.h"
#include "WindowMenu.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QSettings>
#include <QStringList>

namespace host {
namespace {

const QString kGeometryKey = QStringLiteral("workspace/geometry");
const QString kLayoutKey = QStringLiteral("workspace/layout");
const QString kOpenPanelsKey = QStringLiteral("workspace/openPanels");
constexpr QSize kFirstWindowSize(1280, 800);

// A panel as saved: "window.captions:0", its window class and window id.
QString PanelKey(const UIF::WindowEntry& window) {
    return QStringLiteral("%1:%2")
        .arg(QString::fromStdString(window.windowTypeID))
        .arg(window.windowID);
}

} // namespace

WorkspaceMemory::WorkspaceMemory(QMainWindow& window, QDockWidget& projectDock)
    : window_(&window)
    , projectDock_(&projectDock) {}

void WorkspaceMemory::Save(QSettings& settings) const {
    QStringList openPanels;
    for (const UIF::WindowEntry& window : UIF::GetWindowList()) {
        if (IsWindowOpen(window)) {
            openPanels << PanelKey(window);
        }
    }
    settings.setValue(kGeometryKey, window_->saveGeometry());
    settings.setValue(kLayoutKey, platform::ui::SaveWorkspaceLayout());
    settings.setValue(kOpenPanelsKey, openPanels);
}

bool WorkspaceMemory::Restore(QSettings& settings) {
    const QByteArray layout = settings.value(kLayoutKey).toByteArray();
    if (layout.isEmpty()) {
        return false;
    }
    window_->restoreGeometry(settings.value(kGeometryKey).toByteArray());
    const QStringList openPanels = settings.value(kOpenPanelsKey).toStringList();
    for (const UIF::WindowEntry& window : UIF::GetWindowList()) {
        if (openPanels.contains(PanelKey(window))) {
            UIF::OpenWindow(window.windowTypeID, window.windowID);
        }
    }
    return platform::ui::RestoreWorkspaceLayout(layout);
}

void WorkspaceMemory::Reset() {
    window_->setWindowState(Qt::WindowNoState);
    window_->resize(kFirstWindowSize);
    projectDock_->setFloating(false);
    window_->addDockWidget(Qt::LeftDockWidgetArea, projectDock_);
    projectDock_->show();
    platform::ui::ResetPanelDocks();
    window_->resizeDocks({projectDock_.data()}, {kProjectPanelWidthPx}, Qt::Horizontal);
}

} // namespace host

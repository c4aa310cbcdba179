#include "WindowMenu.h"

#include "QtText.h"
#include "UIF/TabView.h"
#include "UIF/WindowClasses.h"
#include "UIF/Workspace.h"

namespace host {

bool IsWindowOpen(const UIF::WindowEntry& window) {
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    UIF::WorkspaceFrame* frame = workspace ? workspace->FindFrame(window.handlerID) : nullptr;
    return frame && frame->IsOpen() && frame->GetTabView() && frame->GetTabView()->IsVisible();
}

WindowMenu::WindowMenu(std::vector<QAction*> hostPanelActions, std::function<void()> resetLayout,
                       QWidget* parent)
    : QMenu(Localized("$$$/Corvala/Host/Menu/Window=&Window"), parent)
    , hostPanelActions_(std::move(hostPanelActions))
    , resetLayout_(std::move(resetLayout)) {
    setObjectName(QStringLiteral("windowMenu"));
    connect(this, &QMenu::aboutToShow, this, [this] { Refresh(); });
    Refresh();
}

void WindowMenu::Refresh() {
    clear();
    for (QAction* action : hostPanelActions_) {
        addAction(action);
    }
    const std::vector<UIF::WindowEntry> windows = UIF::GetWindowList();
    if (!windows.empty()) {
        addSeparator();
    }
    for (const UIF::WindowEntry& window : windows) {
        QAction* action = addAction(ToQString(window.title));
        action->setCheckable(true);
        action->setChecked(IsWindowOpen(window));
        connect(action, &QAction::triggered, this,
                [typeID = window.windowTypeID, windowID = window.windowID] {
                    UIF::OpenWindow(typeID, windowID);
                });
    }
    addSeparator();
    QAction* reset = addAction(Localized("$$$/Corvala/Host/Menu/ResetLayout=Reset Layout"));
    reset->setObjectName(QStringLiteral("resetLayoutAction"));
    connect(reset, &QAction::triggered, this, [this] { resetLayout_(); });
}

} // namespace host

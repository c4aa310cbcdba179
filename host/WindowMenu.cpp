#include "WindowMenu.h"

#include "QtText.h"
#include "UIF/TabView.h"
#include "UIF/WindowClasses.h"
#include "UIF/Workspace.h"

namespace host {
namespace {

bool IsPanelOpen(const zelcore::UTF16String& handlerID) {
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    UIF::WorkspaceFrame* frame = workspace ? workspace->FindFrame(handlerID) : nullptr;
    return frame && frame->IsOpen() && frame->GetTabView() && frame->GetTabView()->IsVisible();
}

} // namespace

WindowMenu::WindowMenu(std::vector<QAction*> hostPanelActions, QWidget* parent)
    : QMenu(Localized("$$$/Corvala/Host/Menu/Window=&Window"), parent)
    , hostPanelActions_(std::move(hostPanelActions)) {
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
        action->setChecked(IsPanelOpen(window.handlerID));
        connect(action, &QAction::triggered, this,
                [typeID = window.windowTypeID, windowID = window.windowID] {
                    UIF::OpenWindow(typeID, windowID);
                });
    }
}

} // namespace host

#include "UIF/TabView.h"

#include "KSL/Exception.h"
#include "UIF/Workspace.h"
#include "input/QtConversions.h"
#include "views/ViewImpl.h"
#include "workspace/WorkspaceImpl.h"

#include <QLayout>
#include <QTabBar>

namespace UIF {
namespace {

QDockWidget* DockOf(const WorkspaceFrame* frame) {
    return frame ? frame->GetImpl().dock.data() : nullptr;
}

// The tab bar the main window shows for a group of stacked docks, and the
// dock's index in it; null when the dock is in no tab group.
QTabBar* TabBarHolding(const QDockWidget* dock, int& index) {
    QMainWindow* window = qobject_cast<QMainWindow*>(dock->parentWidget());
    if (!window) {
        return nullptr;
    }
    for (QTabBar* tabBar : window->findChildren<QTabBar*>(Qt::FindDirectChildrenOnly)) {
        for (int tab = 0; tab < tabBar->count(); ++tab) {
            if (tabBar->tabData(tab).value<quintptr>() == reinterpret_cast<quintptr>(dock)) {
                index = tab;
                return tabBar;
            }
        }
    }
    return nullptr;
}

} // namespace

TabView::TabView(Commander* superCommander)
    : ViewBase(superCommander) {}

TabView::~TabView() {
    if (frame_) {
        frame_->tabView_ = nullptr;
        if (QDockWidget* dock = DockOf(frame_)) {
            dock->hide();
        }
    }
}

void TabView::Create(const zelcore::UTF16String& handlerID, const zelcore::UTF16String& title,
                     WorkspaceFrame* frame, bool showNow) {
    QDockWidget* dock = DockOf(frame);
    if (!dock) {
        throw KSL::Exception("TabView::Create needs a workspace frame");
    }
    if (frame->tabView_ && frame->tabView_ != this) {
        frame->tabView_->Destroy(kTabViewDestroy_KeepFrame);
        frame->tabView_ = nullptr;
    }
    handlerID_ = handlerID;
    frame_ = frame;
    frame->tabView_ = this;
    QWidget* widget = platform::ui::WidgetOfView(*this);
    dock->setWidget(widget);
    dock->setWindowTitle(platform::ui::Localized(zelcore::View(title)));
    widget->show();
    isCreated_ = true;
    // A creator that also handles commands hears those its views do not handle.
    AttachCommandHandler(dynamic_cast<CommandHandler*>(frame->creator_));
    OnCreate();
    if (showNow) {
        dock->show();
    }
}

bool TabView::IsVisible() const {
    const QDockWidget* dock = DockOf(frame_);
    return isCreated_ && dock && !dock->isHidden();
}

void TabView::Show() {
    if (QDockWidget* dock = DockOf(frame_)) {
        dock->show();
    }
}

void TabView::Hide() {
    if (QDockWidget* dock = DockOf(frame_)) {
        dock->hide();
    }
}

bool TabView::IsFrontMost() const {
    if (!IsVisible()) {
        return false;
    }
    int index = -1;
    const QTabBar* tabBar = TabBarHolding(DockOf(frame_), index);
    return !tabBar || !tabBar->isVisible() || tabBar->currentIndex() == index;
}

void TabView::BringToFront(bool raiseWindow, bool takeFocus) {
    QDockWidget* dock = DockOf(frame_);
    if (!dock) {
        return;
    }
    dock->show();
    // Raising a stacked dock makes it the current tab of its group.
    dock->raise();
    if (raiseWindow) {
        dock->window()->raise();
        dock->window()->activateWindow();
    }
    if (takeFocus) {
        SetFocus();
    }
}

void TabView::Destroy(std::uint32_t flags) {
    WorkspaceFrame* frame = frame_;
    if (isCreated_) {
        DestroySelf();
    }
    Workspace* workspace = Workspace::Instance();
    if ((flags & kTabViewDestroy_CloseFrame) && frame && workspace) {
        workspace->GetImpl().CloseFrame(*frame);
    }
}

void TabView::DestroySelf() {
    isCreated_ = false;
    if (frame_) {
        DetachCommandHandler(dynamic_cast<CommandHandler*>(frame_->creator_));
    }
    if (QWidget* widget = platform::ui::WidgetOfView(*this)) {
        widget->hide();
        widget->setParent(nullptr);
    }
    if (frame_) {
        frame_->tabView_ = nullptr;
        frame_ = nullptr;
    }
}

bool TabView::GetIsStacked() const {
    QDockWidget* dock = DockOf(frame_);
    Workspace* workspace = Workspace::Instance();
    if (!dock || dock->isFloating() || !workspace) {
        return false;
    }
    QMainWindow& window = workspace->GetImpl().MainWindow();
    const Qt::DockWidgetArea area = window.dockWidgetArea(dock);
    const QList<QDockWidget*> tabSiblings = window.tabifiedDockWidgets(dock);
    for (const WorkspaceFrame* other : workspace->GetFrames()) {
        QDockWidget* otherDock = DockOf(other);
        if (otherDock && otherDock != dock && !otherDock->isHidden() && !otherDock->isFloating() &&
            window.dockWidgetArea(otherDock) == area && !tabSiblings.contains(otherDock)) {
            return true;
        }
    }
    return false;
}

void TabView::UpdateStackedDimensions(bool relayoutNow) {
    QWidget* widget = platform::ui::WidgetOfView(*this);
    if (!widget) {
        return;
    }
    widget->setMinimumHeight(std::max(0, GetMinimumStackedHeight()));
    Workspace* workspace = Workspace::Instance();
    if (relayoutNow && workspace && workspace->GetImpl().MainWindow().layout()) {
        workspace->GetImpl().MainWindow().layout()->activate();
    }
}

} // namespace UIF

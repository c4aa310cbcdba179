#include "UIF/Workspace.h"

#include "PlatformHost/HostAccess.h"
#include "UIF/TabView.h"
#include "input/QtConversions.h"
#include "views/ViewImpl.h"
#include "workspace/WorkspaceImpl.h"

#include <QCloseEvent>
#include <QMainWindow>
#include <QTabBar>
#include <QTimer>

#include <algorithm>

namespace platform::ui {

Qt::DockWidgetArea AreaOfDockSide(UIF::DockSide side) {
    switch (side) {
    case UIF::kDockSide_Left:
        return Qt::LeftDockWidgetArea;
    case UIF::kDockSide_Right:
        return Qt::RightDockWidgetArea;
    case UIF::kDockSide_Top:
        return Qt::TopDockWidgetArea;
    case UIF::kDockSide_Bottom:
        break;
    }
    return Qt::BottomDockWidgetArea;
}

FrameDock::FrameDock(UIF::WorkspaceFrame& frame)
    : frame_(frame) {
    setObjectName(ToQString(zelcore::View(frame.GetHandlerName())));
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable |
                QDockWidget::DockWidgetFloatable);
    connect(this, &QDockWidget::topLevelChanged, this,
            [this](bool floating) { OnFloatingChanged(floating); });
}

void FrameDock::moveEvent(QMoveEvent* event) {
    QDockWidget::moveEvent(event);
    RememberDockedPlace();
}

void FrameDock::RememberDockedPlace() {
    if (!isFloating()) {
        dockedTopLeft_ = pos();
    }
}

void FrameDock::OnFloatingChanged(bool floating) {
    // A dock dragged out is where the person drops it (while dragged it
    // bypasses the window manager); one floated by its button or a double-click
    // on its title is placed here, once Qt has finished floating it.
    if (!floating || windowFlags().testFlag(Qt::X11BypassWindowManagerHint)) {
        return;
    }
    QTimer::singleShot(0, this, [this] {
        if (!isFloating()) {
            return;
        }
        constexpr int kFloatOffsetPx = 40;
        if (windowFlags().testFlag(Qt::FramelessWindowHint)) {
            // Without a window frame a floating panel cannot be told from the
            // window under it; the window manager's frame also moves and sizes it.
            setWindowFlag(Qt::FramelessWindowHint, false);
            setWindowFlags(windowFlags() | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint);
        }
        const QWidget* window = parentWidget();
        const QPoint docked = window ? window->mapToGlobal(dockedTopLeft_) : dockedTopLeft_;
        move(docked + QPoint(kFloatOffsetPx, kFloatOffsetPx));
        show();
    });
}

void FrameDock::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    RememberDockedPlace();
    QMainWindow* window = qobject_cast<QMainWindow*>(parentWidget());
    if (hasBeenShownDocked_ || isFloating() || !window) {
        return;
    }
    hasBeenShownDocked_ = true;
    const Qt::DockWidgetArea area = window->dockWidgetArea(this);
    const Qt::Orientation across = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea
                                       ? Qt::Horizontal
                                       : Qt::Vertical;
    window->resizeDocks({this}, {kFirstPanelExtentPx}, across);
}

void FrameDock::closeEvent(QCloseEvent* event) {
    // Close may take the frame out of the workspace; the dock itself is only
    // deleted later, so it may still finish this event.
    event->ignore();
    frame_.Close();
}

} // namespace platform::ui

namespace UIF {

WorkspaceFrame::WorkspaceFrame(zelcore::UTF16String handlerName, TabViewCreator* creator)
    : handlerName_(std::move(handlerName))
    , creator_(creator)
    , impl_(std::make_unique<Impl>()) {
    impl_->dock = new platform::ui::FrameDock(*this);
}

WorkspaceFrame::~WorkspaceFrame() {
    if (tabView_) {
        tabView_->frame_ = nullptr;
        if (QWidget* widget = platform::ui::WidgetOfView(*tabView_)) {
            widget->hide();
            widget->setParent(nullptr);
        }
    }
    if (impl_->dock) {
        impl_->dock->deleteLater();
    }
}

zelcore::UTF16String WorkspaceFrame::GetTitle() const {
    return impl_->dock ? platform::ui::ToUTF16(impl_->dock->windowTitle()) : zelcore::UTF16String();
}

FramePlacement WorkspaceFrame::GetPlacement() const {
    return impl_->dock && impl_->dock->isFloating() ? kFramePlacement_Floating
                                                    : kFramePlacement_Docked;
}

DockSide WorkspaceFrame::GetDockSide() const {
    switch (Workspace::Instance()->GetImpl().AreaOf(*this)) {
    case Qt::LeftDockWidgetArea:
        return kDockSide_Left;
    case Qt::RightDockWidgetArea:
        return kDockSide_Right;
    case Qt::TopDockWidgetArea:
        return kDockSide_Top;
    default:
        return kDockSide_Bottom;
    }
}

void WorkspaceFrame::Dock(DockSide side) {
    if (impl_->dock) {
        impl_->dock->setFloating(false);
        Workspace::Instance()->GetImpl().MainWindow().addDockWidget(
            platform::ui::AreaOfDockSide(side), impl_->dock);
    }
}

void WorkspaceFrame::Undock() {
    if (impl_->dock) {
        impl_->dock->setFloating(true);
    }
}

void WorkspaceFrame::StackAsTabWith(WorkspaceFrame& other) {
    if (impl_->dock && other.impl_->dock && &other != this) {
        other.impl_->dock->setFloating(false);
        Workspace::Instance()->GetImpl().MainWindow().tabifyDockWidget(other.impl_->dock,
                                                                       impl_->dock);
    }
}

std::vector<WorkspaceFrame*> WorkspaceFrame::GetTabGroup() const {
    std::vector<WorkspaceFrame*> group;
    if (!impl_->dock) {
        return group;
    }
    Workspace* workspace = Workspace::Instance();
    const QList<QDockWidget*> siblings =
        workspace->GetImpl().MainWindow().tabifiedDockWidgets(impl_->dock);
    // The main window keeps the places of floating and closed docks in the
    // group, so that they can return there; they are not in it meanwhile.
    for (WorkspaceFrame* frame : workspace->GetFrames()) {
        QDockWidget* dock = frame->impl_->dock;
        if (frame == this ||
            (siblings.contains(dock) && !dock->isFloating() && !dock->isHidden())) {
            group.push_back(frame);
        }
    }
    return group;
}

bool WorkspaceFrame::IsOpen() const {
    return impl_->dock && !impl_->dock->isHidden();
}

void WorkspaceFrame::Close() {
    if (!impl_->dock || impl_->dock->isHidden()) {
        return;
    }
    const bool viewCreated = tabView_ && tabView_->IsCreated();
    if (viewCreated && creator_ && !creator_->ShouldHideWhenClosed() &&
        creator_->ShouldDestroyWhenClosed()) {
        tabView_->Destroy(kTabViewDestroy_CloseFrame);
        return;
    }
    impl_->dock->hide();
}

} // namespace UIF

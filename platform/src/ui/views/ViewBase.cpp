#include "UIF/ViewBase.h"

#include "UIF/SubView.h"
#include "input/QtConversions.h"
#include "toolkit/ControlImpl.h"
#include "views/ViewAccessibility.h"
#include "views/ViewImpl.h"
#include "views/ViewWidget.h"
#include "zelui/controls/UI_ControlView.h"

#include <QApplication>

#include <algorithm>

namespace platform::ui {

UIF::ViewBase* ViewOfWidget(QWidget* widget) {
    auto* viewWidget = dynamic_cast<ViewWidget*>(widget);
    return viewWidget ? &viewWidget->Owner() : nullptr;
}

QWidget* WidgetOfView(const UIF::ViewBase& view) {
    return view.GetImpl().widget.data();
}

} // namespace platform::ui

namespace UIF {

ViewBase::ViewBase(Commander* superCommander)
    : Commander(superCommander)
    , impl_(std::make_unique<Impl>()) {
    impl_->owner = this;
    impl_->widget = new platform::ui::ViewWidget(*this);
    impl_->widget->hide();
}

ViewBase::~ViewBase() {
    for (SubView* child : impl_->subViews) {
        child->parentView_ = nullptr;
    }
    impl_->timers.clear();
    delete impl_->widget.data();
}

ViewBase* ViewBase::GetParent() const {
    return nullptr;
}

Rect ViewBase::GetBounds() const {
    return impl_->widget ? platform::ui::ToRect(impl_->widget->geometry()) : Rect();
}

void ViewBase::SetBounds(const Rect& bounds) {
    if (impl_->widget) {
        impl_->widget->setGeometry(platform::ui::ToQRect(bounds));
    }
}

Rect ViewBase::GetClientRect() const {
    const Rect bounds = GetBounds();
    return Rect::FromSize(0, 0, bounds.Width(), bounds.Height());
}

bool ViewBase::IsVisible() const {
    return impl_->widget && impl_->widget->isVisible();
}

void ViewBase::Show() {
    if (impl_->widget) {
        impl_->widget->show();
    }
}

void ViewBase::Hide() {
    if (impl_->widget) {
        impl_->widget->hide();
    }
}

void ViewBase::Invalidate() {
    if (impl_->widget) {
        impl_->staleArea = impl_->widget->rect();
        impl_->widget->update();
    }
}

void ViewBase::Invalidate(const Rect& area) {
    if (impl_->widget) {
        impl_->staleArea += platform::ui::ToQRect(area);
        impl_->widget->update(platform::ui::ToQRect(area));
    }
}

void ViewBase::SetFocus() {
    if (impl_->widget) {
        impl_->widget->setFocus(Qt::OtherFocusReason);
    }
}

void ViewBase::SetAccessibleName(const zelcore::UTF16String& name) {
    if (impl_->widget) {
        impl_->widget->setAccessibleName(platform::ui::Localized(zelcore::View(name)));
    }
}

void ViewBase::SetAccessibleFocusItem(const zelcore::UTF16String& name) {
    if (impl_->widget) {
        platform::ui::SetViewFocusItem(*impl_->widget,
                                       platform::ui::ToQString(zelcore::View(name)));
    }
}

bool ViewBase::HasFocus() const {
    QWidget* focused = QApplication::focusWidget();
    return impl_->widget && focused &&
           (focused == impl_->widget || impl_->widget->isAncestorOf(focused));
}

void ViewBase::AddSubView(SubView& child) {
    if (child.parentView_ == this || !impl_->widget || !child.impl_->widget) {
        return;
    }
    if (child.parentView_) {
        std::erase(child.parentView_->impl_->subViews, &child);
    }
    child.parentView_ = this;
    impl_->subViews.push_back(&child);
    child.impl_->widget->setParent(impl_->widget);
    child.impl_->widget->show();
    child.AttachedToView();
}

void ViewBase::AddControl(zelui::controls::UI_ControlView& control) {
    if (impl_->widget) {
        platform::ui::PlaceControl(control, *impl_->widget);
    }
}

void ViewBase::SetTimer(TimerID id, std::uint32_t intervalMilliseconds) {
    std::unique_ptr<QTimer>& timer = impl_->timers[id];
    if (!timer) {
        timer = std::make_unique<QTimer>();
        QObject::connect(timer.get(), &QTimer::timeout,
                         [this, id] { ViewEvents::TimerFired(*this, id); });
    }
    timer->start(static_cast<int>(intervalMilliseconds));
}

void ViewBase::RemoveTimer(TimerID id) {
    // A view may remove the timer from its own TimerFired; the QTimer must
    // outlive the signal that is calling it.
    if (auto found = impl_->timers.find(id); found != impl_->timers.end()) {
        found->second->stop();
        found->second.release()->deleteLater();
        impl_->timers.erase(found);
    }
}

bool ViewBase::HasTimer(TimerID id) const {
    return impl_->timers.contains(id);
}

void ViewBase::Draw(DC&, const Rect&) {}

bool ViewBase::MouseDown(const zelui::ui::UI_MouseEvent&) {
    return false;
}

bool ViewBase::MouseUp(const zelui::ui::UI_MouseEvent&) {
    return false;
}

bool ViewBase::MouseWheel(const zelui::ui::UI_MouseEvent&) {
    return false;
}

bool ViewBase::KeyDown(std::int32_t, std::uint32_t) {
    return false;
}

void ViewBase::TimerFired(TimerID) {}

bool ViewBase::DragAndDrop(const DragAndDropEvent&) {
    return false;
}

void ViewBase::SetDoubleBuffering(bool enable, bool eraseBackground) {
    impl_->doubleBuffered = enable;
    impl_->eraseBackground = eraseBackground;
    impl_->backBuffer = QImage();
    Invalidate();
}

void ViewBase::SetWantsDragAndDropEvents(bool wants) {
    if (impl_->widget) {
        impl_->widget->setAcceptDrops(wants);
    }
}

} // namespace UIF

#include "zelui/controls/UI_ControlView.h"

#include "input/QtConversions.h"
#include "toolkit/ControlEventBridge.h"
#include "toolkit/ControlImpl.h"
#include "zelui/controls/UI_InteractiveControlView.h"

#include <QAbstractScrollArea>

#include <cmath>

namespace zelui::controls {

UI_ControlView::Impl::Impl(QWidget* controlWidget)
    : widget(controlWidget) {}

UI_ControlView::Impl::~Impl() {
    if (widget) {
        widget->removeEventFilter(eventBridge.get());
        if (auto* scrollArea = qobject_cast<QAbstractScrollArea*>(widget.data())) {
            scrollArea->viewport()->removeEventFilter(eventBridge.get());
        }
        delete widget.data();
    }
}

UI_ControlView::UI_ControlView()
    : impl_(std::make_unique<Impl>(nullptr)) {
    impl_->widget = new platform::ui::ControlCanvas(*this);
    impl_->owner = this;
    impl_->eventBridge = std::make_unique<platform::ui::ControlEventBridge>(*this);
    impl_->widget->installEventFilter(impl_->eventBridge.get());
    impl_->widget->hide();
}

UI_ControlView::UI_ControlView(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {
    impl_->owner = this;
    QWidget* widget = impl_->widget;
    if (widget->testAttribute(Qt::WA_SetCursor)) {
        impl_->standardCursor = std::make_unique<QCursor>(widget->cursor());
    }
    impl_->eventBridge = std::make_unique<platform::ui::ControlEventBridge>(*this);
    widget->installEventFilter(impl_->eventBridge.get());
    widget->setMouseTracking(true);
    if (auto* scrollArea = qobject_cast<QAbstractScrollArea*>(widget)) {
        scrollArea->viewport()->installEventFilter(impl_->eventBridge.get());
        scrollArea->viewport()->setMouseTracking(true);
    }
    widget->hide();
}

UI_ControlView::~UI_ControlView() = default;

void UI_ControlView::Release() const {
    if (--refCount_ == 0) {
        delete this;
    }
}

UI_Rect UI_ControlView::GetBounds() const {
    return impl_->bounds;
}

void UI_ControlView::SetBounds(const UI_Rect& bounds) {
    impl_->bounds = bounds;
    if (impl_->widget) {
        const int left = static_cast<int>(std::floor(bounds.left));
        const int top = static_cast<int>(std::floor(bounds.top));
        impl_->widget->setGeometry(left, top, static_cast<int>(std::lround(bounds.Width())),
                                   static_cast<int>(std::lround(bounds.Height())));
    }
}

bool UI_ControlView::IsVisible() const {
    return impl_->shown;
}

void UI_ControlView::SetVisible(bool visible) {
    impl_->shown = visible;
    if (impl_->widget && impl_->widget->parentWidget()) {
        impl_->widget->setVisible(visible);
    }
}

bool UI_ControlView::IsDisabled() const {
    return impl_->widget && !impl_->widget->isEnabled();
}

void UI_ControlView::SetDisabled(bool disabled) {
    if (impl_->widget && impl_->widget->isEnabled() == disabled) {
        impl_->widget->setEnabled(!disabled);
    }
}

void UI_ControlView::SetToolTip(const zelcore::UTF16String& text, std::uint32_t delayMilliseconds) {
    if (!impl_->widget) {
        return;
    }
    if (!impl_->toolTip) {
        impl_->toolTip = std::make_unique<platform::ui::DelayedToolTip>(*impl_->widget);
    }
    impl_->toolTip->SetText(platform::ui::Localized(zelcore::View(text)),
                            static_cast<int>(delayMilliseconds));
    if (!impl_->hasOwnAccessibleName) {
        impl_->widget->setAccessibleName(platform::ui::Localized(zelcore::View(text)));
    }
}

zelcore::UTF16String UI_ControlView::GetToolTip() const {
    return impl_->toolTip ? platform::ui::ToUTF16(impl_->toolTip->Text()) : zelcore::UTF16String();
}

void UI_ControlView::SetAccessibleName(const zelcore::UTF16String& name) {
    if (impl_->widget) {
        impl_->hasOwnAccessibleName = true;
        impl_->widget->setAccessibleName(platform::ui::Localized(zelcore::View(name)));
    }
}

zelcore::UTF16String UI_ControlView::GetAccessibleName() const {
    return impl_->widget ? platform::ui::ToUTF16(impl_->widget->accessibleName())
                         : zelcore::UTF16String();
}

void UI_ControlView::SetFocus() {
    if (impl_->widget) {
        impl_->widget->setFocus(Qt::OtherFocusReason);
    }
}

bool UI_ControlView::HasFocus() const {
    return impl_->widget && impl_->widget->hasFocus();
}

void UI_ControlView::SetTakesKeyboardFocus(bool takesFocus) {
    if (impl_->widget) {
        impl_->widget->setFocusPolicy(takesFocus ? Qt::TabFocus : Qt::NoFocus);
    }
}

void UI_ControlView::Invalidate() {
    if (impl_->widget) {
        impl_->widget->update();
    }
}

void UI_ControlView::NotifyWhenChanged(ChangedNotification notification) {
    changedNotifications_.push_back(std::move(notification));
}

void UI_ControlView::NotifyChanged() {
    const UI_ControlChangedMessage message(this);
    // A notification may add notifications.
    const std::vector<ChangedNotification> notifications = changedNotifications_;
    for (const ChangedNotification& notify : notifications) {
        notify(message);
    }
}

bool UI_ControlView::HandleControlRequest(ControlRequest request) {
    if (request == kControlRequest_Activate && impl_->widget && impl_->widget->isEnabled()) {
        SetFocus();
        return true;
    }
    return false;
}

void UI_ControlView::UI_Draw(drawbot::Drawbot&) {}

bool UI_ControlView::UI_DoMouseEvent(const ui::UI_MouseEvent&) {
    return false;
}

bool UI_ControlView::UI_DoKeyboardEvent(const ui::UI_KeyboardEvent&) {
    return false;
}

bool UI_ControlView::UI_DoCursor(const ui::UI_CursorRequest&) {
    return false;
}

void UI_ControlView::UI_FocusChanged(UI_FocusChange) {}

UI_InteractiveControlView::UI_InteractiveControlView(std::unique_ptr<Impl> impl)
    : UI_ControlView(std::move(impl)) {}

void UI_InteractiveControlView::NotifyWhenChangedInteractively(
    InteractiveNotification notification) {
    interactiveNotifications_.push_back(std::move(notification));
}

void UI_InteractiveControlView::NotifyChangedInteractively(UI_InteractiveChange change) {
    const UI_InteractiveControlChangedMessage message(this, change);
    const std::vector<InteractiveNotification> notifications = interactiveNotifications_;
    for (const InteractiveNotification& notify : notifications) {
        notify(message);
    }
}

} // namespace zelui::controls

namespace platform::ui {

void PlaceControl(zelui::controls::UI_ControlView& control, QWidget& viewWidget) {
    auto& impl = control.GetImpl();
    if (!impl.widget) {
        return;
    }
    impl.widget->setParent(&viewWidget);
    control.SetBounds(impl.bounds);
    impl.widget->setVisible(impl.shown);
}

QWidget* WidgetOfControl(const zelui::controls::UI_ControlView& control) {
    return control.GetImpl().widget;
}

} // namespace platform::ui

#pragma once

#include "UIF/ViewBase.h"
#include "input/QtConversions.h"
#include "views/ViewImpl.h"

#include <QPointer>
#include <QWidget>

#include <string>

namespace platform::ui {

// A framework control's window inside its view's window. The window belongs
// to the control; it is gone early when the view's window goes first.
template <typename W> class ViewChild {
public:
    template <typename... Args>
    explicit ViewChild(UIF::ViewBase& parent, Args&&... args)
        : widget_(new W(std::forward<Args>(args)...)) {
        widget_->setParent(WidgetOfView(parent));
        widget_->show();
    }
    ViewChild(const ViewChild&) = delete;
    ViewChild& operator=(const ViewChild&) = delete;
    ~ViewChild() { Destroy(); }

    W* Get() const { return widget_.data(); }
    W* operator->() const { return widget_.data(); }
    explicit operator bool() const { return !widget_.isNull(); }

    void Destroy() { delete widget_.data(); }

    UIF::Rect Bounds() const { return widget_ ? ToRect(widget_->geometry()) : UIF::Rect(); }
    void SetBounds(const UIF::Rect& bounds) {
        if (widget_) {
            widget_->setGeometry(ToQRect(bounds));
        }
    }
    bool IsVisible() const { return widget_ && !widget_->isHidden(); }
    void SetVisible(bool visible) {
        if (widget_) {
            widget_->setVisible(visible);
        }
    }

private:
    QPointer<W> widget_;
};

// A station name no other control uses: the kind, then a process-wide serial.
std::string UniqueStationName(const char* kind);

} // namespace platform::ui

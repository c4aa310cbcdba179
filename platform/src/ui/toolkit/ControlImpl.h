#pragma once

#include "zelui/controls/UI_ControlView.h"

#include "toolkit/DelayedToolTip.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace zelui::controls {

// The control's window and the filter that turns its events into hooks.
struct UI_ControlView::Impl {
    explicit Impl(QWidget* controlWidget);
    ~Impl();

    UI_ControlView* owner = nullptr;
    QPointer<QWidget> widget;
    // The widget's own cursor, restored when UI_DoCursor declines.
    std::unique_ptr<QCursor> standardCursor;
    UI_Rect bounds;
    bool shown = true;
    std::unique_ptr<platform::ui::DelayedToolTip> toolTip;
    // Set once the control was named; the tooltip names it until then.
    bool hasOwnAccessibleName = false;
    std::unique_ptr<QObject> eventBridge;
};

} // namespace zelui::controls

namespace platform::ui {

// Puts the control's window into the view's window at the control's bounds.
void PlaceControl(zelui::controls::UI_ControlView& control, QWidget& viewWidget);

// The window of a control (null once it is gone).
QWidget* WidgetOfControl(const zelui::controls::UI_ControlView& control);

// The control's window for its standard widget type.
template <typename W> W* ControlWidget(const zelui::controls::UI_ControlView& control) {
    return qobject_cast<W*>(WidgetOfControl(control));
}

} // namespace platform::ui

#pragma once

#include "UIF/ViewBase.h"

#include <QImage>
#include <QPointer>
#include <QRegion>
#include <QTimer>
#include <QWidget>

#include <map>
#include <memory>
#include <vector>

namespace platform::ui {

class ViewWidget;

// The view whose own window the widget is, or null.
UIF::ViewBase* ViewOfWidget(QWidget* widget);
// The view's window; null once the window is gone.
QWidget* WidgetOfView(const UIF::ViewBase& view);

} // namespace platform::ui

namespace UIF {

struct ViewBase::Impl {
    ViewBase* owner = nullptr;
    QPointer<platform::ui::ViewWidget> widget;
    std::map<TimerID, std::unique_ptr<QTimer>> timers;
    std::vector<SubView*> subViews;

    bool doubleBuffered = false;
    bool eraseBackground = false;
    // The last drawing when double buffered, and the part of it that must be
    // drawn again before it is shown.
    QImage backBuffer;
    QRegion staleArea;
};

// Calls a view's protected hooks for its window.
class ViewEvents {
public:
    static void Draw(ViewBase& view, DC& dc, const Rect& area) { view.Draw(dc, area); }
    static bool MouseDown(ViewBase& view, const zelui::ui::UI_MouseEvent& event) {
        return view.MouseDown(event);
    }
    static bool MouseUp(ViewBase& view, const zelui::ui::UI_MouseEvent& event) {
        return view.MouseUp(event);
    }
    static bool MouseWheel(ViewBase& view, const zelui::ui::UI_MouseEvent& event) {
        return view.MouseWheel(event);
    }
    static bool KeyDown(ViewBase& view, std::int32_t keyCode, std::uint32_t modifiers) {
        return view.KeyDown(keyCode, modifiers);
    }
    static void TimerFired(ViewBase& view, TimerID id) { view.TimerFired(id); }
    static bool DragAndDrop(ViewBase& view, const DragAndDropEvent& event) {
        return view.DragAndDrop(event);
    }
    static void BoundsChanged(ViewBase& view) { view.BoundsChanged(); }
    static void FocusChanged(ViewBase& view) { view.FocusChanged(); }
};

} // namespace UIF

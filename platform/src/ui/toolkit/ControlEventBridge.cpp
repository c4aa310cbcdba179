#include "toolkit/ControlEventBridge.h"

#include "input/KeyTranslation.h"
#include "toolkit/ControlImpl.h"
#include "toolkit/DrawbotImpl.h"
#include "zelui/ui/UI_Cursor.h"
#include "zelui/ui/UI_Events.h"

#include <QAbstractScrollArea>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QPainter>

namespace platform::ui {
namespace {

Qt::CursorShape ShapeOf(zelui::ui::UI_CursorID cursor) {
    switch (cursor) {
    case zelui::ui::kCursor_IBeam:
        return Qt::IBeamCursor;
    case zelui::ui::kCursor_Crosshair:
        return Qt::CrossCursor;
    case zelui::ui::kCursor_PointingHand:
        return Qt::PointingHandCursor;
    case zelui::ui::kCursor_SizeHorizontal:
        return Qt::SizeHorCursor;
    case zelui::ui::kCursor_SizeVertical:
        return Qt::SizeVerCursor;
    case zelui::ui::kCursor_Move:
        return Qt::SizeAllCursor;
    case zelui::ui::kCursor_Forbidden:
        return Qt::ForbiddenCursor;
    case zelui::ui::kCursor_Wait:
        return Qt::WaitCursor;
    case zelui::ui::kCursor_Arrow:
    case zelui::ui::kCursor_Default:
        break;
    }
    return Qt::ArrowCursor;
}

zelui::ui::UI_MouseEventType MouseTypeOf(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
        return zelui::ui::kMouseEventType_Down;
    case QEvent::MouseButtonRelease:
        return zelui::ui::kMouseEventType_Up;
    case QEvent::MouseButtonDblClick:
        return zelui::ui::kMouseEventType_DoubleClick;
    default:
        return zelui::ui::kMouseEventType_Move;
    }
}

} // namespace

ControlEventBridge::ControlEventBridge(zelui::controls::UI_ControlView& control)
    : control_(control) {}

void ControlEventBridge::AnswerCursorRequest(QWidget& watched, const QPointF& position) {
    zelui::ui::UI_ResourceManager::SetCursor(zelui::ui::kCursor_Default);
    const zelui::ui::UI_CursorRequest request(&control_, static_cast<float>(position.x()),
                                              static_cast<float>(position.y()));
    const auto& impl = control_.GetImpl();
    if (control_.UI_DoCursor(request)) {
        watched.setCursor(ShapeOf(zelui::ui::UI_ResourceManager::GetCursor()));
    } else if (impl.standardCursor) {
        watched.setCursor(*impl.standardCursor);
    } else {
        watched.unsetCursor();
    }
}

bool ControlEventBridge::MouseEvent(QWidget& watched, QEvent& event) {
    auto& mouse = static_cast<QMouseEvent&>(event);
    QWidget* widget = control_.GetImpl().widget;
    // Controls see positions in their view's coordinates, as their bounds are.
    // The watched widget is the control's own or one inside it (a text
    // field's viewport), never an ancestor.
    const QPointF inView = watched.mapTo(widget, mouse.position()) + QPointF(widget->pos());
    if (event.type() == QEvent::MouseMove && mouse.buttons() == Qt::NoButton) {
        AnswerCursorRequest(watched, inView);
    }
    const zelui::ui::UI_MouseEvent uiEvent(
        MouseTypeOf(event.type()), ToMouseButton(mouse.button()), static_cast<float>(inView.x()),
        static_cast<float>(inView.y()), ToKeyModifiers(mouse.modifiers()));
    return control_.UI_DoMouseEvent(uiEvent);
}

bool ControlEventBridge::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget) {
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return MouseEvent(*widget, *event);
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return control_.UI_DoKeyboardEvent(ToKeyboardEvent(static_cast<QKeyEvent&>(*event)));
    case QEvent::FocusIn:
        control_.UI_FocusChanged(zelui::controls::kFocusChange_Gained);
        return false;
    case QEvent::FocusOut:
        control_.UI_FocusChanged(zelui::controls::kFocusChange_Lost);
        return false;
    default:
        return false;
    }
}

ControlCanvas::ControlCanvas(zelui::controls::UI_ControlView& control)
    : control_(control) {
    setMouseTracking(true);
}

void ControlCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // The control draws in its view's coordinates, as its bounds are given.
    painter.translate(-QPointF(pos()));
    auto impl = std::make_unique<zelui::drawbot::Drawbot::Impl>();
    impl->painter = &painter;
    zelui::drawbot::Drawbot drawbot(std::move(impl));
    control_.UI_Draw(drawbot);
    if (hasFocus()) {
        // The same focus frame on every drawn control, so a keyboard user
        // sees where the keys go.
        painter.resetTransform();
        QPen pen(palette().color(QPalette::Highlight));
        pen.setStyle(Qt::DotLine);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

} // namespace platform::ui

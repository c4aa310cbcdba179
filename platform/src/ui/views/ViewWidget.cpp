#include "views/ViewWidget.h"

#include "UIF/Colors.h"
#include "drawing/DCImpl.h"
#include "input/KeyTranslation.h"
#include "input/QtConversions.h"
#include "views/ViewImpl.h"
#include "zelui/ui/UI_Events.h"

#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>

namespace platform::ui {
namespace {

UIF::DragAndDropEvent ToDragEvent(UIF::DragAndDropPhase phase, const QPoint& position,
                                  const QMimeData* data) {
    UIF::DragAndDropEvent event;
    event.phase = phase;
    event.x = position.x();
    event.y = position.y();
    if (data) {
        event.text = ToUTF16(data->text());
        for (const QUrl& url : data->urls()) {
            event.urls.push_back(ToUTF16(url.toString()));
        }
    }
    return event;
}

zelui::ui::UI_MouseEvent ToViewMouseEvent(zelui::ui::UI_MouseEventType type,
                                          const QMouseEvent& event) {
    const QPointF position = event.position();
    return zelui::ui::UI_MouseEvent(
        type, ToMouseButton(event.button()), static_cast<float>(position.x()),
        static_cast<float>(position.y()), ToKeyModifiers(event.modifiers()));
}

} // namespace

ViewWidget::ViewWidget(UIF::ViewBase& owner)
    : owner_(owner) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ViewWidget::DrawInto(QPaintDevice& device, const QRect& area, bool erase) {
    QPainter painter(&device);
    painter.setClipRect(area);
    if (erase) {
        painter.fillRect(area, ToQColor(UIF::GetColor(UIF::kColor_WindowBackground)));
    }
    UIF::DC dc(std::make_unique<UIF::DC::Impl>(painter, area));
    UIF::ViewEvents::Draw(owner_, dc, ToRect(area));
}

void ViewWidget::paintEvent(QPaintEvent* event) {
    UIF::ViewBase::Impl& impl = owner_.GetImpl();
    if (!impl.doubleBuffered) {
        impl.staleArea = QRegion();
        DrawInto(*this, event->rect(), true);
        return;
    }
    const qreal ratio = devicePixelRatioF();
    if (impl.backBuffer.isNull() || impl.backBuffer.size() != size() * ratio) {
        impl.backBuffer = QImage(size() * ratio, QImage::Format_ARGB32_Premultiplied);
        impl.backBuffer.setDevicePixelRatio(ratio);
        impl.staleArea = rect();
    }
    if (!impl.staleArea.isEmpty()) {
        DrawInto(impl.backBuffer, impl.staleArea.boundingRect(), impl.eraseBackground);
        impl.staleArea = QRegion();
    }
    QPainter painter(this);
    const QRect area = event->rect();
    painter.drawImage(area, impl.backBuffer,
                      QRectF(QPointF(area.topLeft()) * ratio, QSizeF(area.size()) * ratio));
}

void ViewWidget::resizeEvent(QResizeEvent*) {
    owner_.GetImpl().backBuffer = QImage();
    UIF::ViewEvents::BoundsChanged(owner_);
}

void ViewWidget::moveEvent(QMoveEvent*) {
    UIF::ViewEvents::BoundsChanged(owner_);
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
    if (!UIF::ViewEvents::MouseDown(owner_,
                                    ToViewMouseEvent(zelui::ui::kMouseEventType_Down, *event))) {
        event->ignore();
    }
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (!UIF::ViewEvents::MouseUp(owner_,
                                  ToViewMouseEvent(zelui::ui::kMouseEventType_Up, *event))) {
        event->ignore();
    }
}

void ViewWidget::wheelEvent(QWheelEvent* event) {
    constexpr float kEighthsOfDegreePerNotch = 120.0f;
    const QPointF position = event->position();
    const zelui::ui::UI_MouseEvent wheel(
        zelui::ui::kMouseEventType_Wheel, zelui::ui::kMouseButton_None,
        static_cast<float>(position.x()), static_cast<float>(position.y()),
        ToKeyModifiers(event->modifiers()),
        static_cast<float>(event->angleDelta().y()) / kEighthsOfDegreePerNotch);
    if (!UIF::ViewEvents::MouseWheel(owner_, wheel)) {
        event->ignore();
    }
}

void ViewWidget::keyPressEvent(QKeyEvent* event) {
    const std::int32_t keyCode = ToViewKeyCode(*event);
    if (keyCode == 0 ||
        !UIF::ViewEvents::KeyDown(owner_, keyCode, ToKeyModifiers(event->modifiers()))) {
        event->ignore();
    }
}

void ViewWidget::focusInEvent(QFocusEvent*) {
    UIF::ViewEvents::FocusChanged(owner_);
}

void ViewWidget::focusOutEvent(QFocusEvent*) {
    UIF::ViewEvents::FocusChanged(owner_);
}

void ViewWidget::dragEnterEvent(QDragEnterEvent* event) {
    if (UIF::ViewEvents::DragAndDrop(
            owner_,
            ToDragEvent(UIF::kDragAndDrop_Enter, event->position().toPoint(), event->mimeData()))) {
        event->acceptProposedAction();
    }
}

void ViewWidget::dragMoveEvent(QDragMoveEvent* event) {
    if (UIF::ViewEvents::DragAndDrop(
            owner_,
            ToDragEvent(UIF::kDragAndDrop_Move, event->position().toPoint(), event->mimeData()))) {
        event->acceptProposedAction();
    } else {
        event->ignore();
    }
}

void ViewWidget::dragLeaveEvent(QDragLeaveEvent*) {
    UIF::ViewEvents::DragAndDrop(owner_, ToDragEvent(UIF::kDragAndDrop_Leave, QPoint(), nullptr));
}

void ViewWidget::dropEvent(QDropEvent* event) {
    if (UIF::ViewEvents::DragAndDrop(
            owner_,
            ToDragEvent(UIF::kDragAndDrop_Drop, event->position().toPoint(), event->mimeData()))) {
        event->acceptProposedAction();
    }
}

} // namespace platform::ui

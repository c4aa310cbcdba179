#include "controls/ColorRowWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace platform::ui {
namespace {

constexpr int kPresetGapPx = 2;

} // namespace

ColorRowWidget::ColorRowWidget(Callbacks callbacks)
    : callbacks_(std::move(callbacks)) {
    // Tab only: a click must not end a text edit in progress.
    setFocusPolicy(Qt::TabFocus);
}

const std::vector<QColor>& ColorRowWidget::Presets() {
    // The eight colours every caption format can show.
    static const std::vector<QColor> presets{Qt::white,   Qt::yellow, Qt::cyan, Qt::green,
                                             Qt::magenta, Qt::red,    Qt::blue, Qt::black};
    return presets;
}

void ColorRowWidget::SetColor(const QColor& color) {
    color_ = color;
    update();
}

QRect ColorRowWidget::SwatchRect() const {
    return QRect(0, 0, height(), height());
}

QRect ColorRowWidget::PresetRect(int index) const {
    const int sizePx = std::max(height() - 6, 4);
    const int x = height() + 4 + index * (sizePx + kPresetGapPx);
    return QRect(x, (height() - sizePx) / 2, sizePx, sizePx);
}

int ColorRowWidget::PresetAt(const QPoint& point) const {
    for (int index = 0; index < static_cast<int>(Presets().size()); ++index) {
        if (PresetRect(index).contains(point)) {
            return index;
        }
    }
    return -1;
}

void ColorRowWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor frame =
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    painter.setPen(frame);
    painter.setBrush(color_);
    painter.drawRect(SwatchRect().adjusted(0, 0, -1, -1));
    for (int index = 0; index < static_cast<int>(Presets().size()); ++index) {
        painter.setBrush(Presets()[static_cast<std::size_t>(index)]);
        painter.drawRect(PresetRect(index).adjusted(0, 0, -1, -1));
    }
    if (hasFocus()) {
        QPen pen(palette().color(QPalette::Highlight));
        pen.setStyle(Qt::DotLine);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        const QRect cell = focusedCell_ < 0 ? SwatchRect() : PresetRect(focusedCell_);
        painter.drawRect(cell.adjusted(-1, -1, 0, 0));
    }
}

void ColorRowWidget::keyPressEvent(QKeyEvent* event) {
    const int lastCell = static_cast<int>(Presets().size()) - 1;
    if (event->modifiers() != Qt::NoModifier) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
        focusedCell_ = std::max(focusedCell_ - 1, -1);
        update();
        return;
    case Qt::Key_Right:
        focusedCell_ = std::min(focusedCell_ + 1, lastCell);
        update();
        return;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (focusedCell_ < 0) {
            callbacks_.swatchClicked();
        } else {
            SetColor(Presets()[static_cast<std::size_t>(focusedCell_)]);
            callbacks_.presetChosen(color_);
        }
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ColorRowWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPoint point = event->position().toPoint();
    if (SwatchRect().contains(point)) {
        gesture_ = Gesture::SwatchPressed;
        pressPosition_ = point;
        return;
    }
    if (const int preset = PresetAt(point); preset >= 0) {
        SetColor(Presets()[static_cast<std::size_t>(preset)]);
        callbacks_.presetChosen(color_);
    }
}

void ColorRowWidget::mouseMoveEvent(QMouseEvent* event) {
    if (gesture_ == Gesture::SwatchPressed &&
        (event->position().toPoint() - pressPosition_).manhattanLength() >=
            QApplication::startDragDistance()) {
        gesture_ = Gesture::Eyedropper;
        setCursor(Qt::CrossCursor);
        callbacks_.eyedropperStarted();
    }
    if (gesture_ == Gesture::Eyedropper) {
        const QColor sampled = SampleScreen(event->globalPosition());
        if (sampled.isValid()) {
            SetColor(sampled);
        }
    }
}

void ColorRowWidget::mouseReleaseEvent(QMouseEvent* event) {
    const Gesture ended = std::exchange(gesture_, Gesture::None);
    if (ended == Gesture::SwatchPressed && SwatchRect().contains(event->position().toPoint())) {
        callbacks_.swatchClicked();
    } else if (ended == Gesture::Eyedropper) {
        unsetCursor();
        callbacks_.eyedropperEnded(color_);
    }
}

QColor ColorRowWidget::SampleScreen(const QPointF& globalPosition) const {
    QWidget* under = QApplication::widgetAt(globalPosition.toPoint());
    if (!under) {
        return QColor();
    }
    const QPoint local = under->mapFromGlobal(globalPosition.toPoint());
    const QImage pixel = under->grab(QRect(local, QSize(1, 1))).toImage();
    return pixel.isNull() ? QColor() : pixel.pixelColor(0, 0);
}

} // namespace platform::ui

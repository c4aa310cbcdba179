#include "toolkit/DelayedToolTip.h"

#include <QCursor>
#include <QEvent>
#include <QToolTip>

namespace platform::ui {

DelayedToolTip::DelayedToolTip(QWidget& widget)
    : widget_(&widget) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (widget_ && widget_->underMouse()) {
            QToolTip::showText(QCursor::pos(), text_, widget_);
        }
    });
    widget.installEventFilter(this);
}

void DelayedToolTip::SetText(const QString& text, int delayMilliseconds) {
    text_ = text;
    timer_.setInterval(delayMilliseconds);
}

bool DelayedToolTip::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::Enter:
        if (!text_.isEmpty()) {
            timer_.start();
        }
        return false;
    case QEvent::Leave:
    case QEvent::MouseButtonPress:
        timer_.stop();
        QToolTip::hideText();
        return false;
    case QEvent::ToolTip:
        return true;
    default:
        return false;
    }
}

} // namespace platform::ui

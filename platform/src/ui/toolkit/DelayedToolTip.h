#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

namespace platform::ui {

// Shows a widget's tip once the pointer has rested on it for the delay (Qt's
// own tip, which shows at its fixed delay, is suppressed); a press or leaving
// hides it.
class DelayedToolTip : public QObject {
public:
    explicit DelayedToolTip(QWidget& widget);

    void SetText(const QString& text, int delayMilliseconds);
    const QString& Text() const { return text_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> widget_;
    QString text_;
    QTimer timer_;
};

} // namespace platform::ui

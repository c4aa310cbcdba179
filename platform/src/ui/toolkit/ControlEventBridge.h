#pragma once

#include <QObject>
#include <QWidget>

namespace zelui::controls {
class UI_ControlView;
}

namespace platform::ui {

// Watches a control's window (and a scroll area's viewport) and hands its
// input, focus, cursor and tooltip events to the control's hooks first.
class ControlEventBridge : public QObject {
public:
    explicit ControlEventBridge(zelui::controls::UI_ControlView& control);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool MouseEvent(QWidget& watched, QEvent& event);
    void AnswerCursorRequest(QWidget& watched, const QPointF& position);

    zelui::controls::UI_ControlView& control_;
};

// The window of a control that draws itself with UI_Draw.
class ControlCanvas : public QWidget {
public:
    explicit ControlCanvas(zelui::controls::UI_ControlView& control);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    zelui::controls::UI_ControlView& control_;
};

} // namespace platform::ui

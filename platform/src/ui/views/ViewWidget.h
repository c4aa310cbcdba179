#pragma once

#include "UIF/ViewBase.h"

#include <QWidget>

namespace platform::ui {

// The window of an SDK view: turns its Qt events into the view's hooks.
class ViewWidget : public QWidget {
public:
    explicit ViewWidget(UIF::ViewBase& owner);

    UIF::ViewBase& Owner() const { return owner_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void DrawInto(QPaintDevice& device, const QRect& area, bool erase);

    UIF::ViewBase& owner_;
};

} // namespace platform::ui

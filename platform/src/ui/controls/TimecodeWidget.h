#pragma once

#include "UIF/HotTimecodeControl.h"

#include <QLineEdit>
#include <QPointer>
#include <QWidget>

namespace platform::ui {

// The window of UIF::HotTimecodeControl: draws the label, scrubs, opens the
// inline editor and the time display menu, and reports to the control.
class TimecodeWidget : public QWidget {
public:
    struct Owner {
        virtual ~Owner() = default;
        virtual QString Label() const = 0;
        virtual zelmediatypes::TickTime Time() const = 0;
        virtual zelmediatypes::TickTime FrameDuration() const = 0;
        virtual zelmediatypes::TimeDisplay Display() const = 0;
        virtual void Scrubbed(zelmediatypes::TickTime time, bool ended) = 0;
        virtual void EditTextChanged(const QString& text) = 0;
        virtual void EditConfirmed(const QString& text) = 0;
        virtual void DisplayChosen(zelmediatypes::TimeDisplay display) = 0;
    };

    explicit TimecodeWidget(Owner& owner);

    void SetBackground(UIF::ColorID color);
    void BeginEdit();
    bool IsEditing() const { return !editor_.isNull(); }
    QString EditText() const { return editor_ ? editor_->text() : QString(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void EndEdit(bool confirm);

    Owner& owner_;
    UIF::ColorID background_ = UIF::kColor_WindowBackground;
    QPointer<QLineEdit> editor_;
    bool pressed_ = false;
    bool scrubbing_ = false;
    QPointF pressPosition_;
    zelmediatypes::TickTime pressTime_;
};

} // namespace platform::ui

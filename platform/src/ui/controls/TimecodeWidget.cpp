#include "controls/TimecodeWidget.h"

#include "input/QtConversions.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace platform::ui {
namespace {

using zelmediatypes::TimeDisplay;

struct DisplayChoice {
    TimeDisplay display;
    const char* title;
};

constexpr DisplayChoice kDisplayChoices[] = {
    {zelmediatypes::kTimeDisplay_23976Timecode,
     "$$$/Corvala/TimeDisplay/23976=23.976 fps Timecode"},
    {zelmediatypes::kTimeDisplay_24Timecode, "$$$/Corvala/TimeDisplay/24=24 fps Timecode"},
    {zelmediatypes::kTimeDisplay_25Timecode, "$$$/Corvala/TimeDisplay/25=25 fps Timecode"},
    {zelmediatypes::kTimeDisplay_2997DropTimecode,
     "$$$/Corvala/TimeDisplay/2997Drop=29.97 fps Drop-Frame Timecode"},
    {zelmediatypes::kTimeDisplay_2997NonDropTimecode,
     "$$$/Corvala/TimeDisplay/2997NonDrop=29.97 fps Non Drop-Frame Timecode"},
    {zelmediatypes::kTimeDisplay_30Timecode, "$$$/Corvala/TimeDisplay/30=30 fps Timecode"},
    {zelmediatypes::kTimeDisplay_50Timecode, "$$$/Corvala/TimeDisplay/50=50 fps Timecode"},
    {zelmediatypes::kTimeDisplay_5994DropTimecode,
     "$$$/Corvala/TimeDisplay/5994Drop=59.94 fps Drop-Frame Timecode"},
    {zelmediatypes::kTimeDisplay_5994NonDropTimecode,
     "$$$/Corvala/TimeDisplay/5994NonDrop=59.94 fps Non Drop-Frame Timecode"},
    {zelmediatypes::kTimeDisplay_60Timecode, "$$$/Corvala/TimeDisplay/60=60 fps Timecode"},
    {zelmediatypes::kTimeDisplay_Frames, "$$$/Corvala/TimeDisplay/Frames=Frames"},
    {zelmediatypes::kTimeDisplay_AudioSamples48kHz,
     "$$$/Corvala/TimeDisplay/AudioSamples=Audio Samples"},
    {zelmediatypes::kTimeDisplay_Milliseconds, "$$$/Corvala/TimeDisplay/Milliseconds=Milliseconds"},
};

} // namespace

TimecodeWidget::TimecodeWidget(Owner& owner)
    : owner_(owner) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setCursor(Qt::SizeHorCursor);
}

void TimecodeWidget::SetBackground(UIF::ColorID color) {
    background_ = color;
    update();
}

void TimecodeWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ToQColor(UIF::GetColor(background_)));
    if (IsEditing()) {
        return;
    }
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Link));
    painter.drawText(rect().adjusted(2, 0, -2, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     owner_.Label());
}

void TimecodeWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || IsEditing()) {
        event->ignore();
        return;
    }
    pressed_ = true;
    scrubbing_ = false;
    pressPosition_ = event->position();
    pressTime_ = owner_.Time();
}

void TimecodeWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!pressed_) {
        return;
    }
    const double movedPx = event->position().x() - pressPosition_.x();
    if (!scrubbing_ && std::abs(movedPx) < QApplication::startDragDistance()) {
        return;
    }
    scrubbing_ = true;
    // One frame a pixel.
    const auto frames = static_cast<std::int64_t>(std::lround(movedPx));
    owner_.Scrubbed(pressTime_ + owner_.FrameDuration() * frames, false);
    update();
}

void TimecodeWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (!std::exchange(pressed_, false)) {
        event->ignore();
        return;
    }
    if (scrubbing_) {
        scrubbing_ = false;
        owner_.Scrubbed(owner_.Time(), true);
    } else {
        BeginEdit();
    }
}

void TimecodeWidget::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    for (const DisplayChoice& choice : kDisplayChoices) {
        QAction* action = menu.addAction(Localized(zelcore::ToUTF16(choice.title)));
        action->setCheckable(true);
        action->setChecked(choice.display == owner_.Display());
        action->setData(static_cast<int>(choice.display));
    }
    if (QAction* chosen = menu.exec(event->globalPos())) {
        update();
        owner_.DisplayChosen(static_cast<TimeDisplay>(chosen->data().toInt()));
    }
}

void TimecodeWidget::focusInEvent(QFocusEvent* event) {
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        BeginEdit();
    }
}

void TimecodeWidget::BeginEdit() {
    if (IsEditing()) {
        return;
    }
    editor_ = new QLineEdit(this);
    editor_->setFrame(false);
    editor_->setFont(font());
    editor_->setGeometry(rect());
    editor_->setText(owner_.Label());
    editor_->selectAll();
    editor_->installEventFilter(this);
    connect(editor_, &QLineEdit::textEdited, this,
            [this](const QString& text) { owner_.EditTextChanged(text); });
    connect(editor_, &QLineEdit::editingFinished, this, [this] { EndEdit(true); });
    editor_->show();
    editor_->setFocus(Qt::MouseFocusReason);
    update();
}

void TimecodeWidget::EndEdit(bool confirm) {
    if (!editor_) {
        return;
    }
    // The editor may be the sender of the signal that ends the edit.
    QLineEdit* editor = editor_.data();
    editor_.clear();
    const QString text = editor->text();
    editor->removeEventFilter(this);
    editor->hide();
    editor->setParent(nullptr);
    editor->deleteLater();
    update();
    // Last: a listener of the confirmed time may destroy this control.
    if (confirm) {
        owner_.EditConfirmed(text);
    }
}

bool TimecodeWidget::eventFilter(QObject* watched, QEvent* event) {
    if (watched == editor_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        EndEdit(false);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace platform::ui

#include "zelui/controls/UI_HotTextNumber.h"

#include "input/QtConversions.h"
#include "toolkit/ControlImpl.h"
#include "zelui/drawbot/Drawbot.h"
#include "zelui/ui/UI_Cursor.h"
#include "zelui/ui/UI_Events.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <cmath>

namespace zelui::controls {

// The inline editor over the number while the user types.
class HotTextNumberEditor : public QObject {
public:
    HotTextNumberEditor(UI_HotTextNumber& owner, QWidget& host)
        : owner_(owner)
        , edit_(new QLineEdit(&host)) {
        edit_->setFrame(false);
        edit_->setGeometry(host.rect());
        edit_->setText(platform::ui::ToQString(zelcore::View(owner.GetText())));
        edit_->selectAll();
        edit_->installEventFilter(this);
        connect(edit_, &QLineEdit::editingFinished, this, [this] { owner_.EndEdit(true); });
        edit_->show();
        edit_->setFocus(Qt::MouseFocusReason);
    }
    ~HotTextNumberEditor() override {
        if (edit_) {
            // Hiding takes the focus away, which would end the edit again.
            disconnect(edit_, nullptr, this, nullptr);
            edit_->removeEventFilter(this);
            edit_->hide();
            edit_->setParent(nullptr);
            edit_->deleteLater();
        }
    }

    QString Text() const { return edit_ ? edit_->text() : QString(); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            owner_.EndEdit(false);
            return true;
        }
        return false;
    }

private:
    UI_HotTextNumber& owner_;
    QPointer<QLineEdit> edit_;
};

UI_HotTextNumber::UI_HotTextNumber() {
    GetImpl().widget->setFocusPolicy(Qt::StrongFocus);
}

UI_HotTextNumber::~UI_HotTextNumber() = default;

double UI_HotTextNumber::Conform(double value) const {
    const double scale = std::pow(10.0, decimalPlaces_);
    const double rounded = std::round(value * scale) / scale;
    return std::clamp(rounded, minimum_, std::max(minimum_, maximum_));
}

void UI_HotTextNumber::SetValue(double value) {
    value_ = Conform(value);
    Invalidate();
}

void UI_HotTextNumber::SetMinimum(double minimum) {
    minimum_ = minimum;
    SetValue(value_);
}

void UI_HotTextNumber::SetMaximum(double maximum) {
    maximum_ = maximum;
    SetValue(value_);
}

void UI_HotTextNumber::SetDecimalPlaces(std::int32_t places) {
    decimalPlaces_ = std::clamp(places, 0, 6);
    SetValue(value_);
}

zelcore::UTF16String UI_HotTextNumber::GetText() const {
    return platform::ui::ToUTF16(QString::number(value_, 'f', decimalPlaces_));
}

bool UI_HotTextNumber::IsEditing() const {
    return editor_ != nullptr;
}

void UI_HotTextNumber::SetValueFromUser(double value, UI_InteractiveChange change) {
    value_ = Conform(value);
    Invalidate();
    NotifyChangedInteractively(change);
    if (change == kInteractiveChange_Final) {
        NotifyChanged();
    }
}

void UI_HotTextNumber::BeginEdit() {
    if (!editor_ && GetImpl().widget) {
        editor_ = std::make_unique<HotTextNumberEditor>(*this, *GetImpl().widget);
    }
}

void UI_HotTextNumber::EndEdit(bool accept) {
    if (!editor_) {
        return;
    }
    // The line edit may be the sender of the signal that ends the edit; the
    // editor only schedules its deletion.
    const std::unique_ptr<HotTextNumberEditor> ending = std::move(editor_);
    const QString text = ending->Text().trimmed();
    Invalidate();
    bool isNumber = false;
    const double typed = QLocale::c().toDouble(text, &isNumber);
    // Last: a notification may release this control.
    if (accept && isNumber && std::isfinite(typed)) {
        SetValueFromUser(typed, kInteractiveChange_Final);
    }
}

void UI_HotTextNumber::UI_Draw(drawbot::Drawbot& drawbot) {
    if (editor_) {
        return;
    }
    const UI_Rect bounds = GetBounds();
    drawbot::FontSpec font;
    font.family = platform::ui::ToUTF16(QApplication::font().family());
    font.sizePixels = std::max(9.0f, bounds.Height() - 7.0f);
    font.styleFlags = drawbot::kFontStyle_Underline;
    const drawbot::TextMetrics metrics = drawbot.MeasureString(zelcore::View(GetText()), font);
    const float baseline =
        bounds.top + (bounds.Height() + metrics.ascentPixels - metrics.descentPixels) / 2.0f;
    drawbot.DrawString(
        zelcore::View(GetText()), font, bounds.left + 1.0f, baseline,
        ui::GetColor(IsDisabled() ? ui::kUIColor_ControlTextDisabled : ui::kUIColor_HotText));
}

bool UI_HotTextNumber::UI_DoMouseEvent(const ui::UI_MouseEvent& event) {
    if (IsDisabled() || editor_) {
        return false;
    }
    switch (event.GetType()) {
    case ui::kMouseEventType_Down:
        if (event.GetButton() != ui::kMouseButton_First) {
            return false;
        }
        pressed_ = true;
        scrubbing_ = false;
        pressX_ = event.GetX();
        pressValue_ = value_;
        return true;
    case ui::kMouseEventType_Move: {
        if (!pressed_) {
            return false;
        }
        const float movedPx = event.GetX() - pressX_;
        if (!scrubbing_) {
            if (std::abs(movedPx) < static_cast<float>(QApplication::startDragDistance())) {
                return true;
            }
            scrubbing_ = true;
            NotifyChangedInteractively(kInteractiveChange_Begin);
        }
        const double unitsPerPx = (event.GetModifiers() & ui::kKeyModifier_Shift) ? 10.0
                                  : (event.GetModifiers() & ui::kKeyModifier_Control)
                                      ? std::pow(10.0, -decimalPlaces_)
                                      : 1.0;
        const double scrubbed = Conform(pressValue_ + std::round(movedPx) * unitsPerPx);
        if (scrubbed != value_) {
            SetValueFromUser(scrubbed, kInteractiveChange_Intermediate);
        }
        return true;
    }
    case ui::kMouseEventType_Up:
        if (!std::exchange(pressed_, false)) {
            return false;
        }
        if (std::exchange(scrubbing_, false)) {
            SetValueFromUser(value_, kInteractiveChange_Final);
        } else {
            BeginEdit();
        }
        return true;
    default:
        return false;
    }
}

bool UI_HotTextNumber::UI_DoCursor(const ui::UI_CursorRequest&) {
    if (IsDisabled()) {
        return false;
    }
    ui::UI_ResourceManager::SetCursor(ui::kCursor_SizeHorizontal);
    return true;
}

} // namespace zelui::controls

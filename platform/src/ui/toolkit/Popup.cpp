#include "zelui/controls/UI_Popup.h"

#include "input/QtConversions.h"
#include "toolkit/ControlImpl.h"
#include "toolkit/PopupAccessibility.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QStandardItemModel>

namespace zelui::controls {
namespace {

// Marks the chosen item with a check in the open list.
void MarkChosenItem(QComboBox& combo, bool checkStyle) {
    auto* model = qobject_cast<QStandardItemModel*>(combo.model());
    if (!model) {
        return;
    }
    for (int row = 0; row < model->rowCount(); ++row) {
        QStandardItem* item = model->item(row);
        if (checkStyle) {
            item->setData(row == combo.currentIndex() ? Qt::Checked : Qt::Unchecked,
                          Qt::CheckStateRole);
        } else {
            item->setData(QVariant(), Qt::CheckStateRole);
        }
    }
}

} // namespace

UI_Popup::UI_Popup()
    : UI_ControlView(std::make_unique<Impl>(new QComboBox())) {
    auto* combo = platform::ui::ControlWidget<QComboBox>(*this);
    platform::ui::NameComboBoxByItsOwnName(*combo);
    QObject::connect(combo, &QComboBox::activated, [this, combo](int) {
        MarkChosenItem(*combo, checkStyle_);
        NotifyChanged();
    });
}

void UI_Popup::AddItem(const zelcore::UTF16String& text) {
    if (auto* combo = platform::ui::ControlWidget<QComboBox>(*this)) {
        const QSignalBlocker quiet(combo);
        const bool wasEmpty = combo->count() == 0;
        combo->addItem(platform::ui::Localized(zelcore::View(text)));
        if (wasEmpty) {
            combo->setCurrentIndex(-1);
        }
        MarkChosenItem(*combo, checkStyle_);
    }
}

void UI_Popup::RemoveAllItems() {
    if (auto* combo = platform::ui::ControlWidget<QComboBox>(*this)) {
        const QSignalBlocker quiet(combo);
        combo->clear();
    }
}

std::int32_t UI_Popup::GetItemCount() const {
    const auto* combo = platform::ui::ControlWidget<QComboBox>(*this);
    return combo ? combo->count() : 0;
}

zelcore::UTF16String UI_Popup::GetItemText(std::int32_t index) const {
    const auto* combo = platform::ui::ControlWidget<QComboBox>(*this);
    return combo ? platform::ui::ToUTF16(combo->itemText(index)) : zelcore::UTF16String();
}

std::int32_t UI_Popup::GetValue() const {
    const auto* combo = platform::ui::ControlWidget<QComboBox>(*this);
    return combo ? combo->currentIndex() : -1;
}

void UI_Popup::SetValue(std::int32_t index) {
    if (auto* combo = platform::ui::ControlWidget<QComboBox>(*this)) {
        const QSignalBlocker quiet(combo);
        combo->setCurrentIndex(index >= 0 && index < combo->count() ? index : -1);
        MarkChosenItem(*combo, checkStyle_);
    }
}

zelcore::UTF16String UI_Popup::GetValueString() const {
    const auto* combo = platform::ui::ControlWidget<QComboBox>(*this);
    return combo && combo->currentIndex() >= 0 ? platform::ui::ToUTF16(combo->currentText())
                                               : zelcore::UTF16String();
}

void UI_Popup::SetItemCheckStyle(bool checkStyle) {
    checkStyle_ = checkStyle;
    if (auto* combo = platform::ui::ControlWidget<QComboBox>(*this)) {
        MarkChosenItem(*combo, checkStyle_);
    }
}

bool UI_Popup::GetItemCheckStyle() const {
    return checkStyle_;
}

} // namespace zelui::controls

#include "toolkit/PopupAccessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>

namespace platform::ui {
namespace {

constexpr const char* kNamedByItselfProperty = "platformNamedByItself";

class NamedComboAccessible : public QAccessibleWidget {
public:
    explicit NamedComboAccessible(QComboBox* combo)
        : QAccessibleWidget(combo, QAccessible::ComboBox) {}

    QString text(QAccessible::Text kind) const override {
        const QComboBox& combo = Combo();
        if (kind == QAccessible::Name && !combo.accessibleName().isEmpty()) {
            return combo.accessibleName();
        }
        if (kind == QAccessible::Name || kind == QAccessible::Value) {
            return combo.currentText();
        }
        return QAccessibleWidget::text(kind);
    }
    QStringList actionNames() const override {
        return QStringList(showMenuAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action == showMenuAction()) {
            Combo().showPopup();
            return;
        }
        QAccessibleWidget::doAction(action);
    }

private:
    QComboBox& Combo() const { return *static_cast<QComboBox*>(widget()); }
};

QAccessibleInterface* NamedComboFactory(const QString&, QObject* object) {
    auto* combo = qobject_cast<QComboBox*>(object);
    return combo && combo->property(kNamedByItselfProperty).toBool()
               ? new NamedComboAccessible(combo)
               : nullptr;
}

} // namespace

void NameComboBoxByItsOwnName(QComboBox& combo) {
    static const bool installed = (QAccessible::installFactory(NamedComboFactory), true);
    (void)installed;
    combo.setProperty(kNamedByItselfProperty, true);
}

} // namespace platform::ui

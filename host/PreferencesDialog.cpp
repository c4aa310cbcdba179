#include "PreferencesDialog.h"

#include "Autosaver.h"
#include "QtText.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSettings>
#include <QSpinBox>

namespace host {
namespace {

const QString kAutosaveKey = QStringLiteral("autosave/intervalMinutes");

} // namespace

PreferencesDialog::PreferencesDialog(int autosaveMinutes, QWidget* parent)
    : QDialog(parent)
    , autosave_(new QCheckBox(
          Localized("$$$/Corvala/Host/Preferences/Autosave=Save a copy of the project "
                    "automatically"),
          this))
    , interval_(new QSpinBox(this)) {
    setWindowTitle(Localized("$$$/Corvala/Host/Preferences/Title=Preferences"));
    autosave_->setChecked(autosaveMinutes > 0);
    autosave_->setAccessibleName(autosave_->text());
    interval_->setRange(1, 120);
    interval_->setValue(autosaveMinutes > 0 ? autosaveMinutes : Autosaver::kDefaultIntervalMinutes);
    interval_->setSuffix(Localized("$$$/Corvala/Host/Preferences/Minutes= min"));
    interval_->setEnabled(autosave_->isChecked());
    const QString every = Localized("$$$/Corvala/Host/Preferences/Every=Every");
    interval_->setAccessibleName(
        Localized("$$$/Corvala/Host/Preferences/IntervalName=Autosave interval in minutes"));
    interval_->setToolTip(interval_->accessibleName());
    connect(autosave_, &QCheckBox::toggled, interval_, &QSpinBox::setEnabled);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QFormLayout(this);
    layout->addRow(autosave_);
    layout->addRow(every, interval_);
    layout->addRow(buttons);
}

int PreferencesDialog::GetAutosaveMinutes() const {
    return autosave_->isChecked() ? interval_->value() : 0;
}

int StoredAutosaveMinutes() {
    return QSettings(QStringLiteral("corvala"), QStringLiteral("corvala"))
        .value(kAutosaveKey, Autosaver::kDefaultIntervalMinutes)
        .toInt();
}

void StoreAutosaveMinutes(int minutes) {
    QSettings(QStringLiteral("corvala"), QStringLiteral("corvala")).setValue(kAutosaveKey, minutes);
}

} // namespace host

#pragma once

#include <QDialog>

class QCheckBox;
class QSpinBox;

namespace host {

// The host's preferences a person may change: whether and how often a copy
// of the open project is saved automatically.
class PreferencesDialog : public QDialog {
public:
    // 0 minutes: autosave off.
    explicit PreferencesDialog(int autosaveMinutes, QWidget* parent = nullptr);

    // The interval as the fields have it; 0 when autosave is off.
    int GetAutosaveMinutes() const;

    QCheckBox& GetAutosaveField() const { return *autosave_; }
    QSpinBox& GetIntervalField() const { return *interval_; }

private:
    QCheckBox* autosave_;
    QSpinBox* interval_;
};

// The stored preferences (QSettings), and storing them.
int StoredAutosaveMinutes();
void StoreAutosaveMinutes(int minutes);

} // namespace host

#pragma once

#include "KeyRecorder.h"
#include "ShortcutEdits.h"

#include <QDialog>

#include <cstddef>
#include <optional>
#include <string>

class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QStandardItemModel;
class QTableView;

namespace host {

// Edit > Keyboard Shortcuts: every command of every context the shortcut
// manager knows, by its readable name and panel, with its key. The search
// field narrows the list; the chosen command's key is recorded by pressing
// it. A key that another command of the same panel has is shown as a clash,
// and OK waits until every clash is resolved. OK binds the edited keys,
// Cancel forgets them, "Reset to Defaults" puts every default key back.
class ShortcutsDialog : public QDialog {
public:
    enum Column { kCommandColumn, kPanelColumn, kKeyColumn, kColumnCount };

    explicit ShortcutsDialog(QWidget* parent = nullptr);
    ~ShortcutsDialog() override;

    QTableView& GetTable() const { return *table_; }
    QLineEdit& GetSearchField() const { return *search_; }
    KeyRecorder& GetKeyRecorder() const { return *recorder_; }
    QLabel& GetClashText() const { return *clashText_; }
    QPushButton& GetOkButton() const { return *ok_; }
    QPushButton& GetClearButton() const { return *clear_; }
    QPushButton& GetResetButton() const { return *reset_; }

    // Makes the command's row current, as a click on it does; false when the
    // search hides it or no context declares it.
    bool SelectCommand(const std::string& contextName, const std::string& commandName);

    void accept() override;

private:
    void BuildList();
    void BuildEditor();
    std::optional<std::size_t> CurrentRow() const;
    void ShowCurrentRow();
    void OnKeyRecorded(const QKeySequence& key);
    void Refresh();

    ShortcutEdits edits_;
    QStandardItemModel* model_;
    QSortFilterProxyModel* filter_;
    QTableView* table_;
    QLineEdit* search_;
    QLabel* commandLabel_;
    KeyRecorder* recorder_;
    QPushButton* clear_;
    QLabel* clashText_;
    QPushButton* reset_;
    QPushButton* ok_;
};

} // namespace host

#pragma once

#include <QDialog>

#include <memory>

class QAbstractTableModel;
class QTableView;

namespace host {

// The keyboard-shortcuts dialog: every command of every context the shortcut
// manager knows, with its key; a key typed into the key column binds it.
class ShortcutsDialog : public QDialog {
public:
    // Rebuilds the shortcut tables first, so every module's commands are listed.
    explicit ShortcutsDialog(QWidget* parent = nullptr);
    ~ShortcutsDialog() override;

    QTableView& GetTable() const { return *table_; }

private:
    std::unique_ptr<QAbstractTableModel> model_;
    QTableView* table_;
};

} // namespace host

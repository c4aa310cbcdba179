#include "ShortcutsDialog.h"

#include "QtText.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QStyle>
#include <QTableView>
#include <QVBoxLayout>

namespace host {
namespace {

constexpr int kRowRole = Qt::UserRole + 1;

QString NativeKeyText(const std::string& key) {
    return QKeySequence::fromString(QString::fromStdString(key), QKeySequence::PortableText)
        .toString(QKeySequence::NativeText);
}

} // namespace

ShortcutsDialog::ShortcutsDialog(QWidget* parent)
    : QDialog(parent)
    , edits_() {
    setObjectName(QStringLiteral("shortcutsDialog"));
    setWindowTitle(Localized("$$$/Corvala/Host/Shortcuts/Title=Keyboard Shortcuts"));
    BuildList();
    BuildEditor();
    Refresh();
    resize(760, 560);
}

ShortcutsDialog::~ShortcutsDialog() {
    // The view lets go of the models before they go.
    delete table_;
}

void ShortcutsDialog::BuildList() {
    model_ = new QStandardItemModel(0, kColumnCount, this);
    model_->setHorizontalHeaderLabels({Localized("$$$/Corvala/Host/Shortcuts/Command=Command"),
                                       Localized("$$$/Corvala/Host/Shortcuts/Panel=Panel"),
                                       Localized("$$$/Corvala/Host/Shortcuts/Key=Shortcut")});
    const std::vector<ShortcutEdits::Row>& rows = edits_.GetRows();
    for (std::size_t index = 0; index < rows.size(); ++index) {
        QList<QStandardItem*> items{
            new QStandardItem(rows[index].readableName),
            new QStandardItem(ToQString(rows[index].entry.contextDisplayName)),
            new QStandardItem()};
        for (QStandardItem* item : items) {
            item->setEditable(false);
            item->setData(QVariant::fromValue(index), kRowRole);
            item->setToolTip(QString::fromStdString(rows[index].entry.commandName));
        }
        model_->appendRow(items);
    }
    filter_ = new QSortFilterProxyModel(this);
    filter_->setSourceModel(model_);
    filter_->setFilterKeyColumn(-1);
    filter_->setFilterCaseSensitivity(Qt::CaseInsensitive);

    search_ = new QLineEdit(this);
    search_->setObjectName(QStringLiteral("shortcutSearch"));
    search_->setPlaceholderText(Localized("$$$/Corvala/Host/Shortcuts/Search=Search commands"));
    search_->setAccessibleName(search_->placeholderText());
    search_->setClearButtonEnabled(true);
    connect(search_, &QLineEdit::textChanged, this,
            [this](const QString& text) { filter_->setFilterFixedString(text); });

    table_ = new QTableView(this);
    table_->setObjectName(QStringLiteral("shortcutTable"));
    table_->setAccessibleName(windowTitle());
    table_->setModel(filter_);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(kCommandColumn, QHeaderView::Stretch);
    table_->resizeColumnsToContents();
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { ShowCurrentRow(); });
}

void ShortcutsDialog::BuildEditor() {
    commandLabel_ = new QLabel(this);
    recorder_ = new KeyRecorder([this](const QKeySequence& key) { OnKeyRecorded(key); }, this);
    recorder_->setObjectName(QStringLiteral("shortcutRecorder"));
    recorder_->setAccessibleName(Localized("$$$/Corvala/Host/Shortcuts/Record=Shortcut: press "
                                           "the keys"));
    recorder_->setToolTip(recorder_->accessibleName());
    clear_ = new QPushButton(Localized("$$$/Corvala/Host/Shortcuts/Clear=Clear"), this);
    clear_->setAccessibleName(Localized("$$$/Corvala/Host/Shortcuts/ClearName=Clear the shortcut"));
    connect(clear_, &QPushButton::clicked, this, [this] {
        if (const auto row = CurrentRow()) {
            edits_.SetKey(*row, {});
            ShowCurrentRow();
        }
    });
    clashText_ = new QLabel(this);
    clashText_->setObjectName(QStringLiteral("shortcutClash"));
    clashText_->setWordWrap(true);
    clashText_->setStyleSheet(QStringLiteral("color: #c0392b;"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    reset_ = buttons->addButton(Localized("$$$/Corvala/Host/Shortcuts/Reset=Reset to Defaults"),
                                QDialogButtonBox::ResetRole);
    connect(reset_, &QPushButton::clicked, this, [this] {
        edits_.ResetToDefaults();
        ShowCurrentRow();
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* keyRow = new QHBoxLayout;
    keyRow->addWidget(commandLabel_);
    keyRow->addWidget(recorder_, 1);
    keyRow->addWidget(clear_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(search_);
    layout->addWidget(table_, 1);
    layout->addLayout(keyRow);
    layout->addWidget(clashText_);
    layout->addWidget(buttons);
}

bool ShortcutsDialog::SelectCommand(const std::string& contextName,
                                    const std::string& commandName) {
    const std::vector<ShortcutEdits::Row>& rows = edits_.GetRows();
    for (int row = 0; row < filter_->rowCount(); ++row) {
        const QModelIndex index = filter_->index(row, kCommandColumn);
        const auto& entry = rows[index.data(kRowRole).value<std::size_t>()].entry;
        if (entry.contextName == contextName && entry.commandName == commandName) {
            table_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                                 QItemSelectionModel::Rows);
            return true;
        }
    }
    return false;
}

void ShortcutsDialog::accept() {
    if (edits_.HasClashes()) {
        return;
    }
    edits_.Apply();
    QDialog::accept();
}

std::optional<std::size_t> ShortcutsDialog::CurrentRow() const {
    const QModelIndex current = table_->selectionModel()->currentIndex();
    if (!current.isValid()) {
        return std::nullopt;
    }
    return current.data(kRowRole).value<std::size_t>();
}

void ShortcutsDialog::ShowCurrentRow() {
    const std::optional<std::size_t> row = CurrentRow();
    if (row) {
        const ShortcutEdits::Row& shown = edits_.GetRows()[*row];
        commandLabel_->setText(Localized("$$$/Corvala/Host/Shortcuts/KeyFor=Shortcut for "
                                         "\"%1\":")
                                   .arg(shown.readableName));
        recorder_->setKeySequence(QKeySequence::fromString(QString::fromStdString(shown.key),
                                                           QKeySequence::PortableText));
        recorder_->setEnabled(!shown.entry.bindingLocked);
        clear_->setEnabled(!shown.entry.bindingLocked && !shown.key.empty());
    } else {
        commandLabel_->setText(
            Localized("$$$/Corvala/Host/Shortcuts/ChooseCommand=Choose a command to change its "
                      "shortcut."));
        recorder_->clear();
        recorder_->setEnabled(false);
        clear_->setEnabled(false);
    }
    Refresh();
}

void ShortcutsDialog::OnKeyRecorded(const QKeySequence& key) {
    if (const std::optional<std::size_t> row = CurrentRow()) {
        edits_.SetKey(*row, key.toString(QKeySequence::PortableText).toStdString());
        ShowCurrentRow();
    }
}

void ShortcutsDialog::Refresh() {
    const std::vector<ShortcutEdits::Row>& rows = edits_.GetRows();
    for (int row = 0; row < model_->rowCount(); ++row) {
        const bool clashes = !edits_.ClashesOf(static_cast<std::size_t>(row)).empty();
        QStandardItem* key = model_->item(row, kKeyColumn);
        key->setText(NativeKeyText(rows[static_cast<std::size_t>(row)].key));
        key->setForeground(clashes ? QBrush(QColor(0xc0, 0x39, 0x2b)) : QBrush());
        key->setIcon(clashes ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
    }
    QString problem;
    if (const auto row = CurrentRow()) {
        const std::vector<std::size_t> clashes = edits_.ClashesOf(*row);
        if (!clashes.empty()) {
            problem = Localized("$$$/Corvala/Host/Shortcuts/Clash=%1 is already the shortcut of "
                                "\"%2\" in %3. Press another key, or clear the shortcut of one "
                                "of them.")
                          .arg(NativeKeyText(rows[*row].key), rows[clashes.front()].readableName,
                               ToQString(rows[*row].entry.contextDisplayName));
        }
    }
    if (problem.isEmpty() && edits_.HasClashes()) {
        problem = Localized("$$$/Corvala/Host/Shortcuts/Clashes=Some shortcuts are used twice in "
                            "a panel (marked); give one of each pair another key.");
    }
    clashText_->setText(problem);
    clashText_->setVisible(!problem.isEmpty());
    ok_->setEnabled(!edits_.HasClashes());
}

} // namespace host

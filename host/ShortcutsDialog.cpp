#include "ShortcutsDialog.h"

#include "PlatformHost/HostAccess.h"
#include "QtText.h"
#include "UIF/ShortcutManager.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTableView>
#include <QVBoxLayout>

namespace host {

ShortcutsDialog::ShortcutsDialog(QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("shortcutsDialog"));
    setWindowTitle(Localized("$$$/Corvala/Host/Shortcuts/Title=Keyboard Shortcuts"));
    UIF::ShortcutManager::Instance()->BuildShortcutTables();
    model_ = platform::ui::CreateShortcutListModel();
    table_ = new QTableView(this);
    table_->setModel(model_.get());
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->resizeColumnsToContents();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table_);
    layout->addWidget(buttons);
    resize(720, 480);
}

ShortcutsDialog::~ShortcutsDialog() {
    // The view lets go of the model before the model goes.
    delete table_;
}

} // namespace host

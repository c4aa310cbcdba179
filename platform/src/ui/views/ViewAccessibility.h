#pragma once

#include <QString>

class QWidget;

namespace platform::ui {

// Views draw their items themselves, so assistive technology cannot see them
// as widgets. A view may name one item as its focused item (a list's selected
// row): its accessible interface then has that one child and reports it as
// the focus child. Installs the factory for view windows on first use.
void SetViewFocusItem(QWidget& viewWidget, const QString& itemName);
QString ViewFocusItem(const QWidget& viewWidget);

} // namespace platform::ui
